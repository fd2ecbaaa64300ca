#include "pdf/mupdf/PageRenderer.h"

#include <gtest/gtest.h>

namespace leafwright::mupdf {
namespace {

/// An image takes 4 bytes a pixel, and 256 MB at most.
TEST(BlankImage, IsAsLargeAsItMayBe) {
    EXPECT_EQ(blankImage({5, 5, 8192, 8192}).size(), QSize(8192, 8192));
    EXPECT_TRUE(blankImage({5, 5, 8193, 8192}).isNull());
    EXPECT_TRUE(blankImage({5, 5, 8192, 8193}).isNull());
    EXPECT_TRUE(blankImage({0, 0, 100'000, 100'000}).isNull()) << "more than 32 bits count";
}

TEST(BlankImage, IsWhite) {
    const QImage image = blankImage({-7, 3, 3, 2});
    EXPECT_EQ(image.size(), QSize(3, 2));
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(image.pixel(x, y), 0xffffffffU);
    EXPECT_TRUE(blankImage({0, 0, 0, 5}).isNull());
    EXPECT_TRUE(blankImage({0, 0, 5, 0}).isNull());
}

}  // namespace
}  // namespace leafwright::mupdf
