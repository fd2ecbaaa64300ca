#include "pdf/PageLabels.h"

namespace leafwright {

namespace {

constexpr int longestNumeral = 1000;

QString romanNumeral(int number) {
    struct Digit {
        int value = 0;
        QLatin1String letters;
    };
    static constexpr Digit digits[] = {
        {1000, QLatin1String("m")}, {900, QLatin1String("cm")}, {500, QLatin1String("d")},
        {400, QLatin1String("cd")}, {100, QLatin1String("c")},  {90, QLatin1String("xc")},
        {50, QLatin1String("l")},   {40, QLatin1String("xl")},  {10, QLatin1String("x")},
        {9, QLatin1String("ix")},   {5, QLatin1String("v")},    {4, QLatin1String("iv")},
        {1, QLatin1String("i")}};
    if (number / 1000 > longestNumeral) return {};
    QString numeral;
    for (const Digit &digit : digits) {
        for (; number >= digit.value; number -= digit.value)
            numeral += digit.letters;
    }
    return numeral;
}

/// a to z, then aa to zz, then aaa to zzz.
QString letterNumeral(int number) {
    const int repeats = (number - 1) / 26 + 1;
    if (repeats > longestNumeral) return {};
    return QString(repeats, QChar(u'a' + (number - 1) % 26));
}

}  // namespace

QString pageNumberInStyle(int number, PageLabelStyle style) {
    QString numeral;
    switch (style) {
        case PageLabelStyle::None:
            return QStringLiteral("");  // not absent
        case PageLabelStyle::Decimal:
            break;
        case PageLabelStyle::UpperRoman:
        case PageLabelStyle::LowerRoman:
            if (number >= 1) numeral = romanNumeral(number);
            break;
        case PageLabelStyle::UpperLetters:
        case PageLabelStyle::LowerLetters:
            if (number >= 1) numeral = letterNumeral(number);
            break;
    }
    if (numeral.isEmpty()) return QString::number(number);
    const bool upper = style == PageLabelStyle::UpperRoman || style == PageLabelStyle::UpperLetters;
    return upper ? numeral.toUpper() : numeral;
}

std::vector<QString> pageLabels(std::vector<PageLabelRange> ranges, int pageCount,
                                const std::function<void(const QString &)> &made) {
    std::stable_sort(ranges.begin(), ranges.end(), [](const PageLabelRange &a, const PageLabelRange &b) {
        return a.firstPage < b.firstPage;
    });
    std::vector<QString> labels;
    labels.reserve(pageCount);
    auto next = ranges.begin();
    const PageLabelRange *current = nullptr;
    for (int page = 0; page < pageCount; ++page) {
        for (; next != ranges.end() && next->firstPage <= page; ++next)
            current = &*next;
        if (!current) {
            labels.push_back(QString::number(page + 1));
            continue;
        }
        const qint64 number = qint64{current->start} + page - current->firstPage;
        labels.push_back(
            current->prefix +
            pageNumberInStyle(static_cast<int>(std::min<qint64>(number, INT_MAX)), current->style));
        made(labels.back());
    }
    return labels;
}

}  // namespace leafwright
