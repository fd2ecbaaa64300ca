#include "pdf/PageTransform.h"

namespace leafwright {

QPointF PageTransform::toShown(const QPointF &page) const {
    const double x = page.x() - box_.x;
    const double y = page.y() - box_.y;
    switch (rotation_) {
        case 90:
            return {y, x};
        case 180:
            return {box_.width - x, y};
        case 270:
            return {box_.height - y, box_.width - x};
        default:
            return {x, box_.height - y};
    }
}

QPointF PageTransform::toPage(const QPointF &shown) const {
    const QPointF lowerLeft(box_.x, box_.y);
    switch (rotation_) {
        case 90:
            return lowerLeft + QPointF(shown.y(), shown.x());
        case 180:
            return lowerLeft + QPointF(box_.width - shown.x(), shown.y());
        case 270:
            return lowerLeft + QPointF(box_.width - shown.y(), box_.height - shown.x());
        default:
            return lowerLeft + QPointF(shown.x(), box_.height - shown.y());
    }
}

QRectF PageTransform::toShown(const Rect &page) const {
    const QPointF a = toShown(QPointF(page.x, page.y));
    const QPointF b = toShown(QPointF(page.right(), page.top()));
    return QRectF(a, b).normalized();
}

Rect PageTransform::toPage(const QRectF &shown) const {
    const QRectF page = QRectF(toPage(shown.topLeft()), toPage(shown.bottomRight())).normalized();
    return {page.x(), page.y(), page.width(), page.height()};
}

}  // namespace leafwright
