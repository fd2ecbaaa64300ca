#pragma once

#include <QPainter>
#include <QSizeF>
#include <QString>

namespace leafwright {

/// The size of a line of text in page space. It grows in proportion to the font's size, since neither the
/// screen's resolution nor hinting has a part in it.
/// @param fontName a family; where it is not installed, the system's substitute @param fontSize in points
QSizeF sizeOfText(const QString &text, const QString &fontName, double fontSize);

/// Two less than the first whole font size, of 1 to 10000, at which a text no longer fits into an area, when
/// measured in the next heavier weight; so 0 or less where there is hardly any room. 9999 if it always fits,
/// 0 for an area of 0 by 0.
/// @param areaSize in points
double fontSizeForAreaSize(const QSizeF &areaSize, const QString &text, const QString &fontName);

/// Draws a line of text in the painter's pen, upright where y points up. A size of 0 or less shows nothing.
/// @param lowerLeft of the area that sizeOfText() tells
void drawText(QPainter &painter, const QPointF &lowerLeft, const QString &text, const QString &fontName,
              double fontSize);

}  // namespace leafwright
