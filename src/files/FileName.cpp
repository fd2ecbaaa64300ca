#include "files/FileName.h"

#include <QStringDecoder>

namespace leafwright {

namespace {

constexpr char16_t firstEscape = 0xDC80;
constexpr char16_t lastEscape = 0xDCFF;
constexpr char16_t escapeOfZero = 0xDC00;

/// The length in bytes of the character that begins with a byte of UTF-8; 0 where none does.
qsizetype lengthOfCharacter(unsigned char first) {
    if (first < 0x80) return 1;
    if (first < 0xC2) return 0;
    if (first < 0xE0) return 2;
    if (first < 0xF0) return 3;
    return first < 0xF5 ? 4 : 0;
}

/// The character at a place; null where the bytes there are none.
QString characterAt(const QByteArray &bytes, qsizetype position) {
    const qsizetype length = lengthOfCharacter(static_cast<unsigned char>(bytes[position]));
    if (length == 0 || position + length > bytes.size()) return {};
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(QByteArrayView(bytes).sliced(position, length));
    return decoder.hasError() ? QString() : text;
}

}  // namespace

QByteArray fileNameBytes(const QString &path) {
    QByteArray bytes;
    qsizetype start = 0;
    for (qsizetype i = 0; i < path.size(); ++i) {
        const char16_t unit = path[i].unicode();
        const bool escapes =
            unit >= firstEscape && unit <= lastEscape && !(i > 0 && path[i - 1].isHighSurrogate());
        if (!escapes) continue;
        bytes += QStringView(path).sliced(start, i - start).toUtf8();
        bytes += static_cast<char>(unit - escapeOfZero);
        start = i + 1;
    }
    return bytes + QStringView(path).sliced(start).toUtf8();
}

QString fileNameText(const QByteArray &bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString whole = decoder.decode(bytes);
    if (!decoder.hasError()) return whole;
    QString text;
    for (qsizetype i = 0; i < bytes.size();) {
        const QString character = characterAt(bytes, i);
        if (character.isNull()) {
            text += QChar(escapeOfZero + static_cast<unsigned char>(bytes[i++]));
        } else {
            text += character;
            i += lengthOfCharacter(static_cast<unsigned char>(bytes[i]));
        }
    }
    return text;
}

QString pathOfFileUrl(const QUrl &url) {
    const QString path = url.toLocalFile();
    if (!path.contains(QChar::ReplacementCharacter)) return path;
    return fileNameText(QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()));
}

QUrl urlOfFile(const QString &path) {
    const QByteArray bytes = fileNameBytes(path);
    if (QString::fromUtf8(bytes) == path) return QUrl::fromLocalFile(path);
    return QUrl::fromEncoded("file://" + bytes.toPercentEncoding("/"));
}

QStringList argumentTexts(int argc, const char *const *argv) {
    QStringList texts;
    for (int i = 1; i < argc; ++i)
        texts.append(fileNameText(argv[i]));
    return texts;
}

}  // namespace leafwright
