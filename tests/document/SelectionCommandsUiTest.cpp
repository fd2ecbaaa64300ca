#include "document/SelectionCommands.h"
#include "support/TreeWindowFixture.h"

#include <QLineEdit>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using Selecting = test::TreeWindowFixture;

TEST_F(Selecting, AllMeansAllThatIsShown) {
    setOutline("a (x y) b (z)");
    document.outlineview()->collapseItem(*node({0}));
    document.outlineview()->collapseItem(*node({1}));
    perform("selectTOCAll:");
    EXPECT_EQ(selected(), "a b");
    document.outlineview()->expandItem(*node({1}));
    perform("selectTOCAll:");
    EXPECT_EQ(selected(), "a b z");
}

TEST_F(Selecting, ALevelIsSelectedWhetherShownOrNot) {
    setOutline("a (x (1) y) b (z (2 3))");
    document.outlineview()->collapseItem(*node({0}));
    perform("selectTOCOnlyLevel1:");
    EXPECT_EQ(selected(), "a b");
    perform("selectTOCOnlyLevel2:");
    EXPECT_EQ(selected(), "x y z");
    perform("selectTOCOnlyLevel3:");
    EXPECT_EQ(selected(), "1 2 3");
}

TEST_F(Selecting, ALevelThatIsNotThereClearsTheSelection) {
    setOutline("a (x)");
    select({{0}});
    perform("selectTOCOnlyLevel3:");
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(platform.beeps, 0);
}

TEST_F(Selecting, UnfoldingAndFoldingReachEverythingBelow) {
    setOutline("a (x (1 (deep)) y)");
    select({{0}});
    perform("applyTOCCollapse:");
    EXPECT_EQ(document.outlineview()->numberOfRows(), 1);
    document.outlineview()->expandItem(*node({0}));
    EXPECT_FALSE(document.outlineview()->isItemExpanded(*node({0, 0})));
    perform("applyTOCExpand:");
    EXPECT_EQ(document.outlineview()->numberOfRows(), 5);
}

TEST_F(Selecting, ASearchSelectsAParentAndItsGrandchild) {
    setOutline("intro (x (introduction) Intro)");
    perform("runSearchSelectSheet:");
    auto *field = qobject_cast<QLineEdit *>(document.openSheet()->field("searchSelectField"));
    EXPECT_EQ(field->text(), "");
    field->setText("intro");
    document.openSheet()->pressButton(1);
    EXPECT_EQ(selected(), "intro introduction");
}

TEST_F(Selecting, ASearchWithoutAMatchBeepsAndKeepsTheSelection) {
    setOutline("a b");
    select({{1}});
    document.selectionCommands().searchAndSelect("nowhere");
    document.selectionCommands().searchAndSelect("");
    EXPECT_EQ(platform.beeps, 2);
    EXPECT_EQ(selected(), "b");
}

TEST_F(Selecting, AfterASearchTheKeyboardIsTheOutlines) {
    setOutline("a b");
    document.pdfview()->setFocus();
    perform("runSearchSelectSheet:");
    qobject_cast<QLineEdit *>(document.openSheet()->field("searchSelectField"))->setText("b");
    document.openSheet()->pressButton(1);
    EXPECT_EQ(document.window()->focusWidget(), document.outlineview());
}

TEST_F(Selecting, ASearchBeginsWithAnEmptyFieldEachTime) {
    setOutline("a b");
    for (int time = 0; time < 2; ++time) {
        perform("runSearchSelectSheet:");
        auto *field = qobject_cast<QLineEdit *>(document.openSheet()->field("searchSelectField"));
        EXPECT_EQ(field->text(), "");
        field->setText("b");
        document.openSheet()->pressButton(1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    EXPECT_EQ(selected(), "b");
}

TEST_F(Selecting, OnlyTheSearchButtonSearches) {
    setOutline("a b");
    perform("runSearchSelectSheet:");
    qobject_cast<QLineEdit *>(document.openSheet()->field("searchSelectField"))->setText("a");
    constexpr int anotherTag = 2;
    document.openSheet()->end(anotherTag);
    EXPECT_EQ(selected(), "");
}

TEST_F(Selecting, FoldingCoversWhatIsBelowFoldedItemsToo) {
    setOutline("a (x (1 (deep)) y)");
    document.outlineview()->collapseItem(*node({0}));
    select({{0}});
    perform("applyTOCCollapse:");
    document.outlineview()->expandItem(*node({0}));
    document.outlineview()->expandItem(*node({0, 0}));
    EXPECT_FALSE(document.outlineview()->isItemExpanded(*node({0, 0, 0})));
}

TEST_F(Selecting, ACancelledSearchDoesNothing) {
    setOutline("a b");
    perform("runSearchSelectSheet:");
    qobject_cast<QLineEdit *>(document.openSheet()->field("searchSelectField"))->setText("a");
    document.openSheet()->pressButton(0);
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(platform.beeps, 0);
}

}  // namespace
}  // namespace leafwright
