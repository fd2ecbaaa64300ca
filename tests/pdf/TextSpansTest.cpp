#include "support/OpenPdf.h"

#include <QRgb>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::FloatNear;
using testing::IsEmpty;
using testing::SizeIs;

constexpr double nearly = 0.01;

/// The spans of a page with this content.
std::vector<TextSpan> spansWith(const std::string &content, const std::string &entries = {}) {
    PdfBuilder pdf;
    pdf.addPage(content, entries);
    return openPdf(pdf)->engine().textSpans(0);
}

std::vector<QString> textsOf(const std::vector<TextSpan> &spans) {
    std::vector<QString> texts;
    for (const TextSpan &span : spans)
        texts.push_back(span.text);
    return texts;
}

TEST(TextSpans, PlaceOnThePageAsItIsShown) {
    const auto spans = spansWith("BT /F1 10 Tf 72 700 Td (Abc) Tj ET");
    ASSERT_THAT(spans, SizeIs(1));
    EXPECT_EQ(spans[0].text, "Abc");
    EXPECT_THAT(spans[0].size, DoubleNear(10, nearly));
    EXPECT_THAT(spans[0].baseline, DoubleNear(92, nearly));
    EXPECT_THAT(spans[0].box.left(), DoubleNear(72, nearly));
    EXPECT_THAT(spans[0].box.right(), DoubleNear(72 + 6.67 + 5.56 + 5, nearly));
    EXPECT_LT(spans[0].box.top(), 92 - 7);
    EXPECT_GT(spans[0].box.bottom(), 92 + 1);
    EXPECT_THAT(spans[0].direction.x(), DoubleNear(1, nearly));
    EXPECT_THAT(spans[0].direction.y(), DoubleNear(0, nearly));
}

TEST(TextSpans, LeftEdgesOfTheLetters) {
    const auto spans = spansWith("BT /F1 10 Tf 72 700 Td (Abc) Tj ET");
    ASSERT_THAT(spans, SizeIs(1));
    EXPECT_THAT(spans[0].starts,
                ElementsAre(FloatNear(72, 0.01F), FloatNear(78.67F, 0.01F), FloatNear(84.23F, 0.01F)));
}

TEST(TextSpans, CropBoxAndUserUnitMoveThePlace) {
    const auto spans =
        spansWith("BT /F1 10 Tf 72 700 Td (Abc) Tj ET", "/CropBox [50 100 562 742] /UserUnit 2");
    ASSERT_THAT(spans, SizeIs(1));
    EXPECT_THAT(spans[0].box.left(), DoubleNear(22, nearly));
    EXPECT_THAT(spans[0].baseline, DoubleNear(42, nearly));
    EXPECT_THAT(spans[0].size, DoubleNear(10, nearly));
}

TEST(TextSpans, RotatedPageIsReadAsItIsShown) {
    const auto spans = spansWith("BT /F1 10 Tf 0 1 -1 0 100 72 Tm (Abc) Tj ET", "/Rotate 90");
    ASSERT_THAT(spans, SizeIs(1));
    EXPECT_THAT(spans[0].direction.x(), DoubleNear(1, nearly));
    EXPECT_THAT(spans[0].baseline, DoubleNear(100, nearly));
    EXPECT_THAT(spans[0].box.left(), DoubleNear(72, nearly));
}

TEST(TextSpans, TextThatRunsUp) {
    const auto spans = spansWith("BT /F1 10 Tf 0 1 -1 0 100 72 Tm (Abc) Tj ET");
    ASSERT_THAT(spans, SizeIs(1));
    EXPECT_THAT(spans[0].direction.x(), DoubleNear(0, nearly));
    EXPECT_THAT(spans[0].direction.y(), DoubleNear(-1, nearly));
}

TEST(TextSpans, EndWhereFontSizeOrColourChange) {
    EXPECT_THAT(textsOf(spansWith("BT 72 700 Td /F1 10 Tf (one) Tj /F2 10 Tf (two) Tj /F2 9 Tf (three) Tj "
                                  "1 0 0 rg (four) Tj ET")),
                ElementsAre("one", "two", "three", "four"));
}

