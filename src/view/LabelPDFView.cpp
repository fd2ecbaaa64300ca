#include "view/LabelPDFView.h"

#include "view/PageOverlay.h"
#include "view/SpotArchive.h"
#include "view/TargetIcon.h"

#include <QApplication>
#include <QDrag>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPixmap>

#include <algorithm>
#include <cmath>

namespace leafwright {

namespace {

constexpr int iconPoints = 20;

bool contains(const Rect &rect, const QPointF &point) {
    return point.x() >= rect.x && point.x() < rect.right() && point.y() >= rect.y && point.y() < rect.top();
}

}  // namespace

LabelPDFView::LabelPDFView(QWidget *parent) : PDFView(parent) {
    awakeFromNib();
}

void LabelPDFView::awakeFromNib() {
    targeticon_ = targetIcon();
}

void LabelPDFView::drawPage(QPainter &painter, const PDFPage &page) {
    PDFView::drawPage(painter, page);
    drawPageOverlay(painter, {boundsForDisplayBox(&page), page.rotation(), page.label(), pageLabelLocation_,
                              iconLocationData_, targeticon_});
}

void LabelPDFView::mouseDoubleClickEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton) {
        PDFView::mouseDoubleClickEvent(event);
        return;
    }
    // The base view, which would select a word, never sees it.
    pickSpot(event->position());
}

void LabelPDFView::mousePressEvent(QMouseEvent *event) {
    PDFView::mousePressEvent(event);
    iconHeldAt_.reset();
    if (event->button() == Qt::LeftButton && isOnIcon(event->position()))
        iconHeldAt_ = event->position().toPoint();
}

void LabelPDFView::mouseMoveEvent(QMouseEvent *event) {
    if (!iconHeldAt_ || !event->buttons().testFlag(Qt::LeftButton)) return PDFView::mouseMoveEvent(event);
    const QPoint way = event->position().toPoint() - *iconHeldAt_;
    if (way.manhattanLength() < QApplication::startDragDistance()) return;
    iconHeldAt_.reset();
    dragSpot();
}

void LabelPDFView::keyPressEvent(QKeyEvent *event) {
    if (event->key() != Qt::Key_Escape || iconLocationData_.isNull()) return PDFView::keyPressEvent(event);
    setIconLocationData({});
    setNeedsDisplay();
}

void LabelPDFView::pickSpot(const QPointF &viewPoint) {
    const PDFPage *page = pageForPoint(viewPoint, true);
    if (!page) return;
    const QPointF point = convertPointToPage(viewPoint, *page);
    if (!contains(boundsForDisplayBox(page), point)) return;
    const QByteArray archive = archivedSpot({point, page->label()});
    setIconLocationData(archive);
    setNeedsDisplay();
    dragSpot();
}

/// Whether the icon is seen at a view point.
bool LabelPDFView::isOnIcon(const QPointF &viewPoint) const {
    const auto spot = unarchivedSpot(iconLocationData_);
    const PDFPage *page = pageForPoint(viewPoint, false);
    if (!spot || !page || spot->pageLabel != page->label() || pageLabelLocation_ == u"None") return false;
    const QPointF away = viewPoint - convertPointFromPage(spot->point, *page);
    return std::max(std::abs(away.x()), std::abs(away.y())) <= iconPoints / 2 * scaleFactor();
}

void LabelPDFView::dragSpot() {
    auto *mimeData = new QMimeData;
    mimeData->setData(NSPOINT_PBOARD_TYPE, iconLocationData_);
    dragImage(targeticon_, {iconPoints / 2, iconPoints / 2}, mimeData);
}

void LabelPDFView::dragImage(const QImage &image, const QPoint &hotSpot, QMimeData *mimeData) {
    auto *drag = new QDrag(this);  // Deletes itself when it is over.
    const double ratio = devicePixelRatioF();
    const int pixels = qRound(iconPoints * ratio);
    QPixmap pixmap =
        QPixmap::fromImage(image.scaled(pixels, pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    pixmap.setDevicePixelRatio(ratio);
    drag->setPixmap(pixmap);
    drag->setHotSpot(hotSpot);
    drag->setMimeData(mimeData);
    drag->exec(draggingSessionSourceOperationMask());
}

}  // namespace leafwright
