#include "pdf/ImageMemory.h"

#include <gtest/gtest.h>
#include <thread>

namespace leafwright {
namespace {

TEST(ImageMemory, ImageIsOfTheSizeAskedFor) {
    for (const QSize &size : {QSize(1, 1), QSize(10, 3000), QSize(1700, 2200)}) {
        PageImage image = makeImage(size);
        EXPECT_EQ(image.size(), size);
        const size_t bytes = static_cast<size_t>(size.width()) * static_cast<size_t>(size.height()) * 4;
        std::fill_n(image.bits(), bytes, uchar{7});
        EXPECT_EQ(image.bits()[bytes - 1], 7);
    }
}

TEST(ImageMemory, BlockOfAnImageInUseIsNotUsedAgain) {
    PageImage first = makeImage({1001, 1001});
    const uchar *const memory = first.bits();
    const PageImage copy = first;
    first = PageImage();
    EXPECT_NE(makeImage({1001, 1001}).bits(), memory) << "a copy still uses it";
}

TEST(ImageMemory, LastCopyGivesTheBlockBack) {
    auto image = std::make_unique<PageImage>(makeImage({1003, 1003}));
    const uchar *const memory = image->bits();
    image.reset();
    EXPECT_GE(idleImageBytes(), 4 * 1003 * 1003);
    EXPECT_EQ(makeImage({1003, 1003}).bits(), memory);
}

TEST(ImageMemory, NoMoreThanSomeIsKept) {
    std::vector<PageImage> images;
    for (int i = 0; i < 20; ++i)
        images.push_back(makeImage({1000, 1000}));
    images.clear();
    EXPECT_LE(idleImageBytes(), 32 << 20);
    EXPECT_GT(idleImageBytes(), 16 << 20);
}

TEST(ImageMemory, ImpossibleSizeGivesNoImage) {
    EXPECT_TRUE(makeImage({30'000, 2'000'000'000}).isNull());
}

TEST(ImageMemory, ThreadsMayMakeAndDropImages) {
    std::vector<std::jthread> threads;
    for (int k = 0; k < 4; ++k) {
        threads.emplace_back([k] {
            for (int i = 0; i < 50; ++i) {
                PageImage image = makeImage({300, 300 + i % 3});
                constexpr size_t bytes = 300 * 300 * 4;
                std::fill_n(image.bits(), bytes, static_cast<uchar>(k));
                EXPECT_EQ(image.bits()[bytes - 1], k);
            }
        });
    }
}

}  // namespace
}  // namespace leafwright
