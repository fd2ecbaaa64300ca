#pragma once

#include "contents/EntryResolving.h"

namespace leafwright {

/// The printed contents of a document, with levels.
struct PrintedContents {
    std::vector<PrintedEntry> entries;  ///< Empty where there is none.
    ContentsRegion region;
    int rawEntries = 0;  ///< With those whose page could not be told; without those behind an excerpt.

    /// Share of the entries whose heading was found.
    double locatedShare() const;
};

/// Finds the contents, of several those of which most headings are found; marks the lines of all as contents.
PrintedContents findPrintedContents(std::vector<PageLines> &pages, const ContentsPageFindings &findings,
                                    const PrintedNumbers &numbers, const BodyStyle &body);

}  // namespace leafwright
