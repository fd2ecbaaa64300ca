#include "formats/KeyedArchive.h"
#include "view/SpotArchive.h"

#include <QMimeData>

namespace leafwright {
namespace {

TEST(SpotArchive, HasTwoTexts) {
    const auto archive = KeyedArchive::unarchive(archivedSpot({{72.5, 700}, "iv"}));
    ASSERT_TRUE(archive);
    EXPECT_EQ(archive->decode("pagePointAsString"), "{72.5, 700}");
    EXPECT_EQ(archive->decode("pageLabel"), "iv");
}

TEST(SpotArchive, GivesTheSpotBack) {
    const auto spot = unarchivedSpot(archivedSpot({{0.1, -3}, ""}));
    ASSERT_TRUE(spot);
    EXPECT_EQ(spot->point.x(), 0.1);
    EXPECT_EQ(spot->point.y(), -3);
    EXPECT_EQ(spot->pageLabel, "");
}

TEST(SpotArchive, WhatIsNoneIsRefused) {
    EXPECT_FALSE(unarchivedSpot({}));
    EXPECT_FALSE(unarchivedSpot("{72.5, 700}"));
    KeyedArchive archive;
    archive.encode("{1, 2}", "pagePointAsString");
    EXPECT_FALSE(unarchivedSpot(archive.data()));
}

TEST(SpotArchive, ItsTypeIsAMimeType) {
    QMimeData data;
    data.setData(NSPOINT_PBOARD_TYPE, "x");
    EXPECT_EQ(data.formats(), QStringList("NSPOINT_PBOARD_TYPE"));
}

}  // namespace
}  // namespace leafwright
