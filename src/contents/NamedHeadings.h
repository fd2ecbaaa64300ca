#pragma once

#include "contents/HeadingFeatures.h"

#include <QHash>

namespace leafwright {

/// What a named destination says of the heading that it leads to.
struct NamedHeading {
    int depth = 0;           ///< 0 for parts, 1 for chapters and appendices, 2 for sections, and so on.
    bool isStarred = false;  ///< Of a heading without number, which may be missing from the author's outline.
};

/// The line of the heading that a place lies at, or above, which may be the first of the next page. Null
/// where there is none.
/// @param place has a point
LineRef headingAt(const NamedPlace &place, const std::vector<PageLines> &pages, const BodyStyle &body);

/// The candidates that destinations such as "section.2.1" lead to, by their index. Empty where there are not
/// enough.
QHash<int, NamedHeading> findNamedHeadings(const std::vector<NamedPlace> &places,
                                           const std::vector<PageLines> &pages,
                                           const HeadingCandidates &headings, const BodyStyle &body);

/// The headings of a document without printed contents, by their names and styles together.
/// @param named see findNamedHeadings()
struct NamedOutline {
    std::vector<size_t> headings;  ///< Indices of the candidates, in reading order.
    std::vector<int> levels;
};
std::optional<NamedOutline> outlineByNames(const HeadingCandidates &headings,
                                           const QHash<int, NamedHeading> &named, const BodyStyle &body);

}  // namespace leafwright
