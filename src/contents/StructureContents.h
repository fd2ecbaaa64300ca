#pragma once

#include "contents/ContentsEntries.h"

namespace leafwright {

/// Makes entries of a table of contents of the structure, with their rows on the pages, and the links that
/// lie on these where no link is tagged. Levels are those of tables within tables, without gaps; 1 for all
/// where none is in another.
std::vector<PrintedEntry> entriesOfItems(const std::vector<StructureItem> &items,
                                         const std::vector<PageLines> &pages);

/// Whether entries are a list of figures, tables or the like, which may be tagged as a contents is.
bool areCaptions(const std::vector<PrintedEntry> &entries);

}  // namespace leafwright
