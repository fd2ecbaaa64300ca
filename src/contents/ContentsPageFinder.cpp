#include "contents/ContentsPageFinder.h"

#include "contents/ContentsWords.h"
#include "contents/TextFolding.h"
#include "pdf/ReadAhead.h"

#include <QRegularExpression>
#include <QSet>

#include <functional>

namespace leafwright {

namespace {

/// What the rows of a page say for and against its being one of a contents.
struct PageCounts {
    double rows = 0;
    double entries = 0;
    double linked = 0;         ///< Rows whose links have one target.
    double targets = 0;        ///< Different pages that the rows' first links lead to.
    double rising = 1;         ///< Share of the numbers that may follow the one before.
    double risingLinks = 1;    ///< Share of the links' targets that are not before the one above.
    double manyNumbers = 0;    ///< Entries such as "..., 12, 15", which are of an index.
    bool isTitled = false;     ///< Has a heading such as "Contents".
    bool isOtherList = false;  ///< Begins as a list of figures or the like.
};

template <typename MayFollow>
double risingShare(const std::vector<int> &values, MayFollow mayFollow) {
    if (values.size() < 2) return 1;
    double rising = 0;
    for (size_t i = 1; i < values.size(); ++i)
        rising += mayFollow(values[i], values[i - 1]) ? 1 : 0;
    return rising / static_cast<double>(values.size() - 1);
}

PageCounts countRows(const std::vector<ContentsRow> &rows) {
    constexpr size_t firstRows = 3;
    static const QRegularExpression numberBefore(QStringLiteral("\\d,\\s*$"),
                                                 QRegularExpression::UseUnicodePropertiesOption);
    PageCounts counts;
    std::vector<int> numbers;
    std::vector<int> targets;
    for (size_t i = 0; i < rows.size(); ++i) {
        const ContentsRow &row = rows[i];
        ++counts.rows;
        counts.isTitled = counts.isTitled || isContentsTitle(row.line.text);
        counts.isOtherList = counts.isOtherList || (i < firstRows && isListTitle(row.line.text));
        counts.linked += row.hasOneTarget() ? 1 : 0;
        if (!row.links.empty()) targets.push_back(row.links.front().targetPage);
        if (const RowEnd *end = row.entryEnd()) {
            ++counts.entries;
            counts.manyNumbers += numberBefore.match(end->title).hasMatch() ? 1 : 0;
            if (isDecimalNumber(end->number)) numbers.push_back(decimalValue(end->number));
        }
    }
    counts.rising = risingShare(numbers, mayFollow);
    counts.risingLinks = risingShare(targets, std::greater_equal<>());
    counts.targets = static_cast<double>(QSet<int>(targets.begin(), targets.end()).size());
    counts.isOtherList = counts.isOtherList && !counts.isTitled;
    return counts;
}

/// @param continues whether the page before is one of a contents
bool isContentsPage(const PageCounts &page, bool continues) {
    constexpr double indexShare = 0.2;
    const bool expected = page.isTitled || continues;
    const double fewest = expected ? 3 : 6;
    if (page.isOtherList && !continues) return false;
    if (page.manyNumbers > indexShare * page.entries) return false;
    const double share = page.entries / page.rows;
    if (page.entries >= fewest && share >= (expected ? 0.3 : 0.5) &&
        page.rising >= (page.entries > 4 ? 0.75 : 0.6))
        return true;
    // The last few rows of a contents may stand on a page of their own.
    if (continues && page.entries >= 1 && share >= 0.5 && page.rising == 1) return true;
    return page.linked >= fewest && page.linked >= (expected ? 0.45 : 0.75) * page.rows &&
           page.risingLinks >= 0.85 && page.targets >= std::min(4.0, page.linked * 0.3);
}

/// A page that may be one of a contents.
struct FrontPage {
    PageCounts counts;
    std::vector<ContentsRow> rows;  ///< None where it is no such page, whatever the page before is.
};

FrontPage readFrontPage(const PageLines &page, int index, bool withLinks) {
    FrontPage result;
    result.rows = contentsRows(page, index, withLinks);
    result.counts = countRows(result.rows);
    if (!withLinks) result.counts.linked = 0;
    if (!isContentsPage(result.counts, true)) result.rows.clear();
    return result;
}

}  // namespace

int endOfFrontPages(int pageCount) {
    constexpr int frontPages = 60;
    constexpr double frontShare = 0.4;
    return std::min(pageCount, std::max(frontPages, static_cast<int>(frontShare * pageCount)) + 1);
}

ContentsPageFindings findContentsPages(const std::vector<PageLines> &pages, bool withLinks) {
    ContentsPageFindings findings;
    const int end = endOfFrontPages(static_cast<int>(pages.size()));
    std::vector<FrontPage> front(static_cast<size_t>(end));
    onAllCores(end, [&](int i) {
        front[static_cast<size_t>(i)] = readFrontPage(pages[static_cast<size_t>(i)], i, withLinks);
    });
    const auto isEmpty = [&pages, end](int page) {
        return page >= end || pages[static_cast<size_t>(page)].lines.empty();
    };
    const auto isOne = [&front, &isEmpty](int page, bool continues) {
        return !isEmpty(page) && isContentsPage(front[static_cast<size_t>(page)].counts, continues);
    };
    for (int first = 0; first < end; ++first) {
        if (!front[static_cast<size_t>(first)].rows.empty())
            findings.rows[first] = std::move(front[static_cast<size_t>(first)].rows);
        if (!findings.regions.empty() && first <= findings.regions.back().lastPage) continue;
        if (!isOne(first, false)) continue;
        // Where rows have numbers, a page of links without any is no more of the contents.
        const bool isNumbered = front[static_cast<size_t>(first)].counts.entries > 0;
        const auto continues = [&](int page) {
            return isOne(page, true) && !(isNumbered && front[static_cast<size_t>(page)].counts.entries == 0);
        };
        int last = first;
        while (true) {
            // One page without text may lie between.
            if (continues(last + 1)) {
                ++last;
            } else if (isEmpty(last + 1) && continues(last + 2)) {
                last += 2;
            } else {
                break;
            }
        }
        findings.regions.push_back({first, last});
    }
    return findings;
}

}  // namespace leafwright
