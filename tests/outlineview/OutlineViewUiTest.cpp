#include "outlineview/OutlineFixture.h"
#include "outlineview/OutlineView.h"

#include <QHeaderView>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::Outline;

TEST(OutlineView, IsSetUpForAnOutline) {
    const Outline outline("A");
    EXPECT_EQ(outline.view.accessibleName(), "Outline");
    EXPECT_EQ(outline.view.indentation(), 17);
    EXPECT_TRUE(outline.view.uniformRowHeights());
    EXPECT_EQ(outline.view.selectionMode(), QTreeView::ExtendedSelection);
    EXPECT_EQ(outline.view.selectionModel(), outline.controller->selectionModel());
    EXPECT_EQ(outline.view.header()->sectionResizeMode(0), QHeaderView::Stretch);
    EXPECT_EQ(outline.view.header()->sectionResizeMode(1), QHeaderView::ResizeToContents);
}

TEST(OutlineView, AnEmptyOutlineSaysSoInThePlaceOfItsRows) {
    Outline outline("A");
    outline.show();
    const auto picture = [&outline] { return outline.view.viewport()->grab().toImage(); };
    const QImage withRow = picture();
    outline.view.setPlaceholderText("Nothing here");
    EXPECT_EQ(picture(), withRow);
    outline.root.removeObjectFromChildrenAtIndex(0);
    const QImage withText = picture();
    outline.view.setPlaceholderText("");
    EXPECT_NE(picture(), withText);
}

TEST(OutlineView, RowsAreTheNodesThatShow) {
    Outline outline("A(B(C) D) E");
    EXPECT_EQ(outline.rows(), "A E");
    outline.view.expandItem(outline.node("A"));
    EXPECT_EQ(outline.rows(), "A B D E");
    EXPECT_EQ(outline.view.rowForItem(outline.node("E")), 3);
    EXPECT_EQ(outline.view.rowForItem(outline.node("C")), -1);
    EXPECT_EQ(outline.view.itemAtRow(2), &outline.node("D"));
    EXPECT_EQ(outline.view.itemAtRow(4), nullptr);
    EXPECT_EQ(outline.view.itemAtRow(-1), nullptr);
}

TEST(OutlineView, OnlyShownItemsCountAsSelected) {
    Outline outline("A(B(C) D) E");
    EXPECT_FALSE(outline.view.hasSelectedRows());
    outline.controller->setSelectedNodes({&outline.node("C")});
    EXPECT_FALSE(outline.view.hasSelectedRows());
    EXPECT_EQ(outline.view.onlySelectedItem(), nullptr);
    outline.view.expandItem(outline.node("B"));
    EXPECT_FALSE(outline.view.hasSelectedRows()) << "what it is in is folded";
    outline.view.expandItem(outline.node("A"));
    EXPECT_TRUE(outline.view.hasSelectedRows());
    EXPECT_EQ(outline.view.onlySelectedItem(), &outline.node("C"));
    outline.controller->setSelectedNodes({&outline.node("C"), &outline.node("E")});
    EXPECT_EQ(outline.view.onlySelectedItem(), nullptr);
    outline.controller->setFilter({&outline.node("E")});
    EXPECT_EQ(outline.view.onlySelectedItem(), &outline.node("E"));
}

TEST(OutlineView, RowsFollowTheTree) {
    Outline outline("A(B) E");
    outline.view.expandItem(outline.node("A"));
    EXPECT_EQ(outline.rows(), "A B E");
    outline.root.insertObjectInChildrenAtIndex(test::newItem("X"), 1);
    EXPECT_EQ(outline.rows(), "A B X E");
    outline.controller->moveNode(outline.node("E"), {0});
    EXPECT_EQ(outline.rows(), "E A B X");
    outline.item("A").removeObjectFromChildrenAtIndex(0);
    EXPECT_EQ(outline.rows(), "E A X");
}

TEST(OutlineView, RowsAgreeWithWhatIsDrawn) {
    Outline outline("A(B(C) D) E(F) G");
    outline.show();
    outline.view.expandItem(outline.node("A"), true);
    outline.controller->moveNode(outline.node("A"), {2});
    QModelIndex drawn = outline.controller->index(0, 0);
    for (int row = 0; row < outline.view.numberOfRows(); ++row) {
        EXPECT_EQ(&outline.controller->nodeForIndex(drawn), outline.view.itemAtRow(row));
        drawn = outline.view.indexBelow(drawn);
    }
    EXPECT_FALSE(drawn.isValid());
}

