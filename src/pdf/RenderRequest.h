#pragma once

#include <QRect>

namespace leafwright {

/// What to draw of a page, and how large.
struct RenderRequest {
    int pageIndex = 0;  ///< 0-based.
    double scale = 1;   ///< Device pixels per point.
    /// The part to draw, in device pixels of the page as it is shown (see PageTransform): origin at its top
    /// left, y pointing down. What lies outside the page is white.
    QRect clip;

    friend bool operator==(const RenderRequest &, const RenderRequest &) = default;
};

/// No image is made with more pixels than this; it takes 256 MB.
constexpr qint64 mostPixelsOfImage = qint64{64} << 20;

}  // namespace leafwright
