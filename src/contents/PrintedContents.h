#pragma once

#include "contents/EntryResolving.h"

namespace leafwright {

/// A row of pages that were tried as a contents.
struct TriedRow {
    int page = 0;
    QString title;   ///< All of the row where it is no entry.
    QString number;  ///< As printed; empty for none.
    bool isEntry = false;
    bool isLinked = false;
};

/// What came of pages that were tried as a contents.
struct TriedContents {
    enum class Verdict {
        TooFewEntries,
        NoContents,  ///< The entries do not rise, or too few of their headings are on the pages.
        Captions,    ///< A list of figures or the like.
        FewerFound,  ///< Another has more of its headings on the pages, or about as many.
        Taken,
    };

    ContentsRegion region;
    bool isTagged = false;  ///< A table of contents of the structure.
    Verdict verdict = Verdict::TooFewEntries;
    std::vector<TriedRow> rows;
    std::vector<PrintedEntry> lost;    ///< Entries whose page can't be told, or is behind the last one.
    bool areCountedByChapter = false;  ///< See ResolvedEntries.
    int resolved = 0;                  ///< How many others there are.
    int located = 0;                   ///< How many of those have their heading.
};

/// The printed contents of a document, with levels.
struct PrintedContents {
    std::vector<PrintedEntry> entries;  ///< Empty where there is none.
    ContentsRegion region;
    bool isTagged = false;  ///< The structure has it as a table of contents.
    int rawEntries = 0;     ///< With those whose page could not be told; without those behind an excerpt.
    std::vector<TriedContents>
        tried;  ///< All that were: those of the structure, then others in the order of their pages.

    /// Share of the entries whose heading was found.
    double locatedShare() const;
};

/// Finds the contents, of several those of which most headings are found; marks the lines of all as contents.
/// Tables of contents of the structure say which rows are one entry, and which is above which; so they are
/// preferred unless clearly fewer of their headings are found.
/// @param tagged the tables of contents of the structure
PrintedContents findPrintedContents(std::vector<PageLines> &pages, const ContentsPageFindings &findings,
                                    const PrintedNumbers &numbers, const BodyStyle &body,
                                    const std::vector<std::vector<StructureItem>> &tagged = {});

}  // namespace leafwright
