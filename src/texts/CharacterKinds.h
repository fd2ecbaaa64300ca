#pragma once

#include <QStringView>

namespace leafwright {

// What characters are to those who compare texts. Each is one UTF-16 unit.

/// An accent as a character of its own, which some files set beside the letter.
inline bool isLooseAccent(char16_t c) {
    static constexpr QStringView accents =
        u"\u00ad\u00b4\u00a8\u00b8\u02c7\u02d8\u02d9\u02da\u02dd\u02db\u02c6\u02dc";
    return accents.contains(QChar(c));
}

inline bool isQuote(char16_t c) {
    if (c < 0x80) return c == u'"' || c == u'\'' || c == u'`' || c == u'\\';
    static constexpr QStringView quotes =
        u"\u00b4\u2018\u2019\u201a\u201b\u201c\u201d\u201e\u201f\u00ab\u00bb\u2039\u203a\u2032\u2033\uff02"
        u"\uff07";
    return quotes.contains(QChar(c));
}

inline bool isDash(char16_t c) {
    return c == u'-' || (c >= 0x2010 && c <= 0x2015) || c == 0x2212;
}

/// An accent that stands on the character before it, of those that Latin, Greek and Cyrillic letters have.
/// Marks of other scripts are letters in their own right.
inline bool isCombiningAccent(char16_t c) {
    return (c >= 0x0300 && c <= 0x036f) || (c >= 0x1ab0 && c <= 0x1aff) || (c >= 0x1dc0 && c <= 0x1dff);
}

/// A character without width, which nobody types.
inline bool isWithoutWidth(char16_t c) {
    return c == 0x00ad || (c >= 0x200b && c <= 0x200f) || (c >= 0x2060 && c <= 0x2064) || c == 0xfeff;
}

/// Whether a character is written without blanks between words: Chinese, Japanese, Korean.
inline bool isIdeographic(QChar character) {
    const char16_t u = character.unicode();
    return (u >= 0x2e80 && u <= 0x9fff) || (u >= 0xac00 && u <= 0xd7af) || (u >= 0xf900 && u <= 0xfaff);
}

}  // namespace leafwright
