#include "pageview/PageTiles.h"

#include <QRegion>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(PageTiles, UsualPageIsOneImage) {
    EXPECT_THAT(tilesOfPage({1700, 2200}, {0, 2000, 10, 10}), ElementsAre(QRect(0, 0, 1700, 2200)));
}

TEST(PageTiles, PartBesideThePageNeedsNone) {
    EXPECT_THAT(tilesOfPage({100, 100}, {100, 0, 50, 50}), IsEmpty());
    EXPECT_THAT(tilesOfPage({100, 100}, {}), IsEmpty());
}

TEST(PageTiles, LargePageHasTheTilesThatThePartTouches) {
    EXPECT_THAT(tilesOfPage({20'000, 20'000}, {1020, 100, 8, 1000}),
                ElementsAre(QRect(0, 0, 1024, 1024), QRect(1024, 0, 1024, 1024), QRect(0, 1024, 1024, 1024),
                            QRect(1024, 1024, 1024, 1024)));
}

TEST(PageTiles, TilesEndWithThePage) {
    EXPECT_THAT(tilesOfPage({3000, 3000}, {2990, 2990, 500, 500}), ElementsAre(QRect(2048, 2048, 952, 952)));
}

TEST(PageTiles, TilesCoverThePartWithoutOverlap) {
    const QRect part(5000, 7000, 3840, 2160);
    QRegion covered;
    qint64 area = 0;
    for (const QRect &tile : tilesOfPage({30'000, 30'000}, part)) {
        covered += tile;
        area += qint64{tile.width()} * tile.height();
    }
    EXPECT_TRUE(QRegion(part).subtracted(covered).isEmpty());
    qint64 coveredArea = 0;
    for (const QRect &rect : covered)
        coveredArea += qint64{rect.width()} * rect.height();
    EXPECT_EQ(area, coveredArea);
}

}  // namespace
}  // namespace leafwright
