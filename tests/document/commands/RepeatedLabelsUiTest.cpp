#include "support/WindowFixture.h"
#include "widgets/NoticeBars.h"

#include <QPushButton>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::PdfBuilder;
using testing::HasSubstr;

/// A document of four pages, labelled 1, 2, 1, 2, with an entry on each of the first three.
class RepeatedLabels : public test::WindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(4);
        pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /S /D >> 2 << /S /D >>] >>");
        const auto at = [&](int page) { return "[" + pdf.pageReference(page) + " /XYZ 72 700 null]"; };
        addOutline(pdf, {{"(One)", at(0)}, {"(Two)", at(1)}, {"(Last one)", at(2)}});
        open(pdf);
    }

    const NoticeBar *bar() { return document.myWindow()->notices()->bar("entriesElsewhere"); }
    std::string barText() { return bar() ? bar()->text().toStdString() : "no bar"; }
    void perform(const char *selector) { ASSERT_TRUE(document.actions().perform(selector)); }
    /// The 0-based pages that the entries of the file lead to.
    std::vector<int> savedPages() const {
        const auto pdf = std::get<std::unique_ptr<PDFDocument>>(PDFDocument::open(document.pdfURL()));
        std::vector<int> pages;
        for (int i = 0; i < pdf->outlineRoot().numberOfChildren(); ++i)
            pages.push_back(pdf->outlineRoot().childAtIndex(i).destination()->pageIndex);
        return pages;
    }
};

TEST_F(RepeatedLabels, AreToldOfBeforeASaveMovesEntries) {
    EXPECT_THAT(barText(), HasSubstr("“One” (page 1, now 3), “Two” (page 2, now 4)."));
    EXPECT_FALSE(document.isDocumentEdited());
    perform("saveDocument:");
    EXPECT_EQ(savedPages(), (std::vector{2, 3, 2}));
}

TEST_F(RepeatedLabels, AreToldOfAgainWhereTheBarWasClosed) {
    document.myWindow()->notices()->removeNotice("entriesElsewhere");
    perform("openPDFInDefaultApp:");
    EXPECT_EQ(bar(), nullptr) << "nothing is written";
    perform("saveDocument:");
    EXPECT_THAT(barText(), HasSubstr("“One”"));
}

TEST_F(RepeatedLabels, LeaveEntriesWhereTheyAreWithTheSetting) {
    bar()->findChild<QPushButton *>()->click();
    EXPECT_EQ(bar(), nullptr);
    EXPECT_TRUE(platform.userDefaults().boolForKey("LeafwrightKeepPagesOfEntries"));
    perform("saveDocument:");
    EXPECT_EQ(savedPages(), (std::vector{0, 1, 2}));

    platform.userDefaults().removeValue("LeafwrightKeepPagesOfEntries");
    EXPECT_NE(bar(), nullptr);
}

TEST_F(RepeatedLabels, HoldForEntriesWhoseLabelIsEdited) {
    platform.userDefaults().setValue("LeafwrightKeepPagesOfEntries", true);
    TreeController &tree = document.treecontroller();
    ASSERT_TRUE(tree.setData(tree.indexForNode(*node({0}), TreeController::PageColumn), "2"));
    perform("saveDocument:");
    EXPECT_EQ(savedPages(), (std::vector{3, 1, 2}));
}

TEST_F(RepeatedLabels, AreLookedUpAsASaveWould) {
    select({{0}});
    perform("moveToPageOfOutlineItem:");
    EXPECT_EQ(document.pdfview()->currentPage()->index(), 2);
    platform.userDefaults().setValue("LeafwrightKeepPagesOfEntries", true);
    perform("moveToPageOfOutlineItem:");
    EXPECT_EQ(document.pdfview()->currentPage()->index(), 0);
}

}  // namespace
}  // namespace leafwright
