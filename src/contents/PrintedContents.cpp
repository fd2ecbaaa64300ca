#include "contents/PrintedContents.h"

#include "contents/ContentsLevels.h"
#include "contents/ContentsWords.h"

#include <cmath>

namespace leafwright {

namespace {

/// Marks the lines that entries are printed in, so that no title is found there.
void markContents(std::vector<PageLines> &pages, const std::vector<PrintedEntry> &entries) {
    for (const PrintedEntry &entry : entries) {
        PageLines &page = pages[static_cast<size_t>(entry.contentsPage)];
        for (const TextLine &row : entry.rows) {
            for (TextLine &line : page.lines) {
                if (std::abs(line.baseline - row.baseline) < 1 && line.left < row.right + 1 &&
                    row.left < line.right + 1)
                    line.inContents = true;
            }
        }
    }
}

/// The heading of the contents is no heading of the document.
void markContentsTitles(std::vector<PageLines> &pages, const ContentsRegion &region) {
    for (int i = region.firstPage; i <= region.lastPage; ++i) {
        for (TextLine &line : pages[static_cast<size_t>(i)].lines)
            line.inContents = line.inContents || isContentsTitle(line.text);
    }
}

}  // namespace

double PrintedContents::locatedShare() const {
    return static_cast<double>(countLocated(entries)) / std::max(1, rawEntries);
}

PrintedContents findPrintedContents(std::vector<PageLines> &pages, const ContentsPageFindings &findings,
                                    const PrintedNumbers &numbers, const BodyStyle &body) {
    constexpr size_t fewest = 3;
    std::vector<PrintedContents> found;
    for (const ContentsRegion &region : findings.regions) {
        std::vector<PrintedEntry> entries = entriesOfRegion(findings, region, body);
        if (entries.size() < fewest) continue;
        markContents(pages, entries);
        markContentsTitles(pages, region);
        const auto count = static_cast<int>(entries.size());
        found.push_back({std::move(entries), region, count});
    }
    TitleSearch search(pages, body);
    PrintedContents best;
    int mostLocated = -1;
    for (PrintedContents &contents : found) {
        resolveEntries(contents.entries, pages, numbers, search);
        // What an excerpt leaves out still tells the levels of the others.
        assignPrintedLevels(contents.entries, body);
        contents.rawEntries -= static_cast<int>(
            std::erase_if(contents.entries, [](const PrintedEntry &entry) { return entry.isBeyond; }));
        if (!areContents(contents.entries) || countLocated(contents.entries) <= mostLocated) continue;
        mostLocated = countLocated(contents.entries);
        best = std::move(contents);
    }
    return best;
}

}  // namespace leafwright
