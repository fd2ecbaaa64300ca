#pragma once

#include "pdf/PDFOutline.h"

namespace leafwright {

/// A destination with a name (ISO 32000-1, 12.3.2.3).
struct NamedDestination {
    QString name;
    PDFDestination destination;

    friend bool operator==(const NamedDestination &, const NamedDestination &) = default;
};

/// A piece of a page's content that the structure names by a number (ISO 32000-1, 14.7.4.2).
struct MarkedContent {
    int pageIndex;
    int identifier;

    friend bool operator==(const MarkedContent &, const MarkedContent &) = default;
};

/// An element of the document's structure: a heading (ISO 32000-1, 14.8.4.3.2), which is an H or H1 to H6, or
/// an item of a table of contents (14.8.4.2), which is a TOCI.
struct StructureElement {
    /// Of a heading 1 to 6, and 0 for H; of an item how many tables of contents it is in, one in the other.
    int level;
    QString text;  ///< What stands for its content (/ActualText); null where nothing does.
    std::vector<MarkedContent> content;  ///< In the order of the structure; may be empty.
    /// Where the first link in it leads; of items alone, and absent for those without.
    std::optional<PDFDestination> target = {};

    friend bool operator==(const StructureElement &, const StructureElement &) = default;
};

/// What the document's structure (ISO 32000-1, 14.7) has that tells of its outline.
struct DocumentStructure {
    std::vector<StructureElement> headings;  ///< In the order of the structure.
    /// The items of each table of contents that is in no other, with those of all within it; none is empty.
    std::vector<std::vector<StructureElement>> contents;
};

/// What a file says of itself beside its pages' content.
struct DocumentMarks {
    bool hasPageLabels = false;
    QString producer;                     ///< Of the document information (ISO 32000-1, 14.3.3).
    QString creator;                      ///< The same: what made the document that the producer converted.
    std::vector<NamedDestination> names;  ///< By page, then from top to bottom.
    DocumentStructure structure;
};

}  // namespace leafwright
