#include "exchange/CharacterReferences.h"

#include <algorithm>
#include <array>
#include <utility>

namespace leafwright {

namespace {

constexpr char16_t firstPrintable = u' ';
constexpr char16_t del = u'\x7F';
constexpr char16_t afterC1Controls = u'\xA0';
constexpr char32_t lastCharacter = 0x10FFFF;

constexpr auto names = std::to_array<std::pair<QLatin1String, char16_t>>({{QLatin1String("amp"), u'&'},
                                                                          {QLatin1String("lt"), u'<'},
                                                                          {QLatin1String("gt"), u'>'},
                                                                          {QLatin1String("quot"), u'"'},
                                                                          {QLatin1String("apos"), u'\''},
                                                                          {QLatin1String("nbsp"), u'\xA0'}});

QString textOf(char32_t character) {
    // A half of a pair is a character of its own here.
    if (!QChar::requiresSurrogates(character)) return QString(QChar(static_cast<char16_t>(character)));
    return QString::fromUcs4(&character, 1);
}

/// What stands between "&" and ";".
std::optional<QString> referredTo(QStringView name) {
    if (name.startsWith(u'#')) {
        const bool isHex = name.size() > 1 && (name[1] == u'x' || name[1] == u'X');
        const QStringView digits = name.sliced(isHex ? 2 : 1);
        constexpr qsizetype mostDigits = 8;
        // The conversion would take signs and blanks as well.
        if (digits.isEmpty() || digits.size() > mostDigits || !digits.front().isLetterOrNumber())
            return std::nullopt;
        bool isNumber = false;
        const uint number = digits.toUInt(&isNumber, isHex ? 16 : 10);
        return isNumber && number <= lastCharacter ? std::optional(textOf(number)) : std::nullopt;
    }
    for (const auto &[each, character] : names)
        if (name == each) return QString(QChar(character));
    return std::nullopt;
}

}  // namespace

QString numericReference(char16_t unit) {
    return QLatin1String("&#") + QString::number(static_cast<uint>(unit)) + u';';
}

bool needsReference(QStringView text, qsizetype index) {
    const QChar c = text[index];
    if (c.isHighSurrogate()) return index + 1 == text.size() || !text[index + 1].isLowSurrogate();
    if (c.isLowSurrogate()) return index == 0 || !text[index - 1].isHighSurrogate();
    const char16_t unit = c.unicode();
    const bool isSeparator = unit == QChar::LineSeparator || unit == QChar::ParagraphSeparator;
    return unit < firstPrintable || (unit >= del && unit < afterC1Controls) || isSeparator;
}

std::optional<CharacterReference> referenceAt(QStringView text) {
    constexpr qsizetype longest = 12;
    if (!text.startsWith(u'&')) return std::nullopt;
    const qsizetype end = text.first(std::min(text.size(), longest)).indexOf(u';');
    if (end < 0) return std::nullopt;
    auto character = referredTo(text.sliced(1, end - 1));
    if (!character) return std::nullopt;
    return CharacterReference{std::move(*character), end + 1};
}

QString withoutReferences(QStringView text) {
    QString result;
    for (qsizetype i = 0; i < text.size();) {
        if (const auto reference = referenceAt(text.sliced(i))) {
            result += reference->text;
            i += reference->length;
        } else {
            result += text[i++];
        }
    }
    return result;
}

}  // namespace leafwright
