#pragma once

#include <QRect>

#include <vector>

namespace leafwright {

/// Parts a page into the images it is drawn as: one for all of it, unless it is large; then only those
/// tiles of it that touch a part. All rectangles are in device pixels of the page.
/// @param size of the page
/// @param part of the page that is wanted; without it, there are no tiles
std::vector<QRect> tilesOfPage(const QSize &size, const QRect &part);

/// The width and height of the tiles of a large page.
constexpr int tileLength = 1024;

/// A page with more device pixels than this is drawn in tiles.
constexpr qint64 mostPixelsInOne = 4 << 20;

}  // namespace leafwright
