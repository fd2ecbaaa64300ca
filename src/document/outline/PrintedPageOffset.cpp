#include "document/outline/PrintedPageOffset.h"

#include "document/outline/PageLabelMap.h"

#include <QSet>
#include <QStringList>

namespace leafwright {

namespace {

constexpr int fewestPages = 11;
constexpr int shortestText = 10;
constexpr qsizetype wordsAtEachEnd = 15;

QString withoutNonDigitsAtEnds(const QString &word) {
    const auto isDigit = [](QChar c) { return c.isDigit(); };
    const auto begin = std::find_if(word.begin(), word.end(), isDigit);
    const auto end = std::find_if(word.rbegin(), std::make_reverse_iterator(begin), isDigit).base();
    return word.mid(begin - word.begin(), end - begin);
}

/// The numbers among the first and the last `count` words, as they are written, in that order.
QStringList numbersAtEnds(const QStringList &words, qsizetype count) {
    QStringList numbers;
    const auto collect = [&numbers](const QStringList &part) {
        for (const QString &word : part) {
            const QString number = withoutNonDigitsAtEnds(word);
            if (integerValue(number) > 0) numbers.append(number);
        }
    };
    collect(words.first(count));
    collect(words.last(count));
    return numbers;
}

}  // namespace

std::optional<qint32> estimatePrintedPageOffset(const TextPages &pages) {
    if (pages.pageCount() < fewestPages) return std::nullopt;
    const int pageA = pages.pageCount() / 2;
    const int pageB = pageA + 2;
    const QString textA = pages.pageText(pageA)->attributedString.string;
    const QString textB = pages.pageText(pageB)->attributedString.string;
    if (textA.size() < shortestText || textB.size() < shortestText) return std::nullopt;

    const QStringList wordsA = textA.split(u' ');
    const QStringList wordsB = textB.split(u' ');
    const qsizetype count = std::min({wordsAtEachEnd, wordsA.size(), wordsB.size()});
    const QStringList numbersA = numbersAtEnds(wordsA, count);
    const QSet<QString> printedOnA(numbersA.begin(), numbersA.end());

    std::optional<qint32> offset;
    for (const QString &number : numbersAtEnds(wordsB, count)) {
        const qint32 printed = integerValue(number) - 2;
        if (printedOnA.contains(QString::number(printed))) {
            offset = static_cast<qint32>(qint64{integerValue(pages.pageLabel(pageA))} - printed);
        }
    }
    return offset;
}

}  // namespace leafwright
