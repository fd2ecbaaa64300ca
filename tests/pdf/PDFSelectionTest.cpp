#include "pdf/PDFSelection.h"
#include "support/OpenPdf.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::PdfBuilder;
using test::runsOf;
using testing::ElementsAre;
using testing::IsEmpty;

/// Two pages: "Bold head\nPlain text\n" and "Second\n".
class PDFSelectionTest : public testing::Test {
protected:
    PDFSelectionTest() {
        PdfBuilder pdf;
        pdf.addPage(PdfBuilder::showText("F2", 20, 72, 700, "Bold head") +
                    PdfBuilder::showText("F1", 10, 72, 600, "Plain text"));
        pdf.addPage(PdfBuilder::showText("F1", 10, 72, 500, "Second"), "/Rotate 90");
        document_ = test::openPdf(pdf);
    }
    const PDFPage &page(int index) const { return *document_->page(index); }
    std::vector<Rect> boxes(int pageIndex) const { return document_->engine().characterBoxes(pageIndex); }

private:
    std::unique_ptr<PDFDocument> document_;
};

TEST_F(PDFSelectionTest, Empty) {
    const PDFSelection selection;
    EXPECT_TRUE(selection.isEmpty());
    EXPECT_THAT(selection.pages(), IsEmpty());
    EXPECT_EQ(selection.string(), "");
    EXPECT_TRUE(selection.attributedString().isEmpty());
    EXPECT_TRUE(selection.boundsForPage(page(0)).isEmpty());
}

TEST_F(PDFSelectionTest, EmptyRangeAddsNothing) {
    EXPECT_TRUE(page(0).selectionForRange({3, 0}).isEmpty());
}

TEST_F(PDFSelectionTest, WholeRun) {
    const PDFSelection selection = page(0).selectionForRange({0, 10});
    EXPECT_EQ(selection.string(), "Bold head\n");
    EXPECT_THAT(runsOf(selection.attributedString()), ElementsAre("Helvetica Bold 20: Bold head\n"));
    EXPECT_THAT(selection.pages(), ElementsAre(&page(0)));
    EXPECT_EQ(selection.boundsForPage(page(0)), page(0).text()->runBounds[0]);
    EXPECT_TRUE(selection.boundsForPage(page(1)).isEmpty());
}

TEST_F(PDFSelectionTest, AllRuns) {
    const PDFSelection selection = page(0).selectionForRange({0, 21});
    EXPECT_THAT(runsOf(selection.attributedString()),
                ElementsAre("Helvetica Bold 20: Bold head\n", "Helvetica 10: Plain text\n"));
    const auto &bounds = page(0).text()->runBounds;
    EXPECT_EQ(selection.boundsForPage(page(0)), bounds[0].united(bounds[1]));
}

TEST_F(PDFSelectionTest, PartOfARunHasTheBoundsOfItsCharacters) {
    const PDFSelection selection = page(0).selectionForRange({5, 4});
    EXPECT_EQ(selection.string(), "head");
    EXPECT_THAT(runsOf(selection.attributedString()), ElementsAre("Helvetica Bold 20: head"));
    const Rect bounds = selection.boundsForPage(page(0));
    EXPECT_EQ(bounds, boxes(0)[5].united(boxes(0)[8]));
    EXPECT_GT(bounds.x, 110);
    EXPECT_LT(bounds.width, page(0).text()->runBounds[0].width);
}

TEST_F(PDFSelectionTest, PartsOfTwoRuns) {
    const PDFSelection selection = page(0).selectionForRange({5, 10});
    EXPECT_THAT(runsOf(selection.attributedString()),
                ElementsAre("Helvetica Bold 20: head\n", "Helvetica 10: Plain"));
    const Rect bounds = selection.boundsForPage(page(0));
    EXPECT_EQ(bounds.x, boxes(0)[10].x);
    EXPECT_EQ(bounds.y, boxes(0)[10].y);
    EXPECT_EQ(bounds.top(), boxes(0)[5].top());
    EXPECT_EQ(bounds.right(), boxes(0)[8].right());
}

