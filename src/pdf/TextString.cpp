#include "pdf/TextString.h"

namespace leafwright {

namespace {

constexpr char16_t escape = 0x1B;

/// Where PDFDocEncoding departs from Latin-1 (ISO 32000-1, annex D.2).
char16_t unicodeFromPdfDocEncoding(unsigned char byte) {
    static constexpr char16_t from0x18[] = {0x02D8, 0x02C7, 0x02C6, 0x02D9, 0x02DD, 0x02DB, 0x02DA, 0x02DC};
    static constexpr char16_t from0x80[] = {
        0x2022, 0x2020, 0x2021, 0x2026, 0x2014, 0x2013, 0x0192, 0x2044, 0x2039, 0x203A, 0x2212,
        0x2030, 0x201E, 0x201C, 0x201D, 0x2018, 0x2019, 0x201A, 0x2122, 0xFB01, 0xFB02, 0x0141,
        0x0152, 0x0160, 0x0178, 0x017D, 0x0131, 0x0142, 0x0153, 0x0161, 0x017E, 0xFFFD, 0x20AC};
    if (byte >= 0x18 && byte <= 0x1F) return from0x18[byte - 0x18];
    if (byte >= 0x80 && byte <= 0xA0) return from0x80[byte - 0x80];
    if (byte == 0x7F || byte == 0xAD) return 0xFFFD;
    return byte;
}

/// Takes out ESC language [country] ESC (ISO 32000-1, 7.9.2.2); an escape without an end stays.
QString withoutLanguageEscapes(QString text) {
    qsizetype from = 0;
    while ((from = text.indexOf(QChar(escape), from)) >= 0) {
        const qsizetype to = text.indexOf(QChar(escape), from + 1);
        const qsizetype codeLength = to - from - 1;
        if (to < 0) break;
        if (codeLength == 2 || codeLength == 4) {
            text.remove(from, to - from + 1);
        } else {
            from = to;
        }
    }
    return text;
}

QString decodeUtf16(const QByteArray &bytes, bool bigEndian) {
    QString text;
    text.reserve(bytes.size() / 2);
    for (qsizetype i = 2; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        text += QChar(bigEndian ? first << 8 | second : second << 8 | first);
    }
    return withoutLanguageEscapes(text);
}

}  // namespace

QString decodeTextString(const QByteArray &bytes) {
    if (bytes.startsWith("\xFE\xFF")) return decodeUtf16(bytes, true);
    if (bytes.startsWith("\xFF\xFE")) return decodeUtf16(bytes, false);
    if (bytes.startsWith("\xEF\xBB\xBF")) return QString::fromUtf8(bytes.sliced(3));
    QString text;
    text.reserve(bytes.size());
    for (const char byte : bytes)
        text += QChar(unicodeFromPdfDocEncoding(static_cast<unsigned char>(byte)));
    return text;
}

QByteArray encodeTextString(const QString &text) {
    const auto isPlain = [](QChar c) {
        return (c >= u' ' && c < u'\x7F') || c == u'\t' || c == u'\n' || c == u'\r';
    };
    if (std::all_of(text.begin(), text.end(), isPlain)) return text.toLatin1();
    QByteArray bytes("\xFE\xFF");
    bytes.reserve(2 + 2 * text.size());
    for (const QChar c : text) {
        bytes += static_cast<char>(c.unicode() >> 8);
        bytes += static_cast<char>(c.unicode() & 0xFF);
    }
    return bytes;
}

}  // namespace leafwright
