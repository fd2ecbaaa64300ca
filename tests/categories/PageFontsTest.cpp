#include "categories/PageFonts.h"
#include "categories/Uncalled.h"
#include "pdf/PDFDocument.h"
#include "support/PdfBuilder.h"
#include "support/TempDir.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::PdfBuilder;
using testing::ElementsAre;
using testing::IsEmpty;

/// A document of one page with this content.
class PageFonts : public testing::Test {
protected:
    const PDFPage &pageWith(const std::string &content) {
        PdfBuilder pdf;
        pdf.addPage(content);
        pdf.save(dir_.path("a.pdf"));
        document_ = std::get<0>(PDFDocument::open(dir_.path("a.pdf")));
        return *document_->page(0);
    }

    static QStringList textOf(const PDFPage &page, const std::vector<TextRange> &ranges) {
        QStringList texts;
        for (const TextRange &range : ranges)
            texts.append(page.text()->attributedString.substring(range));
        return texts;
    }

    static Font helveticaBold(double size) {
        return {FontFace{"Helvetica Bold", "Helvetica", BoldTrait}, size};
    }

private:
    test::TempDir dir_;
    std::unique_ptr<PDFDocument> document_;
};

TEST_F(PageFonts, FindsTheRunsOfAFontInTextOrder) {
    const PDFPage &page = pageWith(PdfBuilder::showText("F2", 14, 72, 700, "First heading") +
                                   PdfBuilder::showText("F1", 10, 72, 660, "Some body text") +
                                   PdfBuilder::showText("F2", 14, 72, 600, "Second heading"));
    const std::vector<TextRange> ranges = rangesOfFont(page, helveticaBold(14));
    EXPECT_THAT(textOf(page, ranges), ElementsAre("First heading\n", "Second heading\n"));
    EXPECT_EQ(ranges.front(), (TextRange{0, 14}));
}

TEST_F(PageFonts, FindsSizesThatRoundAlike) {
    const PDFPage &page = pageWith(PdfBuilder::showText("F2", 11.6, 72, 700, "Found") +
                                   PdfBuilder::showText("F1", 11.6, 72, 660, "Not bold") +
                                   PdfBuilder::showText("F2", 12.6, 72, 600, "Too large"));
    EXPECT_THAT(textOf(page, rangesOfFont(page, helveticaBold(12.4))), ElementsAre("Found\n"));
}

TEST_F(PageFonts, RunsWithoutLettersAreNotFound) {
    const PDFPage &page = pageWith(PdfBuilder::showText("F2", 14, 72, 700, "12 - 13") +
                                   PdfBuilder::showText("F1", 10, 72, 660, "Some body text"));
    EXPECT_THAT(rangesOfFont(page, helveticaBold(14)), IsEmpty());
}

TEST_F(PageFonts, APageWithoutTextHasNone) {
    EXPECT_THAT(rangesOfFont(pageWith(""), helveticaBold(14)), IsEmpty());
}

TEST_F(PageFonts, NoItemPointsToTheTopLeft) {
    const PDFPage &page = pageWith("");
    MyOutlineItem item;
    EXPECT_FALSE(isTopLeftPointingMOI(page, item));
    item.setPointOnPage({0, 792});
    EXPECT_FALSE(isTopLeftPointingMOI(page, item));
}

}  // namespace
}  // namespace leafwright
