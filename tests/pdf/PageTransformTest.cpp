#include "pdf/PageTransform.h"

#include <QSizeF>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

const Rect box{20, 40, 100, 200};

TEST(PageTransform, SizeOfAPageOnItsSideIsSwapped) {
    EXPECT_EQ(PageTransform(box, 0).shownSize(), QSizeF(100, 200));
    EXPECT_EQ(PageTransform(box, 90).shownSize(), QSizeF(200, 100));
    EXPECT_EQ(PageTransform(box, 180).shownSize(), QSizeF(100, 200));
    EXPECT_EQ(PageTransform(box, 270).shownSize(), QSizeF(200, 100));
}

TEST(PageTransform, LowerLeftCornerOfTheBox) {
    const QPointF corner(20, 40);
    EXPECT_EQ(PageTransform(box, 0).toShown(corner), QPointF(0, 200));
    EXPECT_EQ(PageTransform(box, 90).toShown(corner), QPointF(0, 0));
    EXPECT_EQ(PageTransform(box, 180).toShown(corner), QPointF(100, 0));
    EXPECT_EQ(PageTransform(box, 270).toShown(corner), QPointF(200, 100));
}

TEST(PageTransform, UpperLeftCornerOfTheBox) {
    const QPointF corner(20, 240);
    EXPECT_EQ(PageTransform(box, 0).toShown(corner), QPointF(0, 0));
    EXPECT_EQ(PageTransform(box, 90).toShown(corner), QPointF(200, 0));
    EXPECT_EQ(PageTransform(box, 180).toShown(corner), QPointF(100, 200));
    EXPECT_EQ(PageTransform(box, 270).toShown(corner), QPointF(0, 100));
}

TEST(PageTransform, ThereAndBack) {
    for (const int rotation : {0, 90, 180, 270}) {
        const PageTransform transform(box, rotation);
        const QPointF point(33, 171);
        EXPECT_EQ(transform.toPage(transform.toShown(point)), point) << rotation;
        const Rect rect{30, 50, 7, 9};
        EXPECT_EQ(transform.toPage(transform.toShown(rect)), rect) << rotation;
    }
}

TEST(PageTransform, RectangleStaysUpright) {
    EXPECT_EQ(PageTransform(box, 90).toShown(Rect{30, 50, 7, 9}), QRectF(10, 10, 9, 7));
    EXPECT_EQ(PageTransform(box, 0).toShown(Rect{30, 50, 7, 9}), QRectF(10, 181, 7, 9));
}

}  // namespace
}  // namespace leafwright
