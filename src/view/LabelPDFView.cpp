#include "view/LabelPDFView.h"

#include "view/PageOverlay.h"
#include "view/SpotArchive.h"
#include "view/TargetIcon.h"

#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QPixmap>

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

void LabelPDFView::pickSpot(const QPointF &viewPoint) {
    const PDFPage *page = pageForPoint(viewPoint, true);
    if (!page) return;
    const QPointF point = convertPointToPage(viewPoint, *page);
    if (!contains(boundsForDisplayBox(page), point)) return;
    const QByteArray archive = archivedSpot({point, page->label()});
    setIconLocationData(archive);
    setNeedsDisplay();
    auto *mimeData = new QMimeData;
    mimeData->setData(NSPOINT_PBOARD_TYPE, archive);
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
