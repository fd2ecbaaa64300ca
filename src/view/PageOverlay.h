#pragma once

#include "pdf/Geometry.h"

#include <QByteArray>
#include <QImage>
#include <QPainter>
#include <QString>
#include <QTransform>

namespace leafwright {

/// What LabelPDFView shows on top of a page.
struct PageOverlay {
    Rect bounds;              ///< The part of the page that is shown, in page space.
    int rotation = 0;         ///< The page's, clockwise.
    QString label;            ///< The page's.
    QString location;         ///< The badge's corner: "None", "Q1" to "Q4".
    QByteArray iconLocation;  ///< A spot archive; null for no icon.
    QImage icon;              ///< Shown as 20 by 20 points.
};

/// The badge's place in page space: a quarter of the page's width and a twentieth of its height, at the top
/// right ("Q1"), top left ("Q2"), bottom left ("Q3"), or bottom right.
Rect badgeRect(const Rect &bounds, const QString &location);

/// From page space to the page as it is shown, with the origin at its lower left and y pointing up. For a
/// page upside down, width and height are crossed, so that on such a page, unless it is square, all lands
/// elsewhere.
QTransform transformForPage(const Rect &bounds, int rotation);

/// Draws badge and icon; nothing at "None". The painter maps points of the page as it is shown, with the
/// origin at its lower left and y pointing up, and keeps its state. Badge and icon turn with the page.
void drawPageOverlay(QPainter &painter, const PageOverlay &overlay);

}  // namespace leafwright
