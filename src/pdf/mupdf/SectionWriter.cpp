#include "pdf/mupdf/SectionWriter.h"

#include "pdf/ObjectSyntax.h"
#include "pdf/mupdf/OwnSection.h"

#include <algorithm>

namespace leafwright::mupdf {

namespace {

/// A number as so many bytes, the highest first.
QByteArray bigEndian(qint64 value, int bytes) {
    QByteArray text;
    for (int i = bytes - 1; i >= 0; --i)
        text += static_cast<char>(value >> (8 * i));
    return text;
}

int bytesFor(qint64 value) {
    int bytes = 1;
    while (value >> (8 * bytes))
        ++bytes;
    return bytes;
}

QByteArray padded(qint64 value, int digits) {
    return QByteArray::number(value).rightJustified(digits, '0');
}

/// Calls `use(begin, end)` for each range of entries whose numbers follow each other.
template <typename Entries, typename Use>
void forEachRun(const Entries &entries, Use &&use) {
    for (auto begin = entries.begin(); begin != entries.end();) {
        auto end = begin + 1;
        while (end != entries.end() && end->number == (end - 1)->number + 1)
            ++end;
        use(begin, end);
        begin = end;
    }
}

}  // namespace

void SectionWriter::add(const NewObject &object) {
    if (entries_.empty()) writeHashed(separator_);
    entries_.push_back({object.number, object.generation, offset()});
    writeHashed(QByteArray::number(object.number) + ' ' + QByteArray::number(object.generation) + " obj\n" +
                object.syntax + "\nendobj\n");
}

void SectionWriter::writeHashed(const QByteArray &bytes) {
    hash_.addData(bytes);
    out_.write(bytes);
}

void SectionWriter::end(CrossReference kind, DictionarySyntax trailer, qint64 previous, int sizeBefore,
                        int size) {
    const qint64 place = offset();
    const bool asStream = kind == CrossReference::Stream;
    if (asStream) entries_.push_back({size, 0, place});
    std::sort(entries_.begin(), entries_.end(),
              [](const Entry &a, const Entry &b) { return a.number < b.number; });
    trailer.set("Size", QByteArray::number(asStream ? size + 1 : size));
    trailer.set("Prev", QByteArray::number(previous));
    trailer.set(ownSectionKey, '[' + QByteArray::number(begin_) + ' ' + QByteArray::number(sizeBefore) + ' ' +
                                   stringSyntax(hash_.result()) + ']');
    if (asStream) {
        writeStream(size, std::move(trailer));
    } else {
        writeTable();
        out_.write("trailer\n" + trailer.toBytes());
    }
    out_.write("\nstartxref\n" + QByteArray::number(place) + "\n%%EOF\n");
}

void SectionWriter::writeTable() {
    out_.write("xref\n");
    forEachRun(entries_, [this](auto begin, auto end) {
        out_.write(QByteArray::number(begin->number) + ' ' + QByteArray::number(end - begin) + '\n');
        for (auto entry = begin; entry != end; ++entry)
            out_.write(padded(entry->offset, 10) + ' ' + padded(entry->generation, 5) + " n \n");
    });
}

void SectionWriter::writeStream(int number, DictionarySyntax dictionary) {
    constexpr int generationBytes = 2;
    const int offsetBytes = bytesFor(offset());  // the stream comes last
    QByteArray index;
    QByteArray data;
    forEachRun(entries_, [&](auto begin, auto end) {
        index += ' ' + QByteArray::number(begin->number) + ' ' + QByteArray::number(end - begin);
        for (auto entry = begin; entry != end; ++entry)
            data +=
                '\1' + bigEndian(entry->offset, offsetBytes) + bigEndian(entry->generation, generationBytes);
    });
    dictionary.set("Type", "/XRef");
    dictionary.set("W",
                   "[1 " + QByteArray::number(offsetBytes) + ' ' + QByteArray::number(generationBytes) + ']');
    dictionary.set("Index", '[' + index.trimmed() + ']');
    dictionary.set("Length", QByteArray::number(data.size()));
    out_.write(QByteArray::number(number) + " 0 obj\n" + dictionary.toBytes() + "\nstream\n");
    out_.write(data);
    out_.write("\nendstream\nendobj");
}

}  // namespace leafwright::mupdf
