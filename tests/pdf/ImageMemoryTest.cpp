#include "pdf/ImageMemory.h"

#include <gtest/gtest.h>
#include <thread>

namespace leafwright {
namespace {

TEST(ImageMemory, ImageIsOfTheSizeAskedFor) {
    for (const QSize &size : {QSize(1, 1), QSize(10, 3000), QSize(1700, 2200)}) {
        QImage image = makeImage(size);
        EXPECT_EQ(image.size(), size);
        EXPECT_EQ(image.bytesPerLine(), 4 * size.width());
        image.fill(Qt::red);
        EXPECT_EQ(image.pixelColor(size.width() - 1, size.height() - 1), QColor(Qt::red));
    }
}

TEST(ImageMemory, BlockOfAnImageInUseIsNotUsedAgain) {
    QImage first = makeImage({1001, 1001});
    const uchar *const memory = first.constBits();
    const QImage copy = first;
    first = QImage();
    EXPECT_NE(makeImage({1001, 1001}).constBits(), memory) << "a copy still uses it";
}

TEST(ImageMemory, LastCopyGivesTheBlockBack) {
    auto image = std::make_unique<QImage>(makeImage({1003, 1003}));
    const uchar *const memory = image->constBits();
    image.reset();
    EXPECT_GE(idleImageBytes(), 4 * 1003 * 1003);
    EXPECT_EQ(makeImage({1003, 1003}).constBits(), memory);
}

TEST(ImageMemory, NoMoreThanSomeIsKept) {
    std::vector<QImage> images;
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
                QImage image = makeImage({300, 300 + i % 3});
                image.fill(static_cast<uint>(k));
                EXPECT_EQ(image.pixel(299, 299) & 0xff, static_cast<uint>(k));
            }
        });
    }
}

}  // namespace
}  // namespace leafwright
