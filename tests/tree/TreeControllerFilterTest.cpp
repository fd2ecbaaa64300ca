#include "tree/TreeFixture.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::Tree;

/// What views are shown, written as trees are.
QString shown(const TreeController &controller, const QModelIndex &parent = {}) {
    QStringList parts;
    for (int row = 0; row < controller.rowCount(parent); ++row) {
        const QModelIndex index = controller.index(row, 0, parent);
        const QString below = shown(controller, index);
        parts.append(index.data().toString() + (below.isEmpty() ? QString() : "(" + below + ")"));
    }
    return parts.join(' ');
}
QString shown(const Tree &tree) {
    return shown(*tree.controller);
}

TEST(TreeControllerFilter, ShowsMatchesWithTheirAncestorsOnly) {
    const Tree tree("A(B(C) D) E F(G)");
    tree.controller->setFilter(tree.nodes({"C", "E"}));
    EXPECT_TRUE(tree.controller->isFiltered());
    EXPECT_EQ(shown(tree), "A(B(C)) E");
    EXPECT_EQ(tree.controller->shownCount(), 4U);
    EXPECT_EQ(tree.text(), "A(B(C) D) E F(G)") << "the tree is what it was";
}

TEST(TreeControllerFilter, WhatIsBelowAMatchIsHidden) {
    const Tree tree("A(B) C");
    tree.controller->setFilter(tree.nodes({"A"}));
    EXPECT_EQ(shown(tree), "A");
    EXPECT_FALSE(tree.controller->hasChildren(tree.index("A")));
}

TEST(TreeControllerFilter, KnowsItsMatchesUntilTheyLeave) {
    const Tree tree("A(B C) D(E) F");
    EXPECT_EQ(tree.controller->matchCount(), 0U);
    tree.controller->setFilter(tree.nodes({"F", "E", "C", "E"}));
    EXPECT_EQ(tree.controller->matchCount(), 3U) << "not what they are below";
    EXPECT_EQ(tree.controller->firstMatch(), &tree.node("C"));
    tree.controller->removeObjects(tree.nodes({"A"}));
    EXPECT_EQ(tree.controller->matchCount(), 2U);
    EXPECT_EQ(tree.controller->firstMatch(), &tree.node("E"));
    tree.controller->setFilter(tree.nodes({"F"}));
    EXPECT_EQ(tree.controller->matchCount(), 1U);
    EXPECT_EQ(tree.controller->firstMatch(), &tree.node("F"));
    tree.controller->clearFilter();
    EXPECT_EQ(tree.controller->matchCount(), 0U);
    EXPECT_EQ(tree.controller->firstMatch(), nullptr);
}

TEST(TreeControllerFilter, NothingMayBeShown) {
    const Tree tree("A(B) C");
    tree.controller->setFilter({});
    EXPECT_EQ(shown(tree), "");
    EXPECT_EQ(tree.controller->shownCount(), 0U);
}

TEST(TreeControllerFilter, AllIsShownAgain) {
    const Tree tree("A(B(C) D) E");
    tree.controller->setFilter(tree.nodes({"D"}));
    tree.controller->clearFilter();
    EXPECT_FALSE(tree.controller->isFiltered());
    EXPECT_EQ(shown(tree), "A(B(C) D) E");
    EXPECT_EQ(tree.controller->shownCount(), 5U);
}

TEST(TreeControllerFilter, OneFilterTakesThePlaceOfAnother) {
    const Tree tree("A(B) C(D)");
    tree.controller->setFilter(tree.nodes({"B"}));
    tree.controller->setFilter(tree.nodes({"D"}));
    EXPECT_EQ(shown(tree), "C(D)");
}

TEST(TreeControllerFilter, IndexesAndNodesLeadToEachOther) {
    const Tree tree("A B C(D E)");
    tree.controller->setFilter(tree.nodes({"C", "E"}));
    EXPECT_EQ(tree.index("C").row(), 0);
    EXPECT_EQ(tree.index("E").row(), 0);
    EXPECT_EQ(tree.index("E").parent(), tree.index("C"));
    EXPECT_EQ(&tree.controller->nodeForIndex(tree.index("E")), &tree.node("E"));
    EXPECT_FALSE(tree.index("D").isValid());
    EXPECT_EQ(tree.node("E").indexPath(), (IndexPath{2, 1})) << "paths are those of the whole tree";
}

TEST(TreeControllerFilter, WhatIsHiddenIsSelectedNoLonger) {
    const Tree tree("A B C");
    tree.controller->setSelectedNodes(tree.nodes({"A", "B", "C"}));
    tree.controller->setFilter(tree.nodes({"A", "C"}));
    EXPECT_EQ(tree.selection(), "A C");
    tree.controller->clearFilter();
    EXPECT_EQ(tree.selection(), "A C");
}

