#pragma once

#include "model/OutlineEntry.h"
#include "pdf/Geometry.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace leafwright {

/// A place in the document that an outline entry leads to (ISO 32000-1, 12.3.2).
struct PDFDestination {
    int pageIndex = 0;  ///< 0-based.
    QPointF point;      ///< In page space; (0, 0) is no particular spot.

    friend bool operator==(const PDFDestination &a, const PDFDestination &b) {
        return a.pageIndex == b.pageIndex && samePoint(a.point, b.point);
    }
};

/// One entry of a PDF's outline with everything below it; the outline's root is one without a label.
/// Trees of any depth are built, walked and destroyed without recursion.
class PDFOutline {
public:
    PDFOutline() = default;
    explicit PDFOutline(QString label) : label_(std::move(label)) {}
    ~PDFOutline();
    PDFOutline(const PDFOutline &) = delete;
    PDFOutline &operator=(const PDFOutline &) = delete;

    const QString &label() const { return label_; }
    void setLabel(const QString &label) { label_ = label; }

    /// Absent for an entry that leads nowhere in this document.
    const std::optional<PDFDestination> &destination() const { return destination_; }
    void setDestination(const std::optional<PDFDestination> &destination) { destination_ = destination; }

    /// What else the entry is. Of the root only the number says something: that of the file's outline.
    const OutlineEntry &entry() const { return entry_; }
    void setEntry(const OutlineEntry &entry) { entry_ = entry; }

    int numberOfChildren() const { return static_cast<int>(children_.size()); }
    const PDFOutline &childAtIndex(int index) const { return *children_.at(index); }
    PDFOutline &childAtIndex(int index) { return *children_.at(index); }
    /// Takes the child over. Throws std::out_of_range unless 0 <= index <= numberOfChildren().
    PDFOutline &insertChildAtIndex(std::unique_ptr<PDFOutline> child, int index);

    /// The number of entries below this one.
    qsizetype countOfDescendants() const;

private:
    QString label_;
    std::optional<PDFDestination> destination_;
    OutlineEntry entry_;
    std::vector<std::unique_ptr<PDFOutline>> children_;
};

}  // namespace leafwright
