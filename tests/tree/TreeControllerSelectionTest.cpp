#include "tree/TreeFixture.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::Tree;

TEST(TreeControllerSelection, ThereIsNoneAtFirst) {
    const Tree tree("A(B)");
    EXPECT_EQ(tree.selection(), "");
    EXPECT_EQ(tree.controller->selectionIndexPath(), std::nullopt);
    EXPECT_TRUE(tree.controller->selectionIndexPaths().empty());
}

TEST(TreeControllerSelection, IsHandedOutInTreeOrder) {
    const Tree tree("A(B(C) D) E F");
    tree.controller->setSelectedNodes(tree.nodes({"F", "C", "A", "E", "D"}));
    EXPECT_EQ(tree.selection(), "A C D E F");
    EXPECT_EQ(tree.controller->selectionIndexPath(), IndexPath{0});
    EXPECT_EQ(tree.controller->selectionIndexPaths(),
              (std::vector<IndexPath>{{0}, {0, 0, 0}, {0, 1}, {1}, {2}}));
}

TEST(TreeControllerSelection, AFewOfManyAreInTreeOrderToo) {
    Tree tree("A(B C) Z");
    for (int i = 0; i < 100; ++i)
        tree.item("Z").insertObjectInChildrenAtIndex(test::newItem("z"), 0);
    tree.controller->setSelectedNodes(tree.nodes({"Z", "C", "A"}));
    EXPECT_EQ(tree.selection(), "A C Z");
}

TEST(TreeControllerSelection, ReplacesTheOldOneWithOneSignal) {
    const Tree tree("A(B) C");
    tree.controller->setSelectedNodes(tree.nodes({"A", "B"}));
    QSignalSpy changed(tree.controller->selectionModel(), &QItemSelectionModel::selectionChanged);
    tree.controller->setSelectionIndexPaths({{1}, {0, 0}});
    EXPECT_EQ(tree.selection(), "B C");
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(tree.controller->selectionModel()->currentIndex(), tree.index("C"));
}

TEST(TreeControllerSelection, PathsThatLeadNowhereArePassedOver) {
    const Tree tree("A(B)");
    tree.controller->setSelectionIndexPaths({{5}, {}, {0, 0}, {0, 0, 0}});
    EXPECT_EQ(tree.selection(), "B");
}

TEST(TreeControllerSelection, AnEmptyListSelectsNothing) {
    const Tree tree("A(B)");
    tree.controller->setSelectedNodes(tree.nodes({"A"}));
    tree.controller->setSelectedNodes({});
    EXPECT_EQ(tree.selection(), "");
}

TEST(TreeControllerSelection, WholeRowsAreSelected) {
    const Tree tree("A B");
    tree.controller->setSelectedNodes(tree.nodes({"A", "B", "A"}));
    EXPECT_EQ(tree.controller->selectionModel()->selectedRows(1).size(), 2);
    EXPECT_EQ(tree.controller->selectionModel()->selectedIndexes().size(), 4);
}

TEST(TreeControllerSelection, WhatIsRemovedIsSelectedNoMore) {
    Tree tree("A(B) C D");
    tree.controller->setSelectedNodes(tree.nodes({"B", "C", "D"}));
    tree.root.removeObjectFromChildrenAtIndex(0);
    tree.root.removeObjectFromChildrenAtIndex(0);
    EXPECT_EQ(tree.selection(), "D");
    tree.root.removeObjectFromChildrenAtIndex(0);
    EXPECT_EQ(tree.selection(), "");
    EXPECT_EQ(tree.controller->selectionIndexPath(), std::nullopt);
}

TEST(TreeControllerSelection, WhatIsInsertedAmongTheSelectedIsNot) {
    Tree tree("A B");
    tree.controller->setSelectedNodes(tree.nodes({"A", "B"}));
    tree.root.insertObjectInChildrenAtIndex(test::newItem("X"), 1);
    EXPECT_EQ(tree.selection(), "A B");
}

TEST(TreeControllerSelection, ManyRangesAreReplacedByManyOthers) {
    constexpr int count = 3'000;
    MyOutlineItem root;
    for (int i = 0; i < count; ++i)
        root.appendChild(test::newItem(QString::number(i)));
    OutlineEdits edits(root);
    TreeController controller(edits);
    std::vector<TreeNode *> halves[2];
    for (size_t i = 0; i < count; ++i)
        halves[i % 2].push_back(controller.arrangedObjects().childNodes()[i]);
    controller.setSelectedNodes(halves[0]);
    EXPECT_EQ(controller.selectedNodes(), halves[0]);
    controller.setSelectedNodes(halves[1]);
    EXPECT_EQ(controller.selectedNodes(), halves[1]);
}

TEST(TreeControllerSelection, NodesKnowWhetherTheyAreSelected) {
    Tree tree("A(B C) D");
    tree.controller->setSelectedNodes({&tree.node("C")});
    EXPECT_TRUE(tree.controller->isSelected(tree.node("C")));
    EXPECT_FALSE(tree.controller->isSelected(tree.node("A")));
    tree.controller->selectionModel()->select(tree.index("D"), QItemSelectionModel::ClearAndSelect);
    EXPECT_TRUE(tree.controller->isSelected(tree.node("D")));
    EXPECT_FALSE(tree.controller->isSelected(tree.node("C")));
    tree.controller->moveNode(tree.node("D"), {0});
    EXPECT_TRUE(tree.controller->isSelected(tree.node("D")));
}

TEST(TreeControllerSelection, SiblingsAreOneRangeAlsoWithOthersBetweenThem) {
    Tree tree("A(B C) D(E) F");
    tree.controller->setSelectedNodes({&tree.node("A"), &tree.node("B"), &tree.node("C"), &tree.node("D"),
                                       &tree.node("E"), &tree.node("F")});
    EXPECT_EQ(tree.controller->selectionModel()->selection().size(), 3);
    EXPECT_EQ(test::titles(tree.controller->selectedNodes()), "A B C D E F");
}

}  // namespace
}  // namespace leafwright