TEST(OutlineView, WithoutAControllerItIsEmpty) {
    OutlineView view;
    EXPECT_EQ(view.numberOfRows(), 0);
    EXPECT_TRUE(view.selectedRows().empty());
    EXPECT_EQ(view.selectedRow(), -1);
    EXPECT_EQ(view.clickedRow(), -1);
    view.selectRowIndexes({0});
    view.deselectAll();
    view.editColumn(0, 0);
    view.reloadItem(nullptr);
}

TEST(OutlineView, AControllerTakenAwayLeavesItEmpty) {
    Outline outline("A B");
    outline.show();
    EXPECT_EQ(outline.view.numberOfRows(), 2);
    outline.view.setTreeController(nullptr);
    EXPECT_EQ(outline.view.numberOfRows(), 0);
    outline.view.setTreeController(outline.controller.get());
    EXPECT_EQ(outline.rows(), "A B");
}

TEST(OutlineView, SelectionIsSharedBothWays) {
    Outline outline("A B C");
    outline.view.selectRowIndexes({0, 2});
    EXPECT_EQ(outline.selection(), "A C");
    outline.controller->setSelectedNodes(outline.nodes({"B"}));
    EXPECT_EQ(outline.view.selectedRows(), std::vector<int>{1});
    outline.view.selectRowIndexes({2}, true);
    EXPECT_EQ(outline.selection(), "B C");
    outline.view.deselectAll();
    EXPECT_EQ(outline.selection(), "");
}

TEST(OutlineView, SelectedNodesInsideFoldedOnesHaveNoRows) {
    Outline outline("A(B) C");
    outline.show();
    outline.controller->setSelectedNodes(outline.nodes({"B", "C"}));
    EXPECT_EQ(outline.view.selectedRows(), std::vector<int>{1});
    EXPECT_FALSE(outline.view.isItemExpanded(outline.node("A")));
    EXPECT_EQ(outline.selection(), "B C");
}

TEST(OutlineView, TheSelectedRowIsTheCurrentOrTheLast) {
    Outline outline("A B C");
    EXPECT_EQ(outline.view.selectedRow(), -1);
    outline.view.selectRowIndexes({0, 2});
    EXPECT_EQ(outline.view.selectedRow(), 0);
    outline.controller->selectionModel()->setCurrentIndex(outline.index("B"), QItemSelectionModel::NoUpdate);
    EXPECT_EQ(outline.view.selectedRow(), 2);
}

TEST(OutlineView, ExpandingWithChildrenOpensEveryDepth) {
    Outline outline("A(B(C(D))) E(F)");
    outline.view.expandItem(outline.node("A"), true);
    EXPECT_EQ(outline.rows(), "A B C D E");
}

TEST(OutlineView, CollapsingWithChildrenClosesEveryDepth) {
    Outline outline("A(B(C(D))) E");
    outline.view.expandItem(outline.node("A"), true);
    outline.view.collapseItem(outline.node("A"), true);
    EXPECT_EQ(outline.rows(), "A E");
    outline.view.expandItem(outline.node("A"));
    EXPECT_EQ(outline.rows(), "A B E");
}

TEST(OutlineView, CollapsingAloneKeepsWhatIsOpenInside) {
    Outline outline("A(B(C)) E");
    outline.view.expandItem(outline.node("A"), true);
    outline.view.collapseItem(outline.node("A"));
    EXPECT_EQ(outline.rows(), "A E");
    outline.view.expandItem(outline.node("A"));
    EXPECT_EQ(outline.rows(), "A B C E");
}

TEST(OutlineView, AnItemWithoutChildrenCannotBeExpanded) {
    Outline outline("A B");
    outline.view.expandItem(outline.node("A"));
    outline.view.expandItem(outline.node("A"), true);
    EXPECT_FALSE(outline.view.isItemExpanded(outline.node("A")));
    outline.item("A").insertObjectInChildrenAtIndex(test::newItem("X"), 0);
    EXPECT_EQ(outline.rows(), "A B");
}

TEST(OutlineView, ExpansionIsKeptOverMoves) {
    Outline outline("A(B(C)) D(E) F");
    outline.show();
    outline.view.expandItem(outline.node("A"), true);
    outline.controller->moveNode(outline.node("B"), {2, 0});
    EXPECT_EQ(outline.text(), "A D(E) F(B(C))");
    EXPECT_TRUE(outline.view.isItemExpanded(outline.node("B")));
    outline.view.expandItem(outline.node("F"));
    EXPECT_EQ(outline.rows(), "A D F B C");
    outline.controller->moveNode(outline.node("F"), {0});
    EXPECT_EQ(outline.rows(), "F B C A D");
}

