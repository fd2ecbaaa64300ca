#pragma once

#include "contents/BodyStyle.h"
#include "contents/ContentsPageFinder.h"
#include "contents/Numbering.h"

namespace leafwright {

/// An entry of a printed contents.
struct PrintedEntry {
    QString title;
    QString number;  ///< Of the page, as printed; empty for a row without one.
    Numbering numbering;
    std::vector<TextLine> rows;  ///< That it is printed in, without their spans.
    int contentsPage = 0;        ///< Where it is printed.
    int column = 0;
    std::optional<ContentsLink> link;

    // Where it leads, once it is resolved.
    int page = -1;          ///< 0-based; -1 for unknown.
    bool isBeyond = false;  ///< Leads behind the last page, as many do in an excerpt.
    LineRef heading;        ///< The first line of its heading; null where none was found.
    int headingLines = 0;
    std::optional<double> y;  ///< Top of the heading or the link's target, in the reading frame.
    double score = 0;         ///< Of the heading, see locateTitle().
    int level = 1;

    const TextLine &firstRow() const { return rows.front(); }
    double right() const { return rows.back().right; }
};

/// Makes entries of the rows of a region: titles that go over several rows joined, headings between the rows
/// kept where they look like entries, all up to a list of figures or the like.
std::vector<PrintedEntry> entriesOfRegion(const ContentsPageFindings &findings, const ContentsRegion &region,
                                          const BodyStyle &body);

}  // namespace leafwright
