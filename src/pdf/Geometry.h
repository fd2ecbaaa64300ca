#pragma once

#include <QPointF>

#include <algorithm>

namespace leafwright {

/// A rectangle in PDF page space: points (1/72 inch), origin at the lower left, y pointing up.
/// QRectF is not used for this, because its top is where page space has the bottom.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool isEmpty() const { return !(width > 0 && height > 0); }
    double right() const { return x + width; }
    double top() const { return y + height; }
    QPointF topLeft() const { return {x, top()}; }

    /// The smallest rectangle around both; an empty one does not count.
    Rect united(const Rect &other) const {
        if (isEmpty()) return other;
        if (other.isEmpty()) return *this;
        const double left = std::min(x, other.x);
        const double bottom = std::min(y, other.y);
        return {left, bottom, std::max(right(), other.right()) - left, std::max(top(), other.top()) - bottom};
    }

    friend bool operator==(const Rect &, const Rect &) = default;
};

/// The boxes and rotation of one page (ISO 32000-1, 7.7.3.3 and 14.11.2).
struct PageGeometry {
    Rect mediaBox;
    Rect cropBox;      ///< Clipped to the media box; equal to it where the file has none.
    int rotation = 0;  ///< Clockwise, one of 0, 90, 180 and 270 degrees.

    friend bool operator==(const PageGeometry &, const PageGeometry &) = default;
};

/// "No particular spot" is the zero point, compared exactly. (QPointF's own == is fuzzy.)
inline bool isZeroPoint(const QPointF &point) {
    return point.x() == 0 && point.y() == 0;
}

/// Exact comparison of two points. (QPointF's own == is fuzzy.)
inline bool samePoint(const QPointF &a, const QPointF &b) {
    return a.x() == b.x() && a.y() == b.y();
}

}  // namespace leafwright
