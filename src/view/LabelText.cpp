#include "view/LabelText.h"

#include <QFontMetricsF>

namespace leafwright {

namespace {

/// Fonts are measured and drawn at this size, in pixels, and scaled: the metrics of small ones are rounded.
constexpr int referenceSize = 1000;
constexpr int greatestSize = 10000;

QFont referenceFont(const QString &name, QFont::Weight weight) {
    QFont font(name);
    font.setPixelSize(referenceSize);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// The size at font size 1.
QSizeF unitSize(const QString &text, const QFont &font) {
    const QFontMetricsF metrics(font);
    return QSizeF(metrics.horizontalAdvance(text), metrics.height()) / referenceSize;
}

}  // namespace

QSizeF sizeOfText(const QString &text, const QString &fontName, double fontSize) {
    return unitSize(text, referenceFont(fontName, QFont::Normal)) * fontSize;
}

double fontSizeForAreaSize(const QSizeF &areaSize, const QString &text, const QString &fontName) {
    if (areaSize.width() == 0 && areaSize.height() == 0) return 0;
    const QSizeF unit = unitSize(text, referenceFont(fontName, QFont::Bold));
    int size = 1;
    while (size <= greatestSize && unit.width() * size <= areaSize.width() &&
           unit.height() * size <= areaSize.height())
        ++size;
    return size - 2;
}

void drawText(QPainter &painter, const QPointF &lowerLeft, const QString &text, const QString &fontName,
              double fontSize) {
    if (!(fontSize > 0)) return;
    const QFont font = referenceFont(fontName, QFont::Normal);
    painter.save();
    painter.setFont(font);
    painter.translate(lowerLeft);
    painter.scale(fontSize / referenceSize, -fontSize / referenceSize);
    painter.drawText(QPointF(0, -QFontMetricsF(font).descent()), text);
    painter.restore();
}

}  // namespace leafwright
