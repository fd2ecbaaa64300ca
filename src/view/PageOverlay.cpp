#include "view/PageOverlay.h"

#include "view/LabelText.h"
#include "view/SpotArchive.h"

namespace leafwright {

namespace {

const QString fontName = QStringLiteral("Lucida Grande");
constexpr QColor badgeColor(255, 0, 0);
constexpr QColor systemRed(255, 59, 48);
constexpr QSizeF iconSize(20, 20);
constexpr double iconOpacity = 0.75;

void drawBadge(QPainter &painter, const PageOverlay &overlay) {
    const Rect badge = badgeRect(overlay.bounds, overlay.location);
    painter.setPen(QPen(systemRed, 1, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin));
    painter.setBrush(badgeColor);
    painter.drawRect(QRectF(badge.x, badge.y, badge.width, badge.height));

    const double fontSize = fontSizeForAreaSize({badge.width, badge.height}, overlay.label, fontName);
    if (fontSize <= 0) return;  // No room for a text.
    const QSizeF text = sizeOfText(overlay.label, fontName, fontSize);
    painter.setPen(Qt::white);
    drawText(painter,
             {badge.x + badge.width * 0.5 - text.width() * 0.5,
              badge.y + badge.height * 0.5 - text.height() * 0.5},
             overlay.label, fontName, fontSize);
}

void drawIcon(QPainter &painter, const PageOverlay &overlay) {
    const auto spot = unarchivedSpot(overlay.iconLocation);
    if (!spot || spot->pageLabel != overlay.label) return;
    const QPointF upperLeft = spot->point + QPointF(-iconSize.width() / 2, iconSize.height() / 2);
    painter.setOpacity(iconOpacity);
    painter.translate(upperLeft);
    painter.scale(1, -1);
    painter.drawImage(QRectF(QPointF(), iconSize), overlay.icon);
}

}  // namespace

Rect badgeRect(const Rect &bounds, const QString &location) {
    const double left = bounds.x;
    const double right = bounds.x + bounds.width * 0.75;
    const double top = bounds.y + bounds.height * static_cast<double>(0.95F);
    const double bottom = bounds.y;
    const double width = bounds.width * 0.25;
    const double height = bounds.height / 20;
    if (location == u"Q1") return {right, top, width, height};
    if (location == u"Q2") return {left, top, width, height};
    if (location == u"Q3") return {left, bottom, width, height};
    return {right, bottom, width, height};
}

QTransform transformForPage(const Rect &bounds, int rotation) {
    QTransform transform;
    switch (rotation) {
        case 90:
            transform.rotate(-90).translate(-bounds.width, 0);
            break;
        case 180:
            transform.rotate(180).translate(-bounds.height, -bounds.width);
            break;
        case 270:
            transform.rotate(90).translate(0, -bounds.height);
            break;
        default:
            break;
    }
    return transform.translate(-bounds.x, -bounds.y);
}

void drawPageOverlay(QPainter &painter, const PageOverlay &overlay) {
    // The icon, too, is hidden while the badge is.
    if (overlay.location == u"None") return;
    painter.save();
    painter.setTransform(transformForPage(overlay.bounds, overlay.rotation), true);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
    drawBadge(painter, overlay);
    drawIcon(painter, overlay);
    painter.restore();
}

}  // namespace leafwright
