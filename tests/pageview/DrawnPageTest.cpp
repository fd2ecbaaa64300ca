#include "pageview/DrawnPage.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

/// Three pixels in each of two rows: orange and two of white, two of white and a dark one.
std::shared_ptr<uchar[]> sixPixels() {
    return std::shared_ptr<uchar[]>(new uchar[]{0,   128, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255,
                                                255, 255, 255, 255, 255, 255, 255, 255, 1,   2,   3,   255});
}

TEST(DrawnPage, PixelsAreBlueGreenAndRedInRowsWithoutGaps) {
    const QImage image = imageOf({QSize(3, 2), sixPixels()});
    ASSERT_EQ(image.size(), QSize(3, 2));
    EXPECT_FALSE(image.hasAlphaChannel());
    EXPECT_EQ(image.devicePixelRatio(), 1);
    EXPECT_EQ(image.pixel(0, 0), qRgb(255, 128, 0));
    EXPECT_EQ(image.pixel(2, 0), qRgb(255, 255, 255));
    EXPECT_EQ(image.pixel(1, 1), qRgb(255, 255, 255));
    EXPECT_EQ(image.pixel(2, 1), qRgb(3, 2, 1));
}

TEST(DrawnPage, PixelsAreSharedUntilTheLastImageIsGone) {
    auto pixels = sixPixels();
    const uchar *const memory = pixels.get();
    const std::weak_ptr<uchar[]> kept = pixels;
    QImage image = imageOf({QSize(3, 2), std::move(pixels)});
    EXPECT_EQ(image.constBits(), memory);
    const QImage copy = image;
    image = QImage();
    EXPECT_EQ(copy.constBits(), memory);
    EXPECT_EQ(kept.use_count(), 1);
    image = copy.copy(0, 0, 2, 1);
    EXPECT_EQ(kept.use_count(), 1) << "a part of an image is an image of its own";
}

TEST(DrawnPage, WhatIsDrawnOnTheImageIsNotDrawnOnThePage) {
    const PageImage page(QSize(3, 2), sixPixels());
    QImage image = imageOf(page);
    image.fill(Qt::black);
    EXPECT_EQ(page.bits()[2], 255);
    EXPECT_EQ(imageOf(page).pixel(0, 0), qRgb(255, 128, 0));
}

TEST(DrawnPage, WithoutPixelsThereIsNoImage) {
    EXPECT_TRUE(imageOf({}).isNull());
    EXPECT_TRUE(imageOf({QSize(3, 2), nullptr}).isNull());
}

}  // namespace
}  // namespace leafwright
