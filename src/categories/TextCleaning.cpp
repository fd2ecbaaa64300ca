#include "categories/TextCleaning.h"

namespace leafwright {

CharacterSet charactersToTrim() {
    CharacterSet set;
    set.formIntersection(CharacterSet::alphanumerics().inverted());
    set.formIntersection(CharacterSet::symbols().inverted());
    set.formUnion(CharacterSet::newlines());
    return set;
}

QString cleanedRun(const QString &text, const CharacterSet &set) {
    QString cleaned = text;
    std::replace_if(
        cleaned.begin(), cleaned.end(), [&set](QChar c) { return set.contains(c); }, QChar(u' '));
    return cleaned;
}

bool hasLetters(QStringView text) {
    const CharacterSet &letters = CharacterSet::letters();
    const auto count = std::count_if(text.begin(), text.end(), [&](QChar c) { return letters.contains(c); });
    constexpr float share = 0.25F;
    // For an empty text this compares NaN, which is greater than nothing.
    return static_cast<float>(count) / static_cast<float>(text.size()) > share;
}

QString trimSpacesString(const QString &text) {
    const CharacterSet &blanks = CharacterSet::whitespaces();
    QString result;
    result.reserve(text.size());
    bool wordEnded = false;
    for (const QChar c : text) {
        if (blanks.contains(c)) {
            wordEnded = !result.isEmpty();
            continue;
        }
        if (wordEnded) result += u' ';
        wordEnded = false;
        result += c;
    }
    return result;
}

QString trimmedBlanksAndNewlines(const QString &text) {
    const auto goes = [](QChar c) {
        return CharacterSet::whitespaces().contains(c) || CharacterSet::newlines().contains(c);
    };
    const auto begin = std::find_if_not(text.begin(), text.end(), goes);
    const auto end = std::find_if_not(text.rbegin(), std::make_reverse_iterator(begin), goes).base();
    return text.mid(begin - text.begin(), end - begin);
}

}  // namespace leafwright
