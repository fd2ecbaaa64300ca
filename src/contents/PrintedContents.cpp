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

using Verdict = TriedContents::Verdict;

/// Pages that are tried as a contents.
struct Trial {
    TriedContents contents;
    std::vector<PrintedEntry> entries;
    int rawEntries = 0;  // see PrintedContents
};

std::vector<TriedRow> rowsOf(const ContentsPageFindings &findings, const ContentsRegion &region) {
    std::vector<TriedRow> rows;
    const auto end = findings.rows.upper_bound(region.lastPage);
    for (auto page = findings.rows.lower_bound(region.firstPage); page != end; ++page) {
        for (const ContentsRow &row : page->second) {
            const RowEnd *entry = row.entryEnd();
            rows.push_back({row.page, entry ? entry->title : row.line.text, entry ? entry->number : QString(),
                            row.isEntry, !row.links.empty()});
        }
    }
    return rows;
}

/// Finds where the entries lead. @return whether they are a contents
bool resolve(Trial &trial, const std::vector<PageLines> &pages, const PrintedNumbers &numbers,
             TitleSearch &search, const BodyStyle &body) {
    TriedContents &contents = trial.contents;
    contents.lost = resolveEntries(trial.entries, pages, numbers, search);
    // What an excerpt leaves out still tells the levels of the others.
    assignPrintedLevels(trial.entries, body);
    std::vector<PrintedEntry> beyond =
        takenOut(trial.entries, [](const PrintedEntry &entry) { return entry.isBeyond; });
    trial.rawEntries -= static_cast<int>(beyond.size());
    std::move(beyond.begin(), beyond.end(), std::back_inserter(contents.lost));
    contents.resolved = static_cast<int>(trial.entries.size());
    contents.located = countLocated(trial.entries);
    return areContents(trial.entries);
}

}  // namespace

double PrintedContents::locatedShare() const {
    return static_cast<double>(countLocated(entries)) / std::max(1, rawEntries);
}

PrintedContents findPrintedContents(std::vector<PageLines> &pages, const ContentsPageFindings &findings,
                                    const PrintedNumbers &numbers, const BodyStyle &body) {
    constexpr size_t fewest = 3;
    std::vector<Trial> trials;
    for (const ContentsRegion &region : findings.regions) {
        Trial trial;
        trial.entries = entriesOfRegion(findings, region, body);
        trial.contents.region = region;
        trial.contents.rows = rowsOf(findings, region);
        trial.rawEntries = static_cast<int>(trial.entries.size());
        if (trial.entries.size() >= fewest) {
            markContents(pages, trial.entries);
            markContentsTitles(pages, region);
            trial.contents.verdict = Verdict::NoContents;
        }
        trials.push_back(std::move(trial));
    }
    TitleSearch search(pages, body);
    Trial *best = nullptr;
    for (Trial &trial : trials) {
        if (trial.contents.verdict == Verdict::TooFewEntries || !resolve(trial, pages, numbers, search, body))
            continue;
        trial.contents.verdict = Verdict::FewerFound;
        if (!best || trial.contents.located > best->contents.located) best = &trial;
    }
    PrintedContents result;
    if (best) {
        best->contents.verdict = Verdict::Taken;
        result = {std::move(best->entries), best->contents.region, best->rawEntries, {}};
    }
    for (Trial &trial : trials)
        result.tried.push_back(std::move(trial.contents));
    return result;
}

}  // namespace leafwright
