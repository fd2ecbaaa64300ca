#include "pageview/PageTiles.h"

namespace leafwright {

std::vector<QRect> tilesOfPage(const QSize &size, const QRect &part) {
    const QRect page(QPoint(0, 0), size);
    const QRect wanted = part & page;
    if (wanted.isEmpty()) return {};
    if (qint64{size.width()} * size.height() <= mostPixelsInOne) return {page};
    std::vector<QRect> tiles;
    for (int row = wanted.top() / tileLength; row <= wanted.bottom() / tileLength; ++row) {
        for (int column = wanted.left() / tileLength; column <= wanted.right() / tileLength; ++column) {
            tiles.push_back(QRect(column * tileLength, row * tileLength, tileLength, tileLength) & page);
        }
    }
    return tiles;
}

}  // namespace leafwright
