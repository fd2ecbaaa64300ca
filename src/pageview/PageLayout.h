#pragma once

#include <QRect>
#include <QSizeF>

#include <vector>

namespace leafwright {

/// Where the pages of a continuous view are: one below the other, with gaps between and around them.
/// Positions are in pixels of the content, whose origin is at the top left. Changing the scale and finding
/// pages take no longer for many pages than for few.
class PageLayout {
public:
    /// The space between pages and around them, in pixels at every scale.
    static constexpr int gap = 8;

    PageLayout() = default;
    /// @param sizes of the pages as they are shown, in points
    explicit PageLayout(const std::vector<QSizeF> &sizes);

    int pageCount() const { return static_cast<int>(sizes_.size()); }
    /// The size of a page as it is shown, in points. @param index 0-based, within range.
    QSizeF pageSize(int index) const { return sizes_[static_cast<size_t>(index)]; }

    /// Pixels per point.
    double scale() const { return scale_; }
    /// Sets the scale, or the nearest at which all positions are still small enough for a scroll bar.
    void setScale(double scale);
    double smallestScale() const { return std::min(0.05, largestScale_); }
    double largestScale() const { return largestScale_; }
    /// The scale at which the widest page and the gaps beside it fill a width in pixels.
    double scaleToFitWidth(int width) const;

    /// The size of everything, gaps included.
    QSize contentSize() const;
    /// A page's place, centred across a content that may be wider than need be.
    /// @param index 0-based, within range @param contentWidth at least that of contentSize()
    QRect pageRect(int index, int contentWidth) const;
    /// The 0-based index of the page at a height or, in a gap, of the nearest. There must be pages.
    int pageNear(int y) const;

private:
    int topOf(int index) const;
    int bottomOf(int index) const;

    std::vector<QSizeF> sizes_;
    std::vector<double> tops_;  ///< In points, without gaps.
    double height_ = 0;         ///< Of all pages together, in points.
    double width_ = 0;          ///< Of the widest page, in points.
    double scale_ = 1;
    double largestScale_ = 32;
};

}  // namespace leafwright
