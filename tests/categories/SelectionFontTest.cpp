#include "categories/SelectionFont.h"
#include "categories/Uncalled.h"
#include "pdf/PDFDocument.h"
#include "support/PdfBuilder.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::PdfBuilder;

class SelectionFont : public testing::Test {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addPage(PdfBuilder::showText("F1", 10, 72, 700, "abcdefgh") +
                    PdfBuilder::showText("F2", 10, 72, 650, "ABCDEFGH") +
                    PdfBuilder::showText("F1", 20, 72, 600, "1234567890 1234567890"));
        pdf.addPage(PdfBuilder::showText("F2", 11.8, 100, 500, "nearly twelve") +
                    PdfBuilder::showText("F1", 9, 100, 450, "longer than either") +
                    PdfBuilder::showText("F2", 12.2, 100, 400, "barely twelve"));
        pdf.save(dir_.path("a.pdf"));
        document_ = open();
    }

    std::unique_ptr<PDFDocument> open() const { return std::get<0>(PDFDocument::open(dir_.path("a.pdf"))); }

    const PDFPage &page(int index) const { return *document_->page(index); }

    /// Selects a text that stands on a page once.
    PDFSelection selection(int pageIndex, const QString &text) const {
        const auto at = static_cast<int>(page(pageIndex).text()->attributedString.string.indexOf(text));
        EXPECT_GE(at, 0) << "no such text";
        return page(pageIndex).selectionForRange({at, static_cast<int>(text.size())});
    }

    static QString nameOf(const std::optional<Font> &font) { return font ? font->displayName() : QString(); }

private:
    test::TempDir dir_;
    std::unique_ptr<PDFDocument> document_;
};

TEST_F(SelectionFont, DominantFontHasTheMostCharacters) {
    EXPECT_EQ(nameOf(dominantFontInSelection(selection(0, "abcdefgh\nABC"))), "Helvetica");
    EXPECT_EQ(nameOf(dominantFontInSelection(selection(0, "gh\nABCDEFGH"))), "Helvetica Bold");
}

TEST_F(SelectionFont, OfTwoFontsWithAsManyCharactersTheFirstMetDominates) {
    EXPECT_EQ(nameOf(dominantFontInSelection(selection(0, "abcdefgh\nABCDEFGH\n"))), "Helvetica");
    PDFSelection backwards = selection(0, "ABCDEFGH\n");
    backwards.add(selection(0, "abcdefgh\n"));
    EXPECT_EQ(nameOf(dominantFontInSelection(backwards)), "Helvetica Bold");
}

TEST_F(SelectionFont, RunsWithoutLettersDoNotCount) {
    EXPECT_EQ(dominantFontInSelection(selection(0, "FGH\n1234567890 1234567890"))->pointSize(), 10);
}

TEST_F(SelectionFont, ASelectionWithoutLettersHasNoDominantFont) {
    EXPECT_FALSE(dominantFontInSelection(selection(0, "1234567890 1234567890")));
    EXPECT_FALSE(dominantFontInSelection(PDFSelection()));
}

TEST_F(SelectionFont, SizesThatRoundAlikeAreCountedApart) {
    const QString all = page(1).text()->attributedString.string;
    const std::optional<Font> font = dominantFontInSelection(selection(1, all));
    ASSERT_TRUE(font);
    EXPECT_EQ(font->pointSize(), 9);
}

TEST_F(SelectionFont, RunsInOneFontAreCountedTogether) {
    PDFSelection several = selection(0, "ABCDEFGH");
    several.add(selection(0, "abcde"));
    several.add(selection(0, "defgh"));
    EXPECT_EQ(nameOf(dominantFontInSelection(several)), "Helvetica");
}

TEST_F(SelectionFont, TextWithoutASelectionHasNoDominantFont) {
    EXPECT_FALSE(dominantFont(page(0).text()->attributedString));
    EXPECT_FALSE(dominantFont(AttributedString()));
}

TEST_F(SelectionFont, TopLeftPointIsTheCornerOfTheBounds) {
    const PDFSelection selected = selection(1, "barely twelve");
    const Rect bounds = selected.boundsForPage(page(1));
    const QPointF point = topLeftPoint(selected);
    EXPECT_EQ(point, QPointF(bounds.x, bounds.y + bounds.height));
    EXPECT_NEAR(point.x(), 100, 2);
    EXPECT_GT(point.y(), 400 + 12.2 * 0.7);  // above the letters
    EXPECT_LT(point.y(), 400 + 12.2 * 1.5);
}

TEST_F(SelectionFont, TopLeftPointIsOnTheFirstPage) {
    PDFSelection both = selection(1, "nearly twelve");
    const QPointF first = topLeftPoint(both);
    both.add(selection(0, "abcdefgh"));
    EXPECT_EQ(topLeftPoint(both), first);
}

TEST_F(SelectionFont, TopLeftPointOfAnEmptySelectionIsZero) {
    EXPECT_EQ(topLeftPoint(PDFSelection()), QPointF(0, 0));
}

TEST_F(SelectionFont, IsOnItsFirstPage) {
    PDFSelection both = selection(1, "nearly twelve");
    both.add(selection(0, "abcdefgh"));
    EXPECT_TRUE(isOnPage(both, page(1)));
    EXPECT_FALSE(isOnPage(both, page(0)));
    EXPECT_FALSE(isOnPage(PDFSelection(), page(0)));
}

TEST_F(SelectionFont, IsNotOnAnEqualPageOfAnotherDocument) {
    const std::unique_ptr<PDFDocument> other = open();
    EXPECT_FALSE(isOnPage(selection(0, "abcdefgh"), *other->page(0)));
}

}  // namespace
}  // namespace leafwright