TEST(TreeControllerFilter, OnlyWhatIsShownCanBeSelected) {
    const Tree tree("A B C(D)");
    tree.controller->setFilter(tree.nodes({"B", "D"}));
    tree.controller->setSelectedNodes(tree.nodes({"A", "B", "D"}));
    EXPECT_EQ(tree.selection(), "B D");
    EXPECT_TRUE(tree.controller->isSelected(tree.node("D")));
    EXPECT_FALSE(tree.controller->isSelected(tree.node("A")));
    EXPECT_EQ(tree.controller->selectionModel()->currentIndex(), tree.index("B"));
    tree.controller->setSelectionIndexPaths({{0}});
    EXPECT_EQ(tree.selection(), "");
}

TEST(TreeControllerFilter, ViewsAreToldOfAReset) {
    const Tree tree("A B");
    QSignalSpy resets(tree.controller.get(), &QAbstractItemModel::modelReset);
    tree.controller->setFilter(tree.nodes({"A"}));
    tree.controller->clearFilter();
    tree.controller->clearFilter();
    EXPECT_EQ(resets.size(), 2) << "there was nothing to clear the second time";
}

TEST(TreeControllerFilter, WhatComesIsShown) {
    Tree tree("A B C");
    tree.controller->setFilter(tree.nodes({"A", "C"}));
    tree.root.insertObjectInChildrenAtIndex(test::newItem("X"), 2);
    EXPECT_EQ(tree.text(), "A B X C");
    EXPECT_EQ(shown(tree), "A X C");
    tree.root.insertObjectInChildrenAtIndex(test::newItem("Y"), 1);
    EXPECT_EQ(shown(tree), "A Y X C");
    tree.root.insertObjectInChildrenAtIndex(test::newItem("Z"), 5);
    EXPECT_EQ(shown(tree), "A Y X C Z");
    EXPECT_EQ(tree.controller->shownCount(), 5U);
}

TEST(TreeControllerFilter, WhatComesIsShownWithAllBelow) {
    Tree tree("A B");
    tree.controller->setFilter(tree.nodes({"B"}));
    auto item = test::newItem("X");
    test::addItems(*item, "Y(Z)");
    tree.root.insertObjectInChildrenAtIndex(std::move(item), 1);
    EXPECT_EQ(shown(tree), "X(Y(Z)) B");
    EXPECT_EQ(tree.controller->shownCount(), 4U);
}

TEST(TreeControllerFilter, WhatComesBelowAHiddenNodeBringsThatIntoView) {
    const Tree tree("A(B(C)) D");
    tree.controller->setFilter(tree.nodes({"D"}));
    tree.item("B").insertObjectInChildrenAtIndex(test::newItem("X"), 1);
    EXPECT_EQ(shown(tree), "A(B(X)) D");
    EXPECT_EQ(tree.controller->shownCount(), 4U);
}

TEST(TreeControllerFilter, WhatLeavesIsShownNoLonger) {
    Tree tree("A B(C D) E");
    tree.controller->setFilter(tree.nodes({"A", "C", "D", "E"}));
    tree.item("B").removeObjectFromChildrenAtIndex(0);
    EXPECT_EQ(shown(tree), "A B(D) E");
    tree.root.removeObjectFromChildrenAtIndex(1);
    EXPECT_EQ(shown(tree), "A E");
    EXPECT_EQ(tree.controller->shownCount(), 2U);
}

TEST(TreeControllerFilter, NobodyHearsOfWhatIsHidden) {
    Tree tree("A B C");
    tree.controller->setFilter(tree.nodes({"A", "C"}));
    QSignalSpy removals(tree.controller.get(), &QAbstractItemModel::rowsRemoved);
    QSignalSpy changes(tree.controller.get(), &QAbstractItemModel::dataChanged);
    tree.item("B").setPageTitle("X");
    tree.root.removeObjectFromChildrenAtIndex(1);
    EXPECT_EQ(removals.size(), 0);
    EXPECT_EQ(changes.size(), 0);
    EXPECT_EQ(shown(tree), "A C");
}

TEST(TreeControllerFilter, MovesGoThroughTheWholeTree) {
    const Tree tree("A B C D");
    tree.controller->setFilter(tree.nodes({"A", "D"}));
    tree.controller->setSelectedNodes(tree.nodes({"D"}));
    tree.controller->moveNode(tree.node("D"), {2});
    EXPECT_EQ(tree.text(), "A B D C");
    EXPECT_EQ(shown(tree), "A D");
    tree.controller->moveNode(tree.node("D"), {0});
    EXPECT_EQ(tree.text(), "D A B C");
    EXPECT_EQ(shown(tree), "D A");
    EXPECT_EQ(tree.selection(), "D");
}

