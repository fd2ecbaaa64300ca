#include "view/LabelText.h"

#include <QFontMetricsF>
#include <QImage>

#include <cmath>

namespace leafwright {
namespace {

const QString fontName = "Lucida Grande";

/// How much a font's lines and a text grow with each point of size.
QSizeF unitSize(const QString &text, QFont::Weight weight) {
    QFont font(fontName);
    font.setPixelSize(1000);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    const QFontMetricsF metrics(font);
    return {metrics.horizontalAdvance(text) / 1000, metrics.height() / 1000};
}

TEST(LabelText, AnEmptyAreaTakesSizeZero) {
    EXPECT_EQ(fontSizeForAreaSize({0, 0}, "12", fontName), 0);
    EXPECT_EQ(fontSizeForAreaSize({0, 0}, "", fontName), 0);
}

TEST(LabelText, ALowAreaTakesTheLastSizeThatFitsMinusOne) {
    const double lastFitting = std::floor(5 / unitSize("12", QFont::Bold).height());
    ASSERT_GT(lastFitting, 1);
    EXPECT_EQ(fontSizeForAreaSize({100, 5}, "12", fontName), lastFitting - 1);
}

TEST(LabelText, ANarrowAreaIsMeasuredInTheHeavierWeight) {
    const double bold = std::floor(500 / unitSize("mmmm", QFont::Bold).width());
    const double plain = std::floor(500 / unitSize("mmmm", QFont::Normal).width());
    ASSERT_LT(bold, plain);
    EXPECT_EQ(fontSizeForAreaSize({500, 5000}, "mmmm", fontName), bold - 1);
}

TEST(LabelText, ASizeThatJustFitsIsNoOverflow) {
    const double width = unitSize("12", QFont::Bold).width() * 20;
    EXPECT_EQ(fontSizeForAreaSize({width + 1e-9, 5000}, "12", fontName), 19);
    EXPECT_EQ(fontSizeForAreaSize({width - 1e-6, 5000}, "12", fontName), 18);
}

TEST(LabelText, HardlyAnyRoomGivesZeroOrLess) {
    EXPECT_EQ(fontSizeForAreaSize({0.5, 0.5}, "12", fontName), -1);
    EXPECT_EQ(fontSizeForAreaSize({100, 0}, "12", fontName), -1);
    EXPECT_EQ(fontSizeForAreaSize({0, 100}, "12", fontName), -1);
    EXPECT_EQ(fontSizeForAreaSize({100, unitSize("12", QFont::Bold).height() * 1.5}, "12", fontName), 0);
}

TEST(LabelText, WithoutEndTheSizeEndsToo) {
    EXPECT_EQ(fontSizeForAreaSize({1e9, 1e9}, "12", fontName), 9999);
    EXPECT_EQ(fontSizeForAreaSize({INFINITY, INFINITY}, "12", fontName), 9999);
}

TEST(LabelText, AnEmptyTextIsAsHighAsAnyOther) {
    EXPECT_EQ(fontSizeForAreaSize({0, 50}, "", fontName), fontSizeForAreaSize({1000, 50}, "1", fontName));
}

TEST(LabelText, TextSizesAreThoseOfThePlainFontInProportion) {
    const QSizeF unit = unitSize("iv", QFont::Normal);
    EXPECT_NEAR(sizeOfText("iv", fontName, 24.5).width(), unit.width() * 24.5, 1e-9);
    EXPECT_NEAR(sizeOfText("iv", fontName, 24.5).height(), unit.height() * 24.5, 1e-9);
}

/// The pixels that a text at size 20 leaves black, with y up; from the lower left at (10, 10).
QRect inkOf(const QString &text, double fontSize, double scale = 1) {
    QImage image(QSize(100, 60) * scale, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(0, image.height());
    painter.scale(scale, -scale);
    drawText(painter, {10, 10}, text, fontName, fontSize);
    QRect ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qGray(image.pixel(x, y)) < 128) ink |= QRect(x, y, 1, 1);
    return ink;
}

TEST(LabelText, TextStandsUprightOnItsLowerLeft) {
    // A full stop is at the baseline, so low; a quote is high.
    const QRect stop = inkOf(".", 20);
    const QRect quote = inkOf("'", 20);
    ASSERT_FALSE(stop.isEmpty());
    ASSERT_FALSE(quote.isEmpty());
    EXPECT_GT(stop.top(), quote.bottom());
    EXPECT_GE(stop.left(), 10);
    EXPECT_LT(stop.bottom(), 50);
    EXPECT_GE(quote.top(), 50 - sizeOfText("'", fontName, 20).height());
}

TEST(LabelText, TextIsNotMirrored) {
    // Of an L, the foot reaches to the right of the stem: right of the middle there is ink at the bottom
    // only.
    const QRect whole = inkOf("L", 40);
    const QRect withDot = inkOf("L.", 40);
    EXPECT_EQ(withDot.left(), whole.left());
    EXPECT_GT(withDot.right(), whole.right());
}

TEST(LabelText, TextGrowsWithTheView) {
    const QRect small = inkOf("8", 20);
    const QRect large = inkOf("8", 20, 4);
    EXPECT_NEAR(large.height(), small.height() * 4, 6);
    EXPECT_NEAR(large.left(), small.left() * 4, 6);
}

TEST(LabelText, ASizeOfZeroOrLessShowsNothing) {
    EXPECT_TRUE(inkOf("8", 0).isEmpty());
    EXPECT_TRUE(inkOf("8", -1).isEmpty());
}

}  // namespace
}  // namespace leafwright
