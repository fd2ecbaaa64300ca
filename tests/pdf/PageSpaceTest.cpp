#include "support/OpenPdf.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;

const std::string twoLines = PdfBuilder::showText("F1", 10, 172, 500, "One line") +
                             PdfBuilder::showText("F2", 12.5, 200, 300, "Another");

struct Read {
    QString text;
    std::vector<Rect> runBounds;
    std::vector<Rect> characterBoxes;
};

Read readWith(const std::string &content, const std::string &pageEntries) {
    PdfBuilder pdf;
    pdf.addPage(content, pageEntries);
    const auto document = openPdf(pdf);
    const auto text = document->pageText(0);
    return {text->attributedString.string, text->runBounds, document->engine().characterBoxes(0)};
}

TEST(PageSpace, BoundsStandWhereTheTextStands) {
    const Read read = readWith(twoLines, "");
    ASSERT_EQ(read.text, "One line\nAnother\n");
    ASSERT_EQ(read.runBounds.size(), 2U);
    const Rect &first = read.runBounds[0];
    EXPECT_NEAR(first.x, 172, 1);
    EXPECT_LT(first.y, 500);
    EXPECT_GT(first.y, 494);
    EXPECT_GT(first.top(), 507);
    EXPECT_LT(first.top(), 515);
    EXPECT_NEAR(first.width, 37.2, 1);  // by Helvetica's widths
    EXPECT_NEAR(read.runBounds[1].x, 200, 1);
}

TEST(PageSpace, CharacterBoxesAreParallelToTheText) {
    const Read read = readWith(twoLines, "");
    ASSERT_EQ(read.characterBoxes.size(), static_cast<size_t>(read.text.size()));
    EXPECT_NEAR(read.characterBoxes[0].x, 172, 0.01);
    EXPECT_NEAR(read.characterBoxes[0].width, 7.78, 0.01);  // "O"
    EXPECT_NEAR(read.characterBoxes[1].x, 179.78, 0.01);
    EXPECT_TRUE(read.characterBoxes[read.text.indexOf('\n')].isEmpty());
    Rect united;
    for (int i = 0; i < read.text.indexOf('\n'); ++i)
        united = united.united(read.characterBoxes[i]);
    EXPECT_NEAR(united.x, read.runBounds[0].x, 0.02);
    EXPECT_NEAR(united.right(), read.runBounds[0].right(), 0.02);
}

class SamePlace : public testing::TestWithParam<const char *> {};

TEST_P(SamePlace, WhateverTheBoxesSay) {
    const Read here = readWith(twoLines, GetParam());
    const Read plain = readWith(twoLines, "");
    EXPECT_EQ(here.text, plain.text);
    EXPECT_EQ(here.runBounds, plain.runBounds);
    EXPECT_EQ(here.characterBoxes, plain.characterBoxes);
}

INSTANTIATE_TEST_SUITE_P(
    PageSpace, SamePlace,
    testing::Values("/Rotate 90", "/Rotate 180", "/Rotate 270", "/Rotate -90", "/MediaBox [100 50 612 792]",
                    "/MediaBox [-300 -200 612 792]", "/CropBox [150 250 400 600]",
                    "/CropBox [150 250 400 600] /Rotate 90",
                    "/MediaBox [100 50 612 792] /CropBox [150 250 400 600] /Rotate 180",
                    "/MediaBox [100 50 612 792] /CropBox [150 250 400 600] /Rotate 270"));

TEST(PageSpace, UserUnitDoesNotMoveTheText) {
    const Read large = readWith(twoLines, "/UserUnit 2.5 /Rotate 90");
    const Read plain = readWith(twoLines, "");
    ASSERT_EQ(large.text, plain.text);
    for (size_t i = 0; i < plain.characterBoxes.size(); ++i) {
        ASSERT_NEAR(large.characterBoxes[i].x, plain.characterBoxes[i].x, 0.02) << i;
        ASSERT_NEAR(large.characterBoxes[i].y, plain.characterBoxes[i].y, 0.02) << i;
        ASSERT_NEAR(large.characterBoxes[i].width, plain.characterBoxes[i].width, 0.02) << i;
        ASSERT_NEAR(large.characterBoxes[i].height, plain.characterBoxes[i].height, 0.02) << i;
    }
}

TEST(PageSpace, TextOutsideTheCropBoxIsLeftOut) {
    EXPECT_EQ(readWith(twoLines, "/CropBox [0 400 612 792]").text, "One line\n");
    EXPECT_EQ(readWith(twoLines, "/CropBox [0 0 612 400] /Rotate 90").text, "Another\n");
    EXPECT_EQ(readWith(twoLines, "/MediaBox [0 0 100 100]").text, "");
}

TEST(PageSpace, BoundsAreRoundedToHundredths) {
    const Read read = readWith("0.7131 0 0 0.7131 0.33333 0.77777 cm " + twoLines, "/Rotate 90");
    for (const Rect &box : read.characterBoxes) {
        for (const double value : {box.x, box.y, box.width, box.height})
            ASSERT_EQ(value, std::round(value * 100) / 100);
    }
}

TEST(PageSpace, RunOverSeveralLinesHasTheBoundsOfAll) {
    const Read read = readWith(
        PdfBuilder::showText("F1", 10, 300, 500, "a") + PdfBuilder::showText("F1", 10, 100, 400, "b"), "");
    ASSERT_EQ(read.runBounds.size(), 1U);
    EXPECT_NEAR(read.runBounds[0].x, 100, 1);
    EXPECT_GT(read.runBounds[0].right(), 304);
    EXPECT_LT(read.runBounds[0].y, 400);
    EXPECT_GT(read.runBounds[0].top(), 505);
}

}  // namespace
}  // namespace leafwright
