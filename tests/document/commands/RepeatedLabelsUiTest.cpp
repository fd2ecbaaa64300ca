#include "document/commands/AutoTOCCommands.h"
#include "document/commands/HeadingsWindowFixture.h"
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
    void SetUp() override { openLabelled("<< /Nums [0 << /S /D >> 2 << /S /D >>] >>"); }
    void openLabelled(const std::string &pageLabels) {
        PdfBuilder pdf;
        pdf.addNumberedPages(4);
        pdf.setCatalogEntry("/PageLabels", pageLabels);
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

TEST_F(RepeatedLabels, AreToldOfWhereTheyComeBackByAnEdit) {
    select({{0}, {1}});
    perform("removeOutlineItems:");
    QCoreApplication::processEvents();
    EXPECT_EQ(bar(), nullptr) << "the last page with a label is no other one";
    perform("stepBack:");
    QCoreApplication::processEvents();
    EXPECT_THAT(barText(), HasSubstr("“One” (page 1, now 3), “Two” (page 2, now 4)."));
}

TEST_F(RepeatedLabels, AreNotToldOfAgainForAnEditThatChangesNothingOfIt) {
    document.myWindow()->notices()->removeNotice("entriesElsewhere");
    document.edits().setPageTitle(*document.root().children()[2], "Another title");
    QCoreApplication::processEvents();
    EXPECT_EQ(bar(), nullptr);
    document.edits().setPageTitle(*document.root().children()[0], "Another title");
    QCoreApplication::processEvents();
    EXPECT_THAT(barText(), HasSubstr("“Another title” (page 1, now 3)"));
}

/// Pages labelled P-1 to P-4, which are printed page numbers to entries.
class LabelsThatBeginWithP : public RepeatedLabels {
protected:
    void SetUp() override { openLabelled("<< /Nums [0 << /S /D /P (P-) >>] >>"); }
};

TEST_F(LabelsThatBeginWithP, AreToldOfAsSuch) {
    EXPECT_EQ(barText(),
              "Page labels that begin with “p” are read as printed page numbers, and saving leads these "
              "entries to the pages with those: “Two” (page 2, now 1), “Last one” (page 3, now 1).");
}

/// Pages with headings, labelled 1, 2, 1, 2.
class RepeatedLabelsOfHeadings : public test::HeadingsWindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        for (int page = 0; page < 4; ++page)
            pdf.addPage(chapterPage());
        pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /S /D >> 2 << /S /D >>] >>");
        open(pdf);
    }
};

TEST_F(RepeatedLabelsOfHeadings, AreToldOfOnceTheyAreEntries) {
    const auto barText = [this] {
        const NoticeBar *bar = document.myWindow()->notices()->bar("entriesElsewhere");
        return bar ? bar->text().toStdString() : "no bar";
    };
    EXPECT_EQ(barText(), "no bar");
    document.autoTOCCommands().runAutoTOCwithH1H2H3Map();
    QCoreApplication::processEvents();
    EXPECT_THAT(barText(), HasSubstr("“Chapter title” (page 1, now 3), “Section title” (page 1, now 3), "
                                     "“Chapter title” (page 2, now 4) and 1 more."));
    perform("stepBack:");
    QCoreApplication::processEvents();
    EXPECT_EQ(barText(), "no bar");
}

}  // namespace
}  // namespace leafwright