TEST_F(PDFSelectionTest, RangeIsClippedToTheText) {
    EXPECT_EQ(page(1).selectionForRange({-5, 8}).string(), "Sec");
    EXPECT_EQ(page(1).selectionForRange({3, 1000}).string(), "ond\n");
    EXPECT_TRUE(page(1).selectionForRange({1000, 5}).isEmpty());
    EXPECT_TRUE(page(1).selectionForRange({-5, 5}).isEmpty());
    EXPECT_TRUE(page(1).selectionForRange({2, -1}).isEmpty());
}

TEST_F(PDFSelectionTest, OverTwoPages) {
    PDFSelection selection = page(0).selectionForRange({10, 11});
    selection.add(page(1).selectionForRange({0, 7}));
    EXPECT_EQ(selection.string(), "Plain text\nSecond\n");
    EXPECT_THAT(runsOf(selection.attributedString()), ElementsAre("Helvetica 10: Plain text\nSecond\n"));
    EXPECT_THAT(selection.pages(), ElementsAre(&page(0), &page(1)));
    EXPECT_EQ(selection.boundsForPage(page(0)), page(0).text()->runBounds[1]);
    EXPECT_EQ(selection.boundsForPage(page(1)), page(1).text()->runBounds[0]);
}

TEST_F(PDFSelectionTest, PartsThatEndNoLineArePartedByALineFeedInTheirFont) {
    PDFSelection selection = page(0).selectionForRange({0, 4});
    selection.add(page(1).selectionForRange({0, 3}));
    EXPECT_THAT(runsOf(selection.attributedString()),
                ElementsAre("Helvetica Bold 20: Bold\n", "Helvetica 10: Sec"));
}

TEST_F(PDFSelectionTest, PagesInTheOrderOfTheirAddition) {
    PDFSelection selection;
    selection.add(page(1), {0, 3});
    selection.add(page(0), {0, 4});
    selection.add(page(1), {3, 2});
    EXPECT_THAT(selection.pages(), ElementsAre(&page(1), &page(0)));
    EXPECT_EQ(selection.string(), "Sec\nBold\non");
    EXPECT_EQ(selection.boundsForPage(page(1)), boxes(1)[0].united(boxes(1)[4]));
}

TEST_F(PDFSelectionTest, AddedToItself) {
    PDFSelection selection = page(1).selectionForRange({0, 3});
    selection.add(selection);
    EXPECT_EQ(selection.string(), "Sec\nSec");
}

TEST(AttributedString, NeighboursOfOneFontJoin) {
    const Font bold(FontFace{"B", "B", BoldTrait}, 10);
    const Font plain(FontFace{"P", "P", 0}, 10);
    AttributedString text;
    text.append("ab", bold);
    text.append("", plain);
    text.append("cd", bold);
    text.append("ef", plain);
    EXPECT_EQ(text.string, "abcdef");
    EXPECT_THAT(text.runs, ElementsAre(FontRun{{0, 4}, bold}, FontRun{{4, 2}, plain}));
}

TEST(AttributedString, PartIsClippedAndStartsAtZero) {
    const Font bold(FontFace{"B", "B", BoldTrait}, 10);
    const Font plain(FontFace{"P", "P", 0}, 10);
    AttributedString text;
    text.append("abcd", bold);
    text.append("ef", plain);
    const AttributedString part = text.part({3, 100});
    EXPECT_EQ(part.string, "def");
    EXPECT_THAT(part.runs, ElementsAre(FontRun{{0, 1}, bold}, FontRun{{1, 2}, plain}));
    EXPECT_EQ(text.part({-2, 3}).string, "a");
    EXPECT_TRUE(text.part({6, 3}).isEmpty());
    EXPECT_TRUE(text.part({3, -1}).isEmpty());
}

}  // namespace
}  // namespace leafwright
