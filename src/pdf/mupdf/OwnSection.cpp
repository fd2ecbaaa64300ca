#include "pdf/mupdf/OwnSection.h"

#include <QCryptographicHash>

namespace leafwright::mupdf {

namespace {

/// The SHA-256 of a piece of the file; empty where it has ended before.
QByteArray hashOf(const FileHandle &file, qint64 begin, qint64 end) {
    constexpr qint64 piece = 1 << 16;
    QCryptographicHash hash(QCryptographicHash::Sha256);
    QByteArray buffer(piece, Qt::Uninitialized);
    while (begin < end) {
        const qint64 count = file.readOrThrow(begin, buffer.data(), std::min(piece, end - begin));
        if (count == 0) return {};
        hash.addData(QByteArrayView(buffer).first(count));
        begin += count;
    }
    return hash.result();
}

/// Whether the file ends as a section does whose cross-reference stands at an offset.
bool endsWithSection(const FileHandle &file, qint64 crossReference) {
    const QByteArray wanted = "\nstartxref\n" + QByteArray::number(crossReference) + "\n%%EOF\n";
    QByteArray end(wanted.size(), Qt::Uninitialized);
    const qint64 begin = file.size() - end.size();
    return begin >= 0 && file.readOrThrow(begin, end.data(), end.size()) == end.size() && end == wanted;
}

}  // namespace

int sizeOf(Reader &reader) {
    return std::max(pdf_xref_len(reader.context(), reader.document()),
                    reader.trailer().get(PDF_NAME(Size)).toInt());
}

QByteArray ownSectionText(const OwnSection &section, const QByteArray &hash) {
    return QByteArray::number(section.begin) + ' ' + QByteArray::number(section.size) + ' ' +
           QByteArray::number(section.previous) + ' ' + hash.toHex();
}

std::optional<OwnSection> findOwnSection(Reader &reader) {
    const FileHandle &file = *reader.file();
    const QByteArray text = reader.trailer().get(ownSectionKey).toBytes();
    const QList<QByteArray> words = text.split(' ');
    if (words.size() != 4) return std::nullopt;
    const OwnSection section{words[0].toLongLong(), words[1].toInt(), words[2].toLongLong()};
    const qint64 crossReference = reader.document()->startxref;
    const bool isPossible = section.previous > 0 && section.begin > section.previous &&
                            section.begin < crossReference && section.size > 0 &&
                            section.size <= sizeOf(reader);
    // A program that appends may carry our key on; then the hash is of other bytes.
    if (!isPossible || !endsWithSection(file, crossReference) ||
        ownSectionText(section, hashOf(file, section.begin, crossReference)) != text)
        return std::nullopt;
    return section;
}

}  // namespace leafwright::mupdf
