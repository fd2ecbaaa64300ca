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

/// A heading of the document's structure (ISO 32000-1, 14.8.4.3.2): an element H or H1 to H6.
struct StructureElement {
    int level;     ///< 1 to 6; 0 for H.
    QString text;  ///< What stands for its content (/ActualText); null where nothing does.
    std::vector<MarkedContent> content;  ///< In the order of the structure; may be empty.

    friend bool operator==(const StructureElement &, const StructureElement &) = default;
};

/// What a file says of itself beside its pages' content.
struct DocumentMarks {
    bool hasPageLabels = false;
    QString producer;                     ///< Of the document information (ISO 32000-1, 14.3.3).
    QString creator;                      ///< The same: what made the document that the producer converted.
    std::vector<NamedDestination> names;  ///< By page, then from top to bottom.
    std::vector<StructureElement> headings;  ///< In the order of the structure.
};

}  // namespace leafwright
