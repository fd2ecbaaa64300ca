#include "document/TitleRewriting.h"

#include <QTextBoundaryFinder>

namespace leafwright {

namespace {

/// A word with its first letter in upper case and the others in lower case.
QString capitalizedWord(QStringView word) {
    QString result;
    bool first = true;
    for (qsizetype i = 0; i < word.size();) {
        const bool isPair = word[i].isHighSurrogate() && i + 1 < word.size() && word[i + 1].isLowSurrogate();
        const char32_t letter = isPair ? QChar::surrogateToUcs4(word[i], word[i + 1]) : word[i].unicode();
        if (first && QChar::isLetter(letter)) {
            const char32_t title = QChar::toTitleCase(letter);
            result += QString::fromUcs4(&title, 1);
            return result + word.mid(i + (isPair ? 2 : 1)).toString().toLower();
        }
        result += word.mid(i, isPair ? 2 : 1);
        i += isPair ? 2 : 1;
    }
    return result;
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

QString capitalizedString(const QString &text) {
    QString result;
    result.reserve(text.size());
    QTextBoundaryFinder words(QTextBoundaryFinder::Word, text);
    qsizetype start = 0;
    while (start < text.size()) {
        const qsizetype end = words.toNextBoundary();
        if (end < 0) break;
        result += capitalizedWord(QStringView(text).mid(start, end - start));
        start = end;
    }
    return result;
}

}  // namespace leafwright
