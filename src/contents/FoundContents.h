#pragma once

#include <QHash>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <optional>
#include <vector>

namespace leafwright {

/// How deep the outline goes where a contents is printed that agrees with the pages, or headings are tagged.
enum class ContentsDepth {
    Automatic,  ///< As tagged or printed; deeper where the printed contents are clearly brief.
    AsPrinted,  ///< The printed entries alone, and rows that were lost among them.
    Deeper,     ///< Every heading that is likelier one than not.
};

/// What a user may ask for.
struct ContentsOptions {
    int maxDepth = 0;  ///< The deepest level that is kept; 0 for any.
    ContentsDepth depth = ContentsDepth::Automatic;
    bool textOnly = false;  ///< Ignore links, named destinations, page labels and structure.
};

/// What speaks for an entry.
enum ContentsSource : unsigned {
    PrintedSource = 1,    ///< It stands in the printed contents.
    StyleSource = 2,      ///< A line on its page looks like a heading.
    LinkSource = 4,       ///< A link of the printed contents leads there.
    NameSource = 8,       ///< A named destination of a heading lies there.
    StructureSource = 16  ///< The document's structure has it as a heading, or its contents.
};
using ContentsSources = unsigned;

/// An entry of the outline that was found.
struct ContentsEntry {
    int id = 0;  ///< The same in every choice made from one analysis.
    QString title;
    int pageIndex = 0;  ///< 0-based.
    QPointF point;      ///< In page space; (0, 0) is no particular spot.
    QRectF box;         ///< Of the heading's lines on the page as it is shown; null where no line was found.
    int level = 1;      ///< 1 for the top; at most one deeper than the entry before.
    ContentsSources sources = 0;
    double confidence = 0;  ///< 0 to 1: how likely it belongs in the outline, at this place.
    int style = -1;         ///< The id of its heading style; -1 where no line was found.
    /// Rejected by the user, and here only to be accepted again: see ContentsChoices::keepsRejected. Nothing
    /// that is taken stands below it.
    bool isRejected = false;
};

/// An entry of an outline that is there already.
struct ExistingEntry {
    QString title;
    int pageIndex = 0;   ///< 0-based.
    int level = 1;       ///< 1 for the top.
    QPointF point = {};  ///< In page space; (0, 0) is no particular spot.
};

/// Headings that look alike.
struct HeadingStyle {
    int id = 0;
    QString sample;  ///< The text of its first heading.
    QString family;  ///< The font's, without words for weight and slant.
    double size = 0;
    bool bold = false;
    bool italic = false;
    bool capitals = false;
    int count = 0;         ///< Of all lines that might be headings in this style.
    int level = 0;         ///< That most of its entries have; 0 while it has none.
    bool accepted = true;  ///< Whether any of its headings is in the outline.
};

/// What a user says of a style.
struct StyleChoice {
    std::optional<bool> accepted;  ///< All its headings, or none; absent: as found.
    std::optional<int> level;
};

/// What a user says to what was found.
struct ContentsChoices {
    QHash<int, StyleChoice> styles;  ///< By a style's id.
    QHash<int, bool> entries;        ///< By an entry's id: in or out, whatever its style.
    /// Whether entries that are out by their ids are given too, marked; styles that are off never are.
    bool keepsRejected = false;

    bool accepts(int entry) const { return entries.value(entry, false); }
    bool rejects(int entry) const { return !entries.value(entry, true); }
};

/// The outline that was found. Entries are in reading order; an entry's children are those of the next level
/// that follow it before one of its own level or above. Rejecting one brings in no other: what was too deep
/// with it is too deep without it.
struct FoundContents {
    std::vector<ContentsEntry> entries;
    std::vector<HeadingStyle> styles;  ///< From large to small.
    bool hasText = true;               ///< False for page images: fewer than 50 letters a page.
    int pageCount = 0;                 ///< Of the document.
    int pagesWithoutText = 0;          ///< Blank ones and page images.
    bool cancelled = false;            ///< Stopped before the end; nothing else is set.

    /// Whether so many pages have no text, a quarter and more than one, that they can't just be blank.
    bool lacksText() const { return pagesWithoutText > 1 && 4 * pagesWithoutText >= pageCount; }
};

}  // namespace leafwright
