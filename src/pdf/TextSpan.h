#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>

#include <vector>

namespace leafwright {

/// Characters that follow each other in one font, size and colour on one baseline, as the content has them.
/// Places are on the page as it is shown (see PageTransform): in points, with the origin at the top left of
/// the crop box, x to the right and y down.
struct TextSpan {
    /// In Unicode, in reading order as far as the file tells. A blank stands where the content has one or
    /// leaves a gap; one at the end is outside of the box.
    QString text;
    QRectF box;  ///< From the font's ascender to its descender, from the first glyph to the last.
    /// y of the origin of most characters; x, where the text runs up or down.
    double baseline = 0;
    double size = 0;          ///< The font's size as it is shown.
    QString fontName;         ///< As in the file; may have a subset's prefix.
    bool bold = false;        ///< What the font's descriptor and program say; what its name says is not here.
    bool italic = false;      ///< The same.
    bool mono = false;        ///< The same.
    QPointF direction{1, 0};  ///< Unit vector in which the text runs; (0, -1) is up.
    quint32 color = 0xff000000;  ///< 0xAARRGGBB
    /// The left edge of each UTF-16 unit of the text; for vertical text, its upper edge.
    std::vector<float> starts;
};

}  // namespace leafwright
