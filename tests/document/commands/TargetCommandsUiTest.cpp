#include "support/TreeWindowFixture.h"
#include "view/SpotArchive.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class Targets : public test::TreeWindowFixture {
protected:
    void SetUp() override {
        TreeWindowFixture::SetUp();
        setOutline("a b (c)");
    }
    const MyOutlineItem &item(const IndexPath &path) { return *node(path)->representedObject(); }
    const PDFPage &page(int index) { return *document.pdfDoc()->page(index); }
    LabelPDFView &view() { return *document.pdfview(); }
};

TEST_F(Targets, TheEntryLeadsToTheSpotThatWasPicked) {
    view().setIconLocationData(archivedSpot({{10, 20}, "3"}));
    view().goToPage(&page(6));
    select({{1}});
    perform("pointSelectedEntryHere:");
    EXPECT_EQ(item({1}).pageLabel(), "3");
    EXPECT_EQ(item({1}).pointOnPage(), QPointF(10, 20));
    EXPECT_TRUE(view().iconLocationData().isNull()) << "as after a drop";
    EXPECT_EQ(outline(), "a b (c)");
    EXPECT_EQ(item({0}).pageLabel(), "1");
    EXPECT_EQ(selected(), "b");
    EXPECT_TRUE(document.isDocumentEdited());
    perform("stepBack:");
    EXPECT_EQ(item({1}).pageLabel(), "1");
    EXPECT_EQ(item({1}).pointOnPage(), QPointF(1, 1));
    EXPECT_FALSE(document.isDocumentEdited()) << "one step";
}

TEST_F(Targets, WithoutASpotItLeadsToTheTopOfWhatIsSeen) {
    view().setScaleFactor(2);
    view().goToDestination({4, {0, 500}});
    select({{0}});
    perform("pointSelectedEntryHere:");
    EXPECT_EQ(item({0}).pageLabel(), "5");
    EXPECT_EQ(item({0}).importedPage(), 4);
    EXPECT_NEAR(item({0}).pointOnPage().y(), 500, 1);
    const QPointF before = view().convertPointFromPage({100, 300}, page(4));
    view().goToPage(&page(0));
    perform("moveToPageOfOutlineItem:");
    EXPECT_EQ(view().convertPointFromPage({100, 300}, page(4)).toPoint(), before.toPoint())
        << "the same is seen again";
}

TEST_F(Targets, OfAPageThatIsSeenFromItsTopItLeadsThere) {
    view().goToPage(&page(2));
    select({{0}});
    perform("pointSelectedEntryHere:");
    EXPECT_EQ(item({0}).pageLabel(), "3");
    EXPECT_EQ(item({0}).pointOnPage(), QPointF(0, 792));
}

TEST_F(Targets, ItIsForASingleEntry) {
    for (const auto &paths : {std::vector<IndexPath>{}, std::vector<IndexPath>{{0}, {1}}}) {
        select(paths);
        EXPECT_FALSE(isEnabled("pointSelectedEntryHere:"));
    }
    select({{0}});
    EXPECT_TRUE(isEnabled("pointSelectedEntryHere:"));
}

TEST_F(Targets, WhereEditingIsRefusedItBeeps) {
    select({{0}});
    document.setAllowTOCediting(false);
    perform("pointSelectedEntryHere:");
    document.setAllowTOCediting(true);
    document.setLockTOCediting(true);
    perform("pointSelectedEntryHere:");
    EXPECT_EQ(platform.beeps, 2);
    EXPECT_EQ(item({0}).pointOnPage(), QPointF(1, 1));
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(Targets, ReturnInTheOutlineShowsWhereTheEntryLeads) {
    document.edits().setPageLabel(*node({0})->representedObject(), "8");
    select({{0}});
    QTest::keyClick(document.outlineview(), Qt::Key_Return);
    EXPECT_EQ(view().currentPage()->index(), 7);
}

TEST_F(Targets, OnlyALabelThatIsKnownToBeNoPagesIsLost) {
    const QModelIndex label = document.treecontroller().indexForNode(*node({0}), TreeController::PageColumn);
    const auto isLost = [&](const QString &text) {
        document.edits().setPageLabel(*node({0})->representedObject(), text);
        return label.data(TreeController::LostLabelRole).toBool();
    };
    EXPECT_FALSE(isLost("9"));
    EXPECT_TRUE(isLost("10"));
    EXPECT_TRUE(isLost("iv"));
    EXPECT_FALSE(isLost(QString())) << "the entry leads elsewhere";
    EXPECT_FALSE(isLost("p12")) << "nobody knows which page that is";
    document.setUserHasCheckedPrintedPageNumbers(true);
    EXPECT_TRUE(isLost("p12"));
    EXPECT_FALSE(isLost("p2"));
}

}  // namespace
}  // namespace leafwright
