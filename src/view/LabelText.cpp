#include "view/LabelText.h"

#include <QFontMetricsF>

#include <limits>

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

/// The size at font size 1. @param mostWidth what is wider need not be measured to its end: labels come from
/// files, and may be megabytes
QSizeF unitSize(const QString &text, const QFont &font, double mostWidth) {
    // The toolkit counts widths in 64ths of a pixel, in 32 bits: too few for more at once.
    constexpr qsizetype piece = 1000;
    const QFontMetricsF metrics(font);
    double width = 0;
    for (qsizetype i = 0; i < text.size() && width <= mostWidth; i += piece)
        width += metrics.horizontalAdvance(text.mid(i, piece)) / referenceSize;
    return {width, metrics.height() / referenceSize};
}

}  // namespace

QSizeF sizeOfText(const QString &text, const QString &fontName, double fontSize) {
    constexpr double unlimited = std::numeric_limits<double>::infinity();
    return unitSize(text, referenceFont(fontName, QFont::Normal), unlimited) * fontSize;
}

double fontSizeForAreaSize(const QSizeF &areaSize, const QString &text, const QString &fontName) {
    if (areaSize.width() == 0 && areaSize.height() == 0) return 0;
    const QSizeF unit = unitSize(text, referenceFont(fontName, QFont::Bold), areaSize.width());
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
