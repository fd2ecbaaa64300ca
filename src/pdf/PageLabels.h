#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace leafwright {

/// How the numbers of a labelling range are written (ISO 32000-1, table 159, entry S).
enum class PageLabelStyle { None, Decimal, UpperRoman, LowerRoman, UpperLetters, LowerLetters };

/// A labelling range: it starts at a page and reaches to the next range (ISO 32000-1, 12.4.2).
struct PageLabelRange {
    int firstPage = 0;  ///< 0-based.
    PageLabelStyle style = PageLabelStyle::None;
    QString prefix;
    int start = 1;  ///< The number of the range's first page.
};

/// The labels of all pages. A page before the first range has its 1-based number.
/// @param ranges in any order; of two at one page the last counts.
/// @param made is told each label when it is made, and may throw to end it
std::vector<QString> pageLabels(
    std::vector<PageLabelRange> ranges, int pageCount,
    const std::function<void(const QString &label)> &made = [](const QString &) {});

/// A number in a style. Roman and letter forms grow with the number without bound, so one that would
/// take more than 1,000 letters is written in decimal digits; so is one below 1.
QString pageNumberInStyle(int number, PageLabelStyle style);

}  // namespace leafwright
