#include "pageview/PageLayout.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

constexpr int gap = PageLayout::gap;

TEST(PageLayout, WithoutPagesThereIsNothing) {
    PageLayout layout;
    EXPECT_EQ(layout.pageCount(), 0);
    EXPECT_EQ(layout.contentSize(), QSize(0, 0));
    EXPECT_EQ(layout.scaleToFitWidth(500), 1);
    layout.setScale(3);
    EXPECT_EQ(layout.scale(), 3);
}

TEST(PageLayout, PagesStandBelowEachOtherWithGaps) {
    const PageLayout layout({{100, 200}, {300, 50}});
    EXPECT_EQ(layout.contentSize(), QSize(300 + 2 * gap, 250 + 3 * gap));
    EXPECT_EQ(layout.pageRect(0, 316), QRect(108, gap, 100, 200));
    EXPECT_EQ(layout.pageRect(1, 316), QRect(gap, 200 + 2 * gap, 300, 50));
    EXPECT_EQ(layout.pageRect(1, 500), QRect(100, 200 + 2 * gap, 300, 50)) << "centred in a wider content";
}

TEST(PageLayout, GapsDoNotGrowWithTheScale) {
    PageLayout layout({{100, 200}, {300, 50}});
    layout.setScale(2);
    EXPECT_EQ(layout.contentSize(), QSize(600 + 2 * gap, 500 + 3 * gap));
    EXPECT_EQ(layout.pageRect(1, 616), QRect(gap, 400 + 2 * gap, 600, 100));
}

TEST(PageLayout, WidestPageFitsTheWidth) {
    PageLayout layout({{100, 200}, {300, 50}});
    EXPECT_DOUBLE_EQ(layout.scaleToFitWidth(600 + 2 * gap), 2);
    layout.setScale(layout.scaleToFitWidth(731));
    EXPECT_LE(layout.contentSize().width(), 731);
    EXPECT_GT(layout.scaleToFitWidth(0), 0);
}

TEST(PageLayout, NearestPage) {
    const PageLayout layout({{100, 200}, {100, 200}, {100, 200}});
    EXPECT_EQ(layout.pageNear(-1000), 0);
    EXPECT_EQ(layout.pageNear(0), 0);
    EXPECT_EQ(layout.pageNear(gap + 199), 0);
    EXPECT_EQ(layout.pageNear(gap + 200 + gap / 2 - 1), 0) << "upper half of the gap";
    EXPECT_EQ(layout.pageNear(gap + 200 + gap / 2), 1) << "lower half of the gap";
    EXPECT_EQ(layout.pageNear(1'000'000), 2);
}

TEST(PageLayout, EveryPageIsFoundAtItsPlaceAtEveryScale) {
    std::vector<QSizeF> sizes;
    for (int i = 0; i < 1000; ++i)
        sizes.emplace_back(100.3 + i % 7, 50.7 + (i * 37) % 400);
    PageLayout layout(sizes);
    for (const double scale : {0.05, 0.3, 1.0, 1.37, 9.9}) {
        layout.setScale(scale);
        int bottom = 0;
        for (int i = 0; i < layout.pageCount(); ++i) {
            const QRect rect = layout.pageRect(i, layout.contentSize().width());
            EXPECT_GE(rect.top(), bottom + gap - 1) << "page " << i << " at " << scale;
            EXPECT_LE(rect.top(), bottom + gap + 1) << "page " << i << " at " << scale;
            EXPECT_EQ(layout.pageNear(rect.top()), i);
            EXPECT_EQ(layout.pageNear(rect.bottom()), i);
            bottom = rect.top() + rect.height();
        }
        EXPECT_EQ(layout.contentSize().height(), bottom + gap);
    }
}

TEST(PageLayout, ScaleStaysWithinBounds) {
    PageLayout layout({{100, 200}});
    layout.setScale(0);
    EXPECT_EQ(layout.scale(), layout.smallestScale());
    layout.setScale(1e9);
    EXPECT_EQ(layout.scale(), layout.largestScale());
}

TEST(PageLayout, EnormousPagesStayWithinInt) {
    PageLayout layout({{1e30, 1e30}, {612, 792}, {1e-30, 1e-30}});
    layout.setScale(32);
    EXPECT_GT(layout.contentSize().width(), 0);
    EXPECT_GT(layout.contentSize().height(), 0);
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(layout.pageRect(i, layout.contentSize().width()).isValid()) << i;
}

TEST(PageLayout, HundredThousandPagesAtTheLargestScale) {
    PageLayout layout(std::vector<QSizeF>(100'000, QSizeF(612, 792)));
    layout.setScale(layout.largestScale());
    const QRect last = layout.pageRect(99'999, layout.contentSize().width());
    EXPECT_GT(last.top(), 0);
    EXPECT_EQ(layout.pageNear(last.center().y()), 99'999);
}

}  // namespace
}  // namespace leafwright
