#pragma once

#include "pdf/PageTransform.h"
#include "pdf/TextSpan.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace leafwright {

// What Find Contents reads of a document. All places are on the page as it is shown (see PageTransform): in
// points, with the origin at the top left of the crop box, x to the right and y down.

/// An area of a page that leads to a place in the document.
struct ContentsLink {
    QRectF box;
    int targetPage = 0;  ///< 0-based, within the document.
    std::optional<QPointF>
        targetPoint;  ///< On the target page as it is shown; absent for the page as a whole.
};

/// What stands on a page, and where.
struct PageEvidence {
    Rect visibleBox;   ///< The crop box, in page space.
    int rotation = 0;  ///< Clockwise, one of 0, 90, 180 and 270 degrees.
    /// In content order; spans of blanks alone are left out.
    std::vector<TextSpan> spans;
    std::vector<ContentsLink> links;  ///< Links within the document, in the order of the file.
    bool isRecognised = false;        ///< The text was recognised in an image, where sizes vary.

    PageTransform transform() const { return {visibleBox, rotation}; }
};

/// A destination with a name (ISO 32000-1, 12.3.2.3).
struct NamedPlace {
    QString name;
    int pageIndex = 0;
    std::optional<QPointF> point;  ///< On the page as it is shown; absent for the page as a whole.
};

/// A heading of the document's structure (ISO 32000-1, 14.8.4.3.2): elements H and H1 to H6, after role
/// mapping.
struct StructureHeading {
    int level = 0;  ///< 1 to 6; 0 for H.
    int pageIndex = 0;
    QString text;
};

/// An item of a table of contents of the document's structure (ISO 32000-1, 14.8.4.2): an element TOCI in a
/// TOC, after role mapping.
struct StructureItem {
    int level = 1;                     ///< How many tables of contents it is in, one in the other.
    int pageIndex = 0;                 ///< Where it is printed.
    QString text;                      ///< All of it, with leaders and page number.
    std::optional<ContentsLink> link;  ///< Where it leads; without a box.
};

/// What is said of the document as a whole.
struct DocumentEvidence {
    /// The printed name of each page; empty in a document that has no page labels (ISO 32000-1, 12.4.2).
    QStringList pageLabels;
    std::vector<NamedPlace> namedPlaces;
    std::vector<StructureHeading> headings;            ///< In the order of the structure.
    std::vector<std::vector<StructureItem>> contents;  ///< The tables of contents of the structure.
    QString
        producer;  ///< The entries Producer and Creator of the document's information, with a blank between.
};

/// Pages as Find Contents needs them. A PDF document gives them; tests make others.
class ContentsPages {
public:
    virtual ~ContentsPages() = default;

    virtual int pageCount() const = 0;
    /// What is on a page; never null. Asked for once a page, from several threads at a time.
    /// @param index 0-based, within range.
    virtual std::shared_ptr<const PageEvidence> pageEvidence(int index) const = 0;
    /// What is said of the document; asked for once.
    virtual DocumentEvidence documentEvidence() const = 0;
};

}  // namespace leafwright
