#include "outlineview/LegibleColor.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

const QColor darkTheme(0x20, 0x23, 0x26);

TEST(Contrast, IsThatOfTheWebsGuidelines) {
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 0.001);
    EXPECT_NEAR(contrast(Qt::white, Qt::black), 21, 0.001) << "either way";
    EXPECT_NEAR(contrast(Qt::red, Qt::red), 1, 0.001);
    EXPECT_NEAR(contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01) << "an example in the guidelines";
    EXPECT_NEAR(contrast(Qt::blue, Qt::white), 8.59, 0.01);
    EXPECT_NEAR(contrast(QColor(5, 5, 5), Qt::black), 1.03, 0.01) << "in the straight part of the curve";
}

TEST(LegibleColor, StaysWhereItCanBeRead) {
    EXPECT_EQ(legibleColor(Qt::red, Qt::white), QColor(Qt::red));
    EXPECT_EQ(legibleColor(Qt::yellow, darkTheme), QColor(Qt::yellow));
}

TEST(LegibleColor, OtherwiseComesNearerToBlackOrWhite) {
    const QColor darkBlue(0, 0, 0x80);
    const QColor onDark = legibleColor(darkBlue, darkTheme);
    EXPECT_GE(contrast(onDark, darkTheme), 3);
    EXPECT_LT(contrast(onDark, darkTheme), 4) << "no more than need be";
    EXPECT_GT(onDark.blueF(), onDark.redF()) << "and is blue still";
    const QColor onWhite = legibleColor(Qt::yellow, Qt::white);
    EXPECT_GE(contrast(onWhite, Qt::white), 3);
    EXPECT_GT(onWhite.redF(), onWhite.blueF());
    EXPECT_GE(contrast(legibleColor(darkTheme, darkTheme), darkTheme), 3) << "the background's own";
}

}  // namespace
}  // namespace leafwright
