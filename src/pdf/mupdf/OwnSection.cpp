#include "pdf/mupdf/OwnSection.h"

#include <QCryptographicHash>

namespace leafwright::mupdf {

namespace {

qint64 integerOf(Reader &reader, const Object &number) {
    fz_context *ctx = reader.context();
    return number.isInt() ? guarded(ctx, [&] { return pdf_to_int64(ctx, number.get()); }) : -1;
}

/// The SHA-256 of a piece of the file; empty where that can't be read.
QByteArray hashOf(const FileHandle &file, qint64 begin, qint64 end) {
    constexpr qint64 piece = 1 << 16;
    QCryptographicHash hash(QCryptographicHash::Sha256);
    QByteArray buffer(piece, Qt::Uninitialized);
    while (begin < end) {
        const qint64 count = file.readAt(begin, buffer.data(), std::min(piece, end - begin));
        if (count <= 0) return {};
        hash.addData(QByteArrayView(buffer).first(count));
        begin += count;
    }
    return hash.result();
}

/// Whether the file ends as a section does whose cross-reference stands at an offset.
bool endsWithSection(const FileHandle &file, qint64 crossReference) {
    const QByteArray wanted = "\nstartxref\n" + QByteArray::number(crossReference) + "\n%%EOF\n";
    QByteArray end(wanted.size(), Qt::Uninitialized);
    return file.readAt(file.size() - end.size(), end.data(), end.size()) == end.size() && end == wanted;
}

}  // namespace

int sizeOf(Reader &reader) {
    return std::max(pdf_xref_len(reader.context(), reader.document()),
                    reader.trailer().get(PDF_NAME(Size)).toInt());
}

std::optional<OwnSection> findOwnSection(Reader &reader) {
    const FileHandle &file = *reader.file();
    const Object trailer = reader.trailer();
    const Object key = trailer.get(ownSectionKey);
    const qint64 crossReference = reader.document()->startxref;
    const OwnSection section{integerOf(reader, key.at(0)), static_cast<int>(integerOf(reader, key.at(1))),
                             integerOf(reader, trailer.get(PDF_NAME(Prev)))};
    const bool isPossible = section.previous > 0 && section.begin > section.previous &&
                            section.begin < crossReference && section.size > 0 &&
                            section.size <= trailer.get(PDF_NAME(Size)).toInt();
    // A program that appends may carry our key on; then the hash is of other bytes.
    if (!isPossible || !endsWithSection(file, crossReference) ||
        hashOf(file, section.begin, crossReference) != key.at(2).toBytes())
        return std::nullopt;
    return section;
}

}  // namespace leafwright::mupdf