TEST(TreeControllerFilter, AMoveBelowAHiddenNodeBringsThatIntoView) {
    const Tree tree("A(B) C D");
    tree.controller->setFilter(tree.nodes({"D"}));
    tree.controller->moveNode(tree.node("D"), {0, 0, 0});
    EXPECT_EQ(tree.text(), "A(B(D)) C");
    EXPECT_EQ(shown(tree), "A(B(D))");
    EXPECT_EQ(tree.controller->shownCount(), 3U);
}

TEST(TreeControllerFilter, ManyMovesToo) {
    const Tree tree("A B C D E");
    tree.controller->setFilter(tree.nodes({"A", "C", "E"}));
    tree.controller->setSelectedNodes(tree.nodes({"C", "E"}));
    {
        const TreeController::ManyMoves together(*tree.controller);
        tree.controller->moveNode(tree.node("E"), {0});
        tree.controller->moveNode(tree.node("C"), {0});
    }
    EXPECT_EQ(tree.text(), "C E A B D");
    EXPECT_EQ(shown(tree), "C E A");
    EXPECT_EQ(tree.selection(), "C E");
}

TEST(TreeControllerFilter, StepsBackKeepIt) {
    Tree tree("A B C");
    tree.controller->setFilter(tree.nodes({"A", "C"}));
    tree.controller->moveNode(tree.node("C"), {0});
    tree.edits.remove(tree.root, 1);
    EXPECT_EQ(tree.text(), "C B");
    EXPECT_EQ(shown(tree), "C");
    tree.edits.undo();
    EXPECT_EQ(shown(tree), "C A");
    tree.edits.undo();
    EXPECT_EQ(tree.text(), "A B C");
    EXPECT_EQ(shown(tree), "A C");
}

TEST(TreeControllerFilter, ANodeCanBeShownAllTheSame) {
    const Tree tree("A(B(C D)) E");
    tree.controller->setFilter(tree.nodes({"E"}));
    tree.controller->showNodes(tree.nodes({"C"}));
    EXPECT_EQ(shown(tree), "A(B(C)) E");
    tree.controller->showNodes(tree.nodes({"D"}));
    EXPECT_EQ(shown(tree), "A(B(C D)) E");
    tree.controller->showNodes(tree.nodes({"D"}));
    EXPECT_EQ(tree.controller->shownCount(), 5U);
}

TEST(TreeControllerFilter, ManyNodesAreShownAsOneLayout) {
    QStringList names;
    for (int i = 0; i < 100; ++i)
        names.append(QString::number(i));
    const Tree tree("A(" + names.join(' ') + ") B");
    tree.controller->setFilter(tree.nodes({"A", "B"}));
    tree.controller->setSelectedNodes(tree.nodes({"B"}));
    const QSignalSpy inserted(tree.controller.get(), &QAbstractItemModel::rowsInserted);
    const QSignalSpy laidOut(tree.controller.get(), &QAbstractItemModel::layoutChanged);
    tree.controller->showNodes(tree.node("A").childNodes());
    EXPECT_EQ(shown(tree), tree.text());
    EXPECT_EQ(tree.controller->shownCount(), 102U);
    EXPECT_EQ(tree.selection(), "B");
    EXPECT_EQ(inserted.count(), 0);
    EXPECT_EQ(laidOut.count(), 1);
}

TEST(TreeControllerFilter, AnOutlineThatIsReplacedTellsThatItWentAway) {
    Tree tree("A B");
    QSignalSpy emptied(tree.controller.get(), &TreeController::emptied);
    tree.controller->setFilter({});
    tree.edits.removeAll(tree.root);
    EXPECT_EQ(emptied.size(), 1);
    tree.root.insertObjectInChildrenAtIndex(test::newItem("X"), 0);
    EXPECT_EQ(shown(tree), "X");
}

/// Notes where things are dropped, by the position among all children.
class NotingHandler final : public TreeDragHandler {
public:
    bool writeNodes(const std::vector<TreeNode *> & /*nodes*/, QMimeData & /*data*/) override { return true; }
    bool canDrop(const QMimeData & /*data*/, TreeNode * /*parent*/, int /*childIndex*/) override {
        return true;
    }
    bool drop(const QMimeData & /*data*/, TreeNode * /*parent*/, int childIndex) override {
        dropped.append(childIndex);
        return true;
    }
    QList<int> dropped;
};

TEST(TreeControllerFilter, ADropGoesBesideWhatIsShown) {
    const Tree tree("A B C D E");
    NotingHandler handler;
    tree.controller->setDragHandler(&handler);
    tree.controller->setMimeTypes({"text/plain"});
    QMimeData data;
    data.setText("text");
    tree.controller->setFilter(tree.nodes({"B", "D"}));
    for (int row = -1; row <= 2; ++row)
        tree.controller->dropMimeData(&data, Qt::MoveAction, row, 0, {});
    EXPECT_EQ(handler.dropped, (QList<int>{-1, 1, 3, 4}));
    tree.controller->setDragHandler(nullptr);
}

}  // namespace
}  // namespace leafwright