TEST(OutlineView, ExpansionIsKeptWhenManyMoveAtOnce) {
    Outline outline("P Q");
    outline.show();
    std::vector<TreeNode *> moving;
    for (int i = 0; i < 100; ++i) {
        auto item = test::newItem(QString::number(i));
        test::addItems(*item, "x");
        outline.item("P").insertObjectInChildrenAtIndex(std::move(item), size_t(i));
        if (i % 2) moving.push_back(&outline.node(QString::number(i)));
    }
    outline.view.expandItem(outline.node("P"), true);
    outline.view.collapseItem(*moving[0]);
    outline.controller->moveNodes(moving, {1, 0});
    EXPECT_FALSE(outline.view.isItemExpanded(*moving[0]));
    for (size_t i = 1; i < moving.size(); ++i)
        EXPECT_TRUE(outline.view.isItemExpanded(*moving[i]));
}

TEST(OutlineView, AVeryDeepTreeUnfoldsAsFarAsItMay) {
    Outline outline("A");
    MyOutlineItem *deepest = &outline.item("A");
    outline.tester.reset();
    for (int i = 0; i < 20'000; ++i)
        deepest = &deepest->appendChild(std::make_unique<MyOutlineItem>());
    outline.root.setChildren(outline.root.takeChildren());
    outline.show();
    outline.view.expandItem(outline.node("A"), true);
    EXPECT_EQ(outline.view.numberOfRows(), 1'001);
    outline.view.grab();
    QTest::keyClick(&outline.view, Qt::Key_End);
    QTest::keyClick(&outline.view, Qt::Key_Asterisk);
    outline.view.grab();
    EXPECT_EQ(outline.view.numberOfRows(), 1'001);
}

TEST(OutlineView, TheAsteriskUnfoldsTheCurrentItem) {
    Outline outline("A(B(C)) D");
    outline.show();
    outline.view.selectRowIndexes({0});
    QTest::keyClick(&outline.view, Qt::Key_Asterisk);
    EXPECT_EQ(outline.rows(), "A B C D");
}

TEST(OutlineView, TypingMovesToATitleThatBeginsSo) {
    Outline outline("Apple Berry Cherry");
    outline.show();
    outline.item("Apple").setPageLabel("Cover");
    outline.controller->selectionModel()->setCurrentIndex(outline.index("Berry", 1),
                                                          QItemSelectionModel::NoUpdate);
    QTest::keyClick(&outline.view, Qt::Key_C);
    EXPECT_EQ(outline.selection(), "Cherry");
}

TEST(OutlineView, AClickIsRemembered) {
    Outline outline("A(B) C");
    outline.show();
    EXPECT_EQ(outline.view.clickedRow(), -1);
    QTest::mouseClick(outline.view.viewport(), Qt::LeftButton, {}, outline.center("C", 1));
    EXPECT_EQ(outline.view.clickedRow(), 1);
    EXPECT_EQ(outline.view.clickedColumn(), 1);
    EXPECT_EQ(outline.selection(), "C");
    outline.view.expandItem(outline.node("A"));
    EXPECT_EQ(outline.view.clickedRow(), 2);
    outline.root.removeObjectFromChildrenAtIndex(1);
    EXPECT_EQ(outline.view.clickedRow(), -1);
    EXPECT_EQ(outline.view.clickedColumn(), -1);
    QTest::mouseClick(outline.view.viewport(), Qt::LeftButton, {}, outline.center("A"));
    EXPECT_EQ(outline.view.clickedRow(), 0);
    QTest::mouseClick(outline.view.viewport(), Qt::LeftButton, {}, QPoint(50, 250));
    EXPECT_EQ(outline.view.clickedRow(), -1);
}

void doubleClick(Outline &outline, const QPoint &place, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(outline.view.viewport(), Qt::LeftButton, modifiers, place);
    QTest::mouseDClick(outline.view.viewport(), Qt::LeftButton, modifiers, place);
}

TEST(OutlineView, ADoubleClickIsTheDoubleActionAndNothingElse) {
    Outline outline("A(B) C");
    outline.show();
    QSignalSpy action(&outline.view, &OutlineView::doubleAction);
    doubleClick(outline, outline.center("A", 1), Qt::ControlModifier);
    ASSERT_EQ(action.count(), 1);
    EXPECT_EQ(action[0][0], 0);
    EXPECT_EQ(action[0][1], 1);
    EXPECT_EQ(action[0][2].value<Qt::KeyboardModifiers>(), Qt::ControlModifier);
    EXPECT_FALSE(outline.view.isItemExpanded(outline.node("A")));
    EXPECT_EQ(outline.view.findChild<QWidget *>("qt_editing_widget"), nullptr);
}

TEST(OutlineView, AnItemFoldedOverSelectedOnesIsSelectedInTheirPlace) {
    Outline outline("A(B(C) D) E(F)");
    const auto select = [&](std::initializer_list<const char *> titles) {
        for (const char *title : {"A", "B", "E"})
            outline.view.expandItem(outline.node(title));
        std::vector<TreeNode *> nodes;
        for (const char *title : titles)
            nodes.push_back(&outline.node(title));
        outline.controller->setSelectedNodes(nodes);
    };
    const auto selected = [&] { return test::titles(outline.controller->selectedNodes()); };
    select({"C", "D", "F"});
    outline.view.collapseItem(outline.node("A"));
    EXPECT_EQ(selected(), "A F");
    EXPECT_TRUE(outline.view.rowForItem(outline.controller->nodeForIndex(outline.view.currentIndex())) >= 0);
    select({"C", "D", "F"});
    outline.view.collapseItem(outline.node("B"));
    EXPECT_EQ(selected(), "B D F");
    select({"C", "F"});
    outline.view.collapseItem(outline.node("A"), true);
    EXPECT_EQ(selected(), "A F");
    select({"A", "E"});
    outline.view.collapseItem(outline.node("A"), true);
    EXPECT_EQ(selected(), "A E");
    // What was out of sight before stays selected.
    outline.view.collapseItem(outline.node("A"));
    outline.controller->setSelectedNodes({&outline.node("C"), &outline.node("F")});
    outline.view.collapseItem(outline.node("E"));
    EXPECT_EQ(selected(), "C E");
}

TEST(OutlineView, OnlyTheMainButtonsDoubleClickIsTheDoubleAction) {
    Outline outline("A B");
    outline.show();
    QSignalSpy action(&outline.view, &OutlineView::doubleAction);
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton, Qt::BackButton}) {
        QTest::mouseClick(outline.view.viewport(), button, {}, outline.center("B"));
        QTest::mouseDClick(outline.view.viewport(), button, {}, outline.center("B"));
    }
    EXPECT_EQ(action.count(), 0);
}

TEST(OutlineView, ADoubleClickBesideAllRowsIsNone) {
    Outline outline("A");
    outline.show();
    QSignalSpy action(&outline.view, &OutlineView::doubleAction);
    doubleClick(outline, {50, 250});
    EXPECT_EQ(action.count(), 0);
}

TEST(OutlineView, LongTextsAreShownShortAndOnOneLine) {
    Outline outline("A");
    outline.show();
    const int height = outline.view.visualRect(outline.index("A")).height();
    outline.item("A").setPageLabel(QString(1'000'000, u'9'));
    outline.item("A").setPageTitle("two\nlines" + QString(1'000'000, u'x'));
    outline.view.grab();
    const QModelIndex shown = outline.controller->index(0, 0);
    EXPECT_EQ(outline.view.visualRect(shown).height(), height);
    EXPECT_LE(outline.view.header()->sectionSize(1), outline.view.width() / 2);
    EXPECT_GT(outline.view.header()->sectionSize(0), outline.view.width() / 2);
}

TEST(OutlineView, ManyRowsAreShownChangedAndSelected) {
    Outline outline("P");
    outline.tester.reset();
    MyOutlineItem::Children items;
    for (int i = 0; i < 50'000; ++i) {
        items.push_back(test::newItem("parent"));
        items.back()->appendChild(test::newItem("child"));
    }
    outline.root.setChildren(std::move(items));
    outline.show();
    std::vector<TreeNode *> children;
    for (TreeNode *top : outline.controller->arrangedObjects().childNodes()) {
        outline.view.expandItem(*top, true);
        children.push_back(top->childNodes()[0]);
    }
    EXPECT_EQ(outline.view.numberOfRows(), 100'000);
    outline.view.grab();
    outline.controller->setSelectedNodes(children);
    EXPECT_EQ(outline.view.selectedRows().size(), 50'000u);
    outline.view.grab();
    for (TreeNode *top : outline.controller->arrangedObjects().childNodes())
        top->representedObject()->setPageTitle("renamed");
    outline.view.grab();
    outline.controller->moveNodes(children, {0});
    outline.view.grab();
    EXPECT_EQ(outline.controller->selectedNodes(), children);
}

}  // namespace
}  // namespace leafwright
