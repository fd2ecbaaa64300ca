#include "support/RawPdf.h"

#include <QFile>

namespace leafwright::test {

RawPdf &RawPdf::object(int number, const QByteArray &body) {
    offsets_[number] = size();
    size_ = std::max(size_, number + 1);
    bytes_ += QByteArray::number(number) + " 0 obj\n" + body + "\nendobj\n";
    return *this;
}

RawPdf &RawPdf::trailerEntry(const QByteArray &entries) {
    trailerEntries_ += ' ' + entries;
    return *this;
}

RawPdf &RawPdf::add(const QByteArray &bytes) {
    bytes_ += bytes;
    return *this;
}

RawPdf &RawPdf::goOnAt(qint64 offset) {
    // For readers that look two words ahead of what they read: through all of the hole, where none are.
    bytes_ += "null null\n";
    holes_.push_back({bytes_.size(), offset - size()});
    skipped_ = offset - bytes_.size();
    return *this;
}

template <typename Use>
bool RawPdf::forEachPiece(Use &&use) const {
    qint64 skipped = 0;
    qsizetype begin = 0;
    for (const Hole &hole : holes_) {
        if (!use(begin + skipped, bytes_.sliced(begin, hole.position - begin))) return false;
        skipped += hole.size;
        begin = hole.position;
    }
    return use(begin + skipped, bytes_.sliced(begin));
}

bool RawPdf::save(const QString &path) const {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && forEachPiece([&file](qint64 offset, const QByteArray &piece) {
               return file.seek(offset) && file.write(piece) == piece.size();
           });
}

bool RawPdf::isStartOf(const QString &path) const {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && forEachPiece([&file](qint64 offset, const QByteArray &piece) {
               return file.seek(offset) && file.read(piece.size()) == piece;
           });
}

RawPdf &RawPdf::endWithTable() {
    const qint64 start = size();
    table(offsets_, {});
    end(start);
    return *this;
}

RawPdf &RawPdf::endWithStream(int number) {
    const qint64 start = size();
    std::map<int, qint64> entries = offsets_;
    entries[number] = start;
    crossReferenceStream(number, entries);
    end(start);
    return *this;
}

RawPdf &RawPdf::endHybrid(int number, const QList<int> &hidden) {
    std::map<int, qint64> seen = offsets_;
    std::map<int, qint64> unseen;
    for (const int object : hidden)
        unseen.insert(seen.extract(object));
    const qint64 stream = size();
    crossReferenceStream(number, unseen);
    const qint64 start = size();
    table(seen, "/XRefStm " + QByteArray::number(stream));
    end(start);
    return *this;
}

void RawPdf::crossReferenceStream(int number, const std::map<int, qint64> &entries) {
    size_ = std::max(size_, number + 1);
    QByteArray index;
    QByteArray data;
    for (const auto &[object, offset] : entries) {
        index += QByteArray::number(object) + " 1 ";
        data += '\1';
        for (int shift = 56; shift >= 0; shift -= 8)
            data += static_cast<char>(offset >> shift);
        data += '\0';
    }
    bytes_ += QByteArray::number(number) + " 0 obj\n<< /Type /XRef /W [1 8 1] /Index [" + index +
              "] /Length " + QByteArray::number(data.size()) + trailerEntries() + " >>\nstream\n" + data +
              "\nendstream\nendobj\n";
}

void RawPdf::table(const std::map<int, qint64> &entries, const QByteArray &further) {
    bytes_ += "xref\n0 1\n0000000000 65535 f \n";
    for (auto first = entries.begin(); first != entries.end();) {
        auto last = first;
        QByteArray lines;
        for (int number = first->first; last != entries.end() && last->first == number; ++number, ++last)
            lines += QByteArray::number(last->second).rightJustified(10, '0') + " 00000 n \n";
        bytes_ +=
            QByteArray::number(first->first) + ' ' + QByteArray::number(lines.size() / 20) + '\n' + lines;
        first = last;
    }
    bytes_ += "trailer\n<<" + trailerEntries() + further + " >>\n";
}

QByteArray RawPdf::trailerEntries() const {
    QByteArray entries = " /Root 1 0 R /Size " + QByteArray::number(size_);
    if (previous_) entries += " /Prev " + QByteArray::number(previous_);
    return entries + trailerEntries_ + ' ';
}

void RawPdf::end(qint64 crossReference) {
    bytes_ += "startxref\n" + QByteArray::number(crossReference) + "\n%%EOF\n";
    offsets_.clear();
    previous_ = crossReference;
}

RawPdf rawPdfOfOnePage(const QByteArray &catalogEntries) {
    RawPdf pdf;
    pdf.object(1, "<< /Type /Catalog /Pages 2 0 R " + catalogEntries + " >>")
        .object(2, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>")
        .object(3, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Resources << >> >>");
    return pdf;
}

}  // namespace leafwright::test
