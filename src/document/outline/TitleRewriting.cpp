#include "document/outline/TitleRewriting.h"

#include <QTextBoundaryFinder>

namespace leafwright {

namespace {

constexpr QChar capitalSigma(0x03A3);
constexpr QChar finalSigma(0x03C2);
constexpr QChar smallSigma(0x03C3);
constexpr char32_t capitalIota = 0x0399;
constexpr char32_t iotaSubscript = 0x0345;

/// Whether a character has upper and lower case, or is set like one of them (Unicode: Cased). Modifier
/// letters need not be known, since they count for nothing.
bool isCased(char32_t c) {
    return QChar::isUpper(c) || QChar::isLower(c) || QChar::isTitleCase(c) || c == 0x00AA || c == 0x00BA;
}

/// Whether a character counts for nothing among those with case (Unicode: Case_Ignorable).
bool isCaseIgnorable(char32_t c) {
    switch (QChar::category(c)) {
        case QChar::Mark_NonSpacing:
        case QChar::Mark_Enclosing:
        case QChar::Other_Format:
        case QChar::Letter_Modifier:
        case QChar::Symbol_Modifier:
            return true;
        default:
            return QStringView(u"'.:\u00B7\u0387\u055F\u05F4\u2018\u2019\u2024\u2027")
                .contains(QChar::fromUcs4(c));
    }
}

/// Whether a letter ends its word: one with case before it and none behind, characters aside that count for
/// nothing (Unicode: Final_Sigma).
bool endsItsWord(const QList<uint> &text, qsizetype position) {
    const auto isCasedNext = [&](qsizetype step) {
        for (qsizetype at = position + step; at >= 0 && at < text.size(); at += step)
            if (!isCaseIgnorable(text[at])) return isCased(text[at]);
        return false;
    };
    return isCasedNext(-1) && !isCasedNext(1);
}

/// The text with its capital sigmas in lower case, which for Qt are all alike.
QString withSmallSigmas(QString text) {
    if (!text.contains(capitalSigma)) return text;
    const QList<uint> characters = text.toUcs4();
    qsizetype unit = 0;
    for (qsizetype i = 0; i < characters.size(); ++i) {
        if (characters[i] == capitalSigma.unicode())
            text[unit] = endsItsWord(characters, i) ? finalSigma : smallSigma;
        unit += QChar::requiresSurrogates(characters[i]) ? 2 : 1;
    }
    return text;
}

/// A letter as it begins a word. Of a capital that is several letters, as "SS" is of "ß", the first stays in
/// upper case.
QString titleLetter(char32_t letter) {
    const char32_t title = QChar::toTitleCase(letter);
    const QList<uint> capitals = QString::fromUcs4(&letter, 1).toUpper().toUcs4();
    if (title != letter || capitals.size() == 1) return QString::fromUcs4(&title, 1);
    QString result;
    bool isFirst = true;
    for (const char32_t capital : capitals) {
        char32_t shown = capital;
        if (!isFirst) shown = capital == capitalIota ? iotaSubscript : QChar::toLower(capital);
        result += QString::fromUcs4(&shown, 1);
        if (QChar::isUpper(capital)) isFirst = false;  // an apostrophe may stand in front
    }
    return result;
}

/// A word with its first letter in upper case and the others in lower case.
QString capitalizedWord(const QString &word) {
    for (qsizetype i = 0; i < word.size();) {
        const bool isPair = word[i].isHighSurrogate() && i + 1 < word.size() && word[i + 1].isLowSurrogate();
        const char32_t letter = isPair ? QChar::surrogateToUcs4(word[i], word[i + 1]) : word[i].unicode();
        const qsizetype end = i + (isPair ? 2 : 1);
        if (QChar::isLetter(letter)) return word.first(i) + titleLetter(letter) + word.sliced(end).toLower();
        i = end;
    }
    return word;
}

}  // namespace

QString numberedTitle(const QString &title, const SequentialNumbering &numbering, qint32 number) {
    const QString lead = numbering.prefix.isNull() ? QString() : numbering.prefix + numbering.firstSeparator;
    return lead + QString::number(number) + numbering.secondSeparator + title;
}

QString titleWithReplacement(const QString &title, const QString &findTerm,
                             Qt::CaseSensitivity caseSensitivity, const QString &replaceTerm) {
    QString result = title;
    return result.replace(findTerm, replaceTerm, caseSensitivity);
}

QString prefixedTitle(const QString &title, const QString &prefix) {
    return prefix + u' ' + title;
}

QString uppercaseString(const QString &text) {
    return text.toUpper();
}

QString lowercaseString(const QString &text) {
    return withSmallSigmas(text).toLower();
}

QString capitalizedString(const QString &text) {
    const QString source = withSmallSigmas(text);
    QString result;
    result.reserve(source.size());
    QTextBoundaryFinder words(QTextBoundaryFinder::Word, source);
    qsizetype start = 0;
    while (start < source.size()) {
        const qsizetype end = words.toNextBoundary();
        if (end < 0) break;
        result += capitalizedWord(source.sliced(start, end - start));
        start = end;
    }
    return result;
}

}  // namespace leafwright
