#include "document/window/CurrentEntry.h"
#include "document/window/OutlineFilter.h"
#include "support/WindowFixture.h"

#include <QLineEdit>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::PdfBuilder;

class ReadEntry : public test::WindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(9);
        addOutline(pdf, {{"(Two)", "[" + pdf.pageReference(1) + " /Fit]"},
                         {"(Three)", "[" + pdf.pageReference(2) + " /XYZ 72 400 null]"},
                         {"(Seven)", "[" + pdf.pageReference(6) + " /Fit]"}});
        open(pdf);
    }

    void goToPage(int index) {
        document.pdfview()->goToPage(document.pdfDoc()->page(index));
        document.finishSearches();
    }
    QString marked() {
        const TreeNode *node = document.outlineview()->markedItem();
        return node ? node->representedObject()->pageTitle() : QString();
    }
    QString selected() {
        const auto nodes = document.treecontroller().selectedNodes();
        return nodes.size() == 1 ? nodes.front()->representedObject()->pageTitle() : QString();
    }
};

TEST_F(ReadEntry, IsMarkedAsThePagesAreScrolled) {
    goToPage(0);
    EXPECT_EQ(marked(), "");
    goToPage(1);
    EXPECT_EQ(marked(), "Two");
    goToPage(2);
    EXPECT_EQ(marked(), "Two") << "the spot of the next is further down";
    goToPage(5);
    EXPECT_EQ(marked(), "Three");
    goToPage(8);
    EXPECT_EQ(marked(), "Seven");
}

TEST_F(ReadEntry, IsThatOfTheSpotWhenItIsShown) {
    document.pdfview()->goToDestination({2, {72, 400}});
    document.finishSearches();
    EXPECT_EQ(marked(), "Three");
}

TEST_F(ReadEntry, ComesByItself) {
    document.pdfview()->goToPage(document.pdfDoc()->page(7));
    EXPECT_TRUE(QTest::qWaitFor([&] { return marked() == "Seven"; }, 60'000));
}

TEST_F(ReadEntry, FollowsWhatIsDoneToTheOutline) {
    goToPage(8);
    document.edits().remove(document.root(), 2);
    document.finishSearches();
    EXPECT_EQ(marked(), "Three");
    document.edits().setPageLabel(*document.root().children()[0], "8");
    document.finishSearches();
    EXPECT_EQ(marked(), "Two");
}

TEST_F(ReadEntry, IsRevealed) {
    goToPage(3);
    select({{0}});
    ASSERT_TRUE(document.actions().perform("revealCurrentEntry:"));
    document.finishSearches();
    EXPECT_EQ(selected(), "Three");
    EXPECT_EQ(platform.beeps, 0);
}

TEST_F(ReadEntry, IsRevealedThoughTheFilterHidesIt) {
    goToPage(3);
    auto *filter = document.myWindow()->outlineFilter();
    filter->findChild<QLineEdit *>("filterField")->setText("seven");
    filter->finish();
    ASSERT_TRUE(document.actions().perform("revealCurrentEntry:"));
    document.finishSearches();
    EXPECT_EQ(selected(), "Three");
    EXPECT_EQ(document.outlineview()->numberOfRows(), 2);
}

TEST_F(ReadEntry, BeforeTheFirstThereIsNone) {
    goToPage(0);
    ASSERT_TRUE(document.actions().perform("revealCurrentEntry:"));
    document.finishSearches();
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_EQ(selected(), "");
}

TEST_F(ReadEntry, VeryManyEntriesAreLookedAtAPieceAtATime) {
    MyOutlineItem::Children items;
    for (int i = 0; i < 7'000; ++i)
        items.push_back(std::make_unique<MyOutlineItem>("Entry " + QString::number(i), PageTarget{"5"}));
    document.root().setChildren(std::move(items));
    goToPage(6);
    EXPECT_EQ(marked(), "Entry 6999");
}

}  // namespace
}  // namespace leafwright