TEST(TextSpans, EndWithTheLine) {
    EXPECT_THAT(textsOf(spansWith("BT 72 700 Td /F1 10 Tf (one) Tj 0 -12 Td (two) Tj ET")),
                ElementsAre("one", "two"));
}

TEST(TextSpans, FontOfEach) {
    PdfBuilder pdf;
    pdf.addFont(
        "M", "<< /Type /Font /Subtype /Type1 /BaseFont /Courier-BoldOblique /Encoding /WinAnsiEncoding >>");
    pdf.addFont("S",
                "<< /Type /Font /Subtype /TrueType /BaseFont /ABCDEF+Sans /Encoding /WinAnsiEncoding >>");
    pdf.addPage("BT 72 700 Td /F1 10 Tf (one) Tj /M 10 Tf (two) Tj /S 10 Tf (three) Tj ET");
    const auto spans = openPdf(pdf)->engine().textSpans(0);
    ASSERT_THAT(spans, SizeIs(3));
    EXPECT_EQ(spans[0].fontName, "Helvetica");
    EXPECT_FALSE(spans[0].bold || spans[0].italic || spans[0].mono);
    EXPECT_EQ(spans[1].fontName, "Courier-BoldOblique");
    EXPECT_TRUE(spans[1].bold && spans[1].italic && spans[1].mono);
    EXPECT_EQ(spans[2].fontName, "ABCDEF+Sans");
}

TEST(TextSpans, ColourInAnySpace) {
    const auto spans = spansWith(
        "BT 72 700 Td /F1 10 Tf (none) Tj 1 0 0 rg (rgb) Tj 0.5 g (grey) Tj 0 1 1 0 k (cmyk) Tj "
        "/DeviceRGB cs 0 0 1 sc (space) Tj ET");
    ASSERT_THAT(textsOf(spans), ElementsAre("none", "rgb", "grey", "cmyk", "space"));
    EXPECT_EQ(spans[0].color, 0xff000000U);
    EXPECT_EQ(spans[1].color, 0xffff0000U);
    EXPECT_NEAR(qRed(spans[2].color), 127, 2);
    EXPECT_GT(qRed(spans[3].color), 200);
    EXPECT_LT(qGreen(spans[3].color), 60);
    EXPECT_EQ(spans[4].color, 0xff0000ffU);
}

TEST(TextSpans, ColourComesBackWithTheState) {
    const auto spans =
        spansWith("q 1 0 0 rg BT /F1 10 Tf 72 700 Td (red) Tj ET Q BT /F1 10 Tf 72 680 Td (black) Tj ET");
    ASSERT_THAT(textsOf(spans), ElementsAre("red", "black"));
    EXPECT_EQ(spans[0].color, 0xffff0000U);
    EXPECT_EQ(spans[1].color, 0xff000000U);
}

TEST(TextSpans, BlankBelongsToTheWordBeforeItButNotToItsBox) {
    const auto spans =
        spansWith("BT 72 700 Td /F2 10 Tf (a) Tj /F1 10 Tf ( ) Tj /F2 10 Tf (b) Tj /F1 10 Tf ( c ) Tj ET");
    ASSERT_THAT(textsOf(spans), ElementsAre("a b ", "c "));
    EXPECT_THAT(spans[0].box.right(), DoubleNear(72 + 5.56 + 2.78 + 6.11, nearly));
    EXPECT_THAT(spans[1].box.left(), DoubleNear(72 + 5.56 + 2.78 + 6.11 + 2.78, nearly));
}

TEST(TextSpans, ThoseOfBlanksAloneAreLeftOut) {
    EXPECT_THAT(spansWith("BT /F1 10 Tf 72 700 Td (   ) Tj 0 -20 Td (  ) Tj ET"), IsEmpty());
}

