#pragma once

#include "pdf/Geometry.h"

#include <QRectF>

namespace leafwright {

/// Between page space and the page as it is shown: its crop box, turned upright by its rotation.
/// Points of the page as shown are in points too, with the origin at its top left and y pointing down.
class PageTransform {
public:
    /// @param box the part of the page that is shown, in page space
    /// @param rotation clockwise, one of 0, 90, 180 and 270 degrees
    PageTransform(const Rect &box, int rotation) : box_(box), rotation_(rotation) {}

    /// The size of the page as it is shown, in points.
    QSizeF shownSize() const {
        return isOnItsSide() ? QSizeF(box_.height, box_.width) : QSizeF(box_.width, box_.height);
    }
    QPointF toShown(const QPointF &page) const;
    QPointF toPage(const QPointF &shown) const;
    QRectF toShown(const Rect &page) const;
    Rect toPage(const QRectF &shown) const;

private:
    bool isOnItsSide() const { return rotation_ == 90 || rotation_ == 270; }

    Rect box_;
    int rotation_;
};

}  // namespace leafwright
