#include "pageview/PageImageCache.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

constexpr qint64 imageBytes = 100 * 100 * 4;

QImage image() {
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

RenderRequest request(int page, double scale = 1) {
    return {page, scale, QRect(0, 0, 100, 100)};
}

TEST(PageImageCache, FindsWhatWasPutIn) {
    PageImageCache cache(10 * imageBytes);
    cache.insert(request(3), image());
    EXPECT_EQ(cache.find(request(3)), image());
    EXPECT_TRUE(cache.contains(request(3)));
    EXPECT_TRUE(cache.find(request(4)).isNull());
    EXPECT_TRUE(cache.find(request(3, 2)).isNull());
    EXPECT_TRUE(cache.find({3, 1, QRect(0, 0, 100, 99)}).isNull());
}

TEST(PageImageCache, NeverExceedsItsCapacity) {
    PageImageCache cache(10 * imageBytes + 5);
    for (int i = 0; i < 300; ++i) {
        cache.insert(request(i), image());
        EXPECT_LE(cache.bytes(), cache.capacity());
    }
    EXPECT_EQ(cache.bytes(), 10 * imageBytes);
    EXPECT_TRUE(cache.contains(request(290)));
    EXPECT_FALSE(cache.contains(request(289)));
}

TEST(PageImageCache, WhatWasUsedLatelyStays) {
    PageImageCache cache(2 * imageBytes);
    cache.insert(request(1), image());
    cache.insert(request(2), image());
    cache.find(request(1));
    cache.insert(request(3), image());
    EXPECT_TRUE(cache.contains(request(1)));
    EXPECT_FALSE(cache.contains(request(2)));
}

TEST(PageImageCache, SameRequestAgainTakesTheOldOnesPlace) {
    PageImageCache cache(10 * imageBytes);
    cache.insert(request(1), image());
    cache.insert(request(1), image());
    EXPECT_EQ(cache.bytes(), imageBytes);
}

TEST(PageImageCache, ImageLargerThanAllIsNotKept) {
    PageImageCache cache(imageBytes - 1);
    cache.insert(request(1), image());
    EXPECT_EQ(cache.bytes(), 0);
    EXPECT_FALSE(cache.contains(request(1)));
}

TEST(PageImageCache, SmallerCapacityMakesImagesGo) {
    PageImageCache cache(10 * imageBytes);
    for (int i = 0; i < 10; ++i)
        cache.insert(request(i), image());
    cache.setCapacity(3 * imageBytes);
    EXPECT_EQ(cache.bytes(), 3 * imageBytes);
    EXPECT_TRUE(cache.contains(request(9)));
}

TEST(PageImageCache, ImagesAtOtherScaleAreThoseOfOneScaleAlone) {
    PageImageCache cache(10 * imageBytes);
    cache.insert(request(1, 1), image());
    cache.insert(request(1, 2), image());
    cache.insert({1, 2, QRect(100, 0, 100, 100)}, image());
    cache.insert(request(1, 3), image());
    cache.insert(request(2, 2), image());
    const auto others = cache.imagesAtOtherScale(1, 3);
    ASSERT_EQ(others.size(), 2U);
    EXPECT_EQ(others[0].request.scale, 2);
    EXPECT_EQ(others[1].request.scale, 2);
    EXPECT_TRUE(cache.imagesAtOtherScale(7, 3).empty());
}

TEST(PageImageCache, ClearedIsEmpty) {
    PageImageCache cache(10 * imageBytes);
    cache.insert(request(1), image());
    cache.clear();
    EXPECT_EQ(cache.bytes(), 0);
    EXPECT_FALSE(cache.contains(request(1)));
    cache.insert(request(1), image());
    EXPECT_TRUE(cache.contains(request(1)));
}

}  // namespace
}  // namespace leafwright