TEST(TextSpans, RaisedAccentNeitherEndsASpanNorMovesItsBaseline) {
    // An acute accent, put above a capital letter as a character of its own.
    const auto spans = spansWith(
        "BT /F1 10 Tf 72 700 Td (\\264) Tj ET BT /F1 10 Tf 72 700 Td 2 Ts (\\264) Tj 0 Ts (Etude) Tj ET");
    ASSERT_FALSE(spans.empty());
    EXPECT_THAT(spans.back().baseline, DoubleNear(92, nearly));
}

TEST(TextSpans, BaselineIsThatOfMostLetters) {
    const auto spans = spansWith("BT /F1 10 Tf 72 700 Td 3 Ts (T) Tj 0 Ts (eXt) Tj ET");
    ASSERT_THAT(textsOf(spans), ElementsAre("TeXt"));
    EXPECT_THAT(spans[0].baseline, DoubleNear(92, nearly));
}

TEST(TextSpans, WhatIsRaisedByMuchIsASpanOfItsOwn) {
    const auto spans = spansWith("BT /F1 10 Tf 72 700 Td (x) Tj 5 Ts (2) Tj ET");
    ASSERT_THAT(textsOf(spans), ElementsAre("x", "2"));
    EXPECT_THAT(spans[1].baseline, DoubleNear(87, nearly));
}

TEST(TextSpans, BaselineOfTextThatRunsUpOrDownIsHowFarRightItStands) {
    for (const char *direction : {"0 1 -1 0", "0 -1 1 0"}) {
        const auto spans = spansWith(std::string("BT /F1 10 Tf ") + direction + " 100 300 Tm (Abc) Tj ET");
        ASSERT_THAT(spans, SizeIs(1));
        EXPECT_THAT(spans[0].baseline, DoubleNear(100, nearly)) << direction;
    }
}

TEST(TextSpans, BaselineOfTextThatRunsAslantIsThatOfItsFirstLetter) {
    const auto spans = spansWith("BT /F1 10 Tf 0.8 0.6 -0.6 0.8 100 300 Tm (Abcdefgh) Tj ET");
    ASSERT_FALSE(spans.empty());
    EXPECT_THAT(spans[0].baseline, DoubleNear(792 - 300, nearly));
}

TEST(TextSpans, InvisibleTextOfScansCounts) {
    EXPECT_THAT(textsOf(spansWith("BT /F1 10 Tf 3 Tr 72 700 Td (recognised) Tj ET")),
                ElementsAre("recognised"));
}

TEST(TextSpans, WhatIsOutsideOfThePageIsLeftOut) {
    EXPECT_THAT(textsOf(spansWith("BT /F1 10 Tf 72 900 Td (outside) Tj 0 -200 Td (inside) Tj ET")),
                ElementsAre("inside"));
}

TEST(TextSpans, EnormousNumbersOfCharactersAreCutOff) {
    std::string content = "BT /F1 1 Tf 72 700 Td ";
    for (int i = 0; i < 3'000; ++i)
        content += "(" + std::string(100, 'x') + ") Tj 0 -0.1 Td ";
    qsizetype characters = 0;
    for (const TextSpan &span : spansWith(content + "ET"))
        characters += span.text.size();
    EXPECT_EQ(characters, 200'000);
}

TEST(TextSpans, PatternsLeaveTheColourAsItWas) {
    PdfBuilder pdf;
    const int pattern =
        pdf.addStream("0 0 1 1 re f",
                      "/Type /Pattern /PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 1 1] "
                      "/XStep 1 /YStep 1 /Resources << >>");
    pdf.addPage("/Pattern cs /P scn BT /G 10 Tf 72 700 Td (text) Tj ET",
                "/Resources << /Pattern << /P " + PdfBuilder::reference(pattern) +
                    " >> /Font << /G << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >> >>");
    const auto spans = openPdf(pdf)->engine().textSpans(0);
    ASSERT_THAT(textsOf(spans), ElementsAre("text"));
    EXPECT_EQ(spans[0].color, 0xff000000U);
}

}  // namespace
}  // namespace leafwright
