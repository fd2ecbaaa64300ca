#include "contents/PrintedContents.h"

#include "contents/ContentsLevels.h"
#include "contents/ContentsWords.h"
#include "contents/StructureContents.h"

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
    ResolvedEntries resolved = resolveEntries(trial.entries, pages, numbers, search);
    contents.lost = std::move(resolved.lost);
    contents.areCountedByChapter = resolved.areCountedByChapter;
    // What an excerpt leaves out still tells the levels of the others.
    const bool hasLevels = std::any_of(trial.entries.begin(), trial.entries.end(),
                                       [](const PrintedEntry &entry) { return entry.level > 1; });
    if (!hasLevels) assignPrintedLevels(trial.entries, body);
    std::vector<PrintedEntry> beyond =
        takenOut(trial.entries, [](const PrintedEntry &entry) { return entry.isBeyond; });
    trial.rawEntries -= static_cast<int>(beyond.size());
    std::move(beyond.begin(), beyond.end(), std::back_inserter(contents.lost));
    contents.resolved = static_cast<int>(trial.entries.size());
    contents.located = countLocated(trial.entries);
    return areContents(trial.entries);
}

/// What the structure has as tables of contents.
std::vector<Trial> taggedTrials(const std::vector<std::vector<StructureItem>> &tagged,
                                const std::vector<PageLines> &pages) {
    std::vector<Trial> trials;
    for (const std::vector<StructureItem> &items : tagged) {
        Trial trial;
        trial.contents.isTagged = true;
        trial.entries = entriesOfItems(items, pages);
        if (trial.entries.empty()) continue;
        ContentsRegion &region = trial.contents.region;
        region = {trial.entries.front().contentsPage, trial.entries.front().contentsPage};
        for (const PrintedEntry &entry : trial.entries) {
            region.firstPage = std::min(region.firstPage, entry.contentsPage);
            region.lastPage = std::max(region.lastPage, entry.contentsPage);
            trial.contents.rows.push_back(
                {entry.contentsPage, entry.title, entry.number, true, entry.link.has_value()});
        }
        trials.push_back(std::move(trial));
    }
    return trials;
}

/// Which of the trials that are contents is the document's; null where there is none.
Trial *bestOf(std::vector<Trial> &trials) {
    constexpr double enoughTagged = 0.8;  // of the headings of another
    Trial *printed = nullptr;
    Trial *tagged = nullptr;
    for (Trial &trial : trials) {
        if (trial.contents.verdict != Verdict::FewerFound) continue;
        Trial *&best = trial.contents.isTagged ? tagged : printed;
        if (!best || trial.contents.located > best->contents.located) best = &trial;
    }
    const bool isEnough =
        tagged && (!printed || tagged->contents.located >= enoughTagged * printed->contents.located);
    return isEnough ? tagged : printed;
}

}  // namespace

double PrintedContents::locatedShare() const {
    return static_cast<double>(countLocated(entries)) / std::max(1, rawEntries);
}

PrintedContents findPrintedContents(std::vector<PageLines> &pages, const ContentsPageFindings &findings,
                                    const PrintedNumbers &numbers, const BodyStyle &body,
                                    const std::vector<std::vector<StructureItem>> &tagged) {
    constexpr size_t fewest = 3;
    std::vector<Trial> trials = taggedTrials(tagged, pages);
    for (const ContentsRegion &region : findings.regions) {
        Trial trial;
        trial.entries = entriesOfRegion(findings, region, body);
        trial.contents.region = region;
        trial.contents.rows = rowsOf(findings, region);
        trials.push_back(std::move(trial));
    }
    for (Trial &trial : trials) {
        trial.rawEntries = static_cast<int>(trial.entries.size());
        if (trial.entries.size() < fewest) continue;
        markContents(pages, trial.entries);
        markContentsTitles(pages, trial.contents.region);
        const bool isList = trial.contents.isTagged && areCaptions(trial.entries);
        trial.contents.verdict = isList ? Verdict::Captions : Verdict::NoContents;
    }
    TitleSearch search(pages, body);
    for (Trial &trial : trials) {
        if (trial.contents.verdict == Verdict::NoContents && resolve(trial, pages, numbers, search, body))
            trial.contents.verdict = Verdict::FewerFound;
    }
    PrintedContents result;
    if (Trial *best = bestOf(trials)) {
        best->contents.verdict = Verdict::Taken;
        result = {
            std::move(best->entries), best->contents.region, best->contents.isTagged, best->rawEntries, {}};
    }
    for (Trial &trial : trials)
        result.tried.push_back(std::move(trial.contents));
    return result;
}

}  // namespace leafwright
