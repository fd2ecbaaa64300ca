#include "pdf/mupdf/SectionWriter.h"

#include "pdf/ObjectSyntax.h"

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
    entries_.push_back({object.number, {ObjectPlace::Kind::InFile, offset(), object.generation}});
    added_.insert(object.number);
    writeHashed(QByteArray::number(object.number) + ' ' + QByteArray::number(object.generation) + " obj\n" +
                object.syntax + "\nendobj\n");
}

void SectionWriter::keep(int number, const ObjectPlace &place) {
    if (!added_.contains(number)) entries_.push_back({number, place});
}

void SectionWriter::writeHashed(const QByteArray &bytes) {
    hash_.addData(bytes);
    out_.write(bytes);
}

void SectionWriter::end(CrossReference kind, DictionarySyntax trailer, const OwnSection &original, int size,
                        bool standsAlone) {
    const qint64 place = offset();
    const bool asStream = kind == CrossReference::Stream;
    constexpr int neverUsedAgain = 65535;
    if (asStream) entries_.push_back({size, {ObjectPlace::Kind::InFile, place, 0}});
    if (standsAlone) entries_.push_back({0, {ObjectPlace::Kind::Free, 0, neverUsedAgain}});
    std::sort(entries_.begin(), entries_.end(),
              [](const Entry &a, const Entry &b) { return a.number < b.number; });
    // What has been left out may have had the highest number.
    const int sizeOfAll = standsAlone ? entries_.back().number + 1 : asStream ? size + 1 : size;
    trailer.set("Size", QByteArray::number(sizeOfAll));
    if (!standsAlone) trailer.set("Prev", QByteArray::number(original.previous));
    trailer.set(ownSectionKey, stringSyntax(ownSectionText(original, hash_.result())));
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
            out_.write(padded(entry->place.offset, 10) + ' ' + padded(entry->place.generation, 5) +
                       (entry->place.kind == ObjectPlace::Kind::Free ? " f \n" : " n \n"));
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
            data += static_cast<char>(entry->place.kind) + bigEndian(entry->place.offset, offsetBytes) +
                    bigEndian(entry->place.generation, generationBytes);
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
