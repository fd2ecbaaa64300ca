#pragma once

#include "contents/ContentsEntries.h"
#include "contents/PrintedNumbers.h"
#include "contents/TitleSearch.h"

#include <functional>

namespace leafwright {

/// What is told of entries whose pages were looked for.
struct ResolvedEntries {
    std::vector<PrintedEntry> lost;    ///< Those that were taken out, since their page can't be told.
    bool areCountedByChapter = false;  ///< The page numbers begin again in each chapter.
};

/// Finds the page and the heading of each entry: by its link, by its page number, by its title. Entries whose
/// page can't be told are taken out, those that lead behind the last page are marked.
ResolvedEntries resolveEntries(std::vector<PrintedEntry> &entries, const std::vector<PageLines> &pages,
                               const PrintedNumbers &numbers, TitleSearch &search);

/// Takes entries out of others; both keep their order.
std::vector<PrintedEntry> takenOut(std::vector<PrintedEntry> &entries,
                                   const std::function<bool(const PrintedEntry &)> &which);

/// Whether resolved entries are those of a contents: they rise, and enough of their headings were found.
bool areContents(const std::vector<PrintedEntry> &entries);

/// How many entries have their heading.
int countLocated(const std::vector<PrintedEntry> &entries);

}  // namespace leafwright
