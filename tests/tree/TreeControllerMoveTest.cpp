#include "tree/TreeFixture.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::Tree;

/// Counts what a view is told.
struct Told {
    explicit Told(const Tree &tree)
        : aboutToMove(tree.controller.get(), &TreeController::rowsAboutToBeMoved),
          moved(tree.controller.get(), &TreeController::rowsMoved),
          inserted(tree.controller.get(), &TreeController::rowsInserted),
          removed(tree.controller.get(), &TreeController::rowsRemoved),
          laidOut(tree.controller.get(), &TreeController::layoutChanged),
          reset(tree.controller.get(), &TreeController::modelReset),
          selected(tree.controller->selectionModel(), &QItemSelectionModel::selectionChanged),
          current(tree.controller->selectionModel(), &QItemSelectionModel::currentChanged) {}

    /// Moves, and everything else.
    std::pair<int, int> counts() const {
        EXPECT_EQ(aboutToMove.count(), moved.count());
        return {moved.count(), inserted.count() + removed.count() + laidOut.count() + reset.count() +
                                   selected.count() + current.count()};
    }

    QSignalSpy aboutToMove, moved, inserted, removed, laidOut, reset, selected, current;
};

QString moved(const QString &text, const QStringList &titles, const IndexPath &path) {
    const Tree tree(text);
    return tree.controller->moveNodes(tree.nodes(titles), path) ? tree.text() : "refused";
}

TEST(TreeControllerMove, UpwardsAmongSiblings) {
    EXPECT_EQ(moved("A B C", {"C"}, {1}), "A C B");
    EXPECT_EQ(moved("A B C", {"C"}, {0}), "C A B");
}

TEST(TreeControllerMove, DownwardsThePathIsTheGapBeforeTheMove) {
    EXPECT_EQ(moved("A B C", {"A"}, {2}), "B A C");
    EXPECT_EQ(moved("A B C", {"A"}, {3}), "B C A");
}

TEST(TreeControllerMove, TheGapsBesideANodeLeaveItInPlaceWithoutAWord) {
    for (const size_t gap : {1, 2}) {
        const Tree tree("A B C");
        const Told told(tree);
        EXPECT_TRUE(tree.controller->moveNode(tree.node("B"), IndexPath{gap}));
        EXPECT_EQ(tree.text(), "A B C");
        EXPECT_EQ(told.counts(), std::pair(0, 0));
    }
}

TEST(TreeControllerMove, OutOfAParentToTheGapBehindIt) {
    EXPECT_EQ(moved("P(A B C(X) D E) Q", {"C"}, {1}), "P(A B D E) C(X) Q");
}

TEST(TreeControllerMove, IntoASiblingAsItsLastChild) {
    EXPECT_EQ(moved("A(X) B(Y) C", {"B"}, {0, 1}), "A(X B(Y)) C");
}

TEST(TreeControllerMove, ThePathMayLeadThroughASiblingThatMovesUp) {
    // B is at [1] before the move, and at [0] afterwards.
    EXPECT_EQ(moved("A B(X)", {"A"}, {1, 1}), "B(X A)");
    EXPECT_EQ(moved("A B(X)", {"A"}, {1, 0}), "B(A X)");
}

TEST(TreeControllerMove, ManyStandInOrderAtTheGap) {
    EXPECT_EQ(moved("A B C D E", {"B", "D"}, {0}), "B D A C E");
    EXPECT_EQ(moved("A B C D E", {"A", "C"}, {4}), "B D A C E");
    EXPECT_EQ(moved("A B C D E", {"A", "B", "E"}, {3}), "C A B E D");
    EXPECT_EQ(moved("A B C D E", {"A", "D"}, {2}), "B A D C E");
}

TEST(TreeControllerMove, TheListSaysTheOrder) {
    EXPECT_EQ(moved("A B C D", {"D", "A"}, {2}), "B D A C");
    EXPECT_EQ(moved("A B C", {"C", "B", "A"}, {0}), "C B A");
}

TEST(TreeControllerMove, AGapAmongTheMovedKeepsTheirNeighbours) {
    EXPECT_EQ(moved("A B C D", {"A", "B", "C"}, {1}), "A B C D");
    EXPECT_EQ(moved("A B C D", {"B", "C"}, {2}), "A B C D");
    EXPECT_EQ(moved("A B C D", {"A", "C"}, {1}), "A C B D");
}

TEST(TreeControllerMove, FromManyParents) {
    EXPECT_EQ(moved("A(B C) D(E) F", {"C", "E", "F"}, {0, 0}), "A(C E F B) D");
    EXPECT_EQ(moved("A(B(C)) D", {"C", "D"}, {0}), "C D A(B)");
}

TEST(TreeControllerMove, ChildrenBecomeTheNextSiblings) {
    EXPECT_EQ(moved("N(A(X) B C) Z", {"A", "B", "C"}, {1}), "N A(X) B C Z");
}

TEST(TreeControllerMove, AListedDescendantLeavesItsListedAncestor) {
    EXPECT_EQ(moved("A(B C) D", {"A", "B"}, {2}), "D A(C) B");
    EXPECT_EQ(moved("A(B C) D", {"B", "A"}, {2}), "D B A(C)");
}

TEST(TreeControllerMove, OneListedTwiceCountsOnce) {
    EXPECT_EQ(moved("A B C", {"C", "A", "C"}, {1}), "C A B");
}

TEST(TreeControllerMove, IntoItsOwnSubtreeIsRefused) {
    EXPECT_EQ(moved("A(B(C)) D", {"A"}, {0, 0}), "refused");
    EXPECT_EQ(moved("A(B(C)) D", {"A"}, {0, 0, 1}), "refused");
    EXPECT_EQ(moved("A(B(C)) D", {"D", "B"}, {0, 0, 0}), "refused");
}

TEST(TreeControllerMove, ToNowhereIsRefused) {
    EXPECT_EQ(moved("A B", {"A"}, {}), "refused");
    EXPECT_EQ(moved("A B", {"A"}, {3}), "refused");
    EXPECT_EQ(moved("A B", {"A"}, {2, 0}), "refused");
}

TEST(TreeControllerMove, RefusedMovesChangeNothing) {
    const Tree tree("A(B) C");
    const Told told(tree);
    EXPECT_FALSE(tree.controller->moveNodes(tree.nodes({"C", "A"}), {0, 0}));
    EXPECT_FALSE(tree.controller->moveNode(tree.controller->arrangedObjects(), {0}));
    EXPECT_EQ(tree.text(), "A(B) C");
    EXPECT_EQ(told.counts(), std::pair(0, 0));
}

TEST(TreeControllerMove, ANodeOfAnotherTreeIsRefused) {
    const Tree tree("A");
    const Tree other("B");
    EXPECT_FALSE(tree.controller->moveNode(other.node("B"), {0}));
}

TEST(TreeControllerMove, NothingIsMovedGladly) {
    const Tree tree("A");
    EXPECT_TRUE(tree.controller->moveNodes({}, {0}));
}

TEST(TreeControllerMove, AViewIsToldOfOneMoveInPositionsBeforeIt) {
    const Tree tree("A B C");
    const Told told(tree);
    tree.controller->moveNode(tree.node("A"), {2});
    EXPECT_EQ(told.counts(), std::pair(1, 0));
    EXPECT_EQ(told.moved[0][1], 0);
    EXPECT_EQ(told.moved[0][2], 0);
    EXPECT_EQ(told.moved[0][4], 2);
}

TEST(TreeControllerMove, NeighboursMoveAsOne) {
    const Tree tree("N(A B C) Z");
    const Told told(tree);
    tree.controller->moveNodes(tree.nodes({"A", "B", "C"}), {1});
    EXPECT_EQ(told.counts(), std::pair(1, 0));
}

TEST(TreeControllerMove, EachRunOfNeighboursMovesByItself) {
    const Tree tree("A B C D E");
    const Told told(tree);
    tree.controller->moveNodes(tree.nodes({"A", "B", "D"}), {5});
    EXPECT_EQ(tree.text(), "C E A B D");
    EXPECT_EQ(told.counts(), std::pair(2, 0));
}

TEST(TreeControllerMove, NodesAndIndexesAreKept) {
    const Tree tree("A(B(X)) C");
    const TreeNode *node = &tree.node("B");
    const QPersistentModelIndex b = tree.index("B");
    const QPersistentModelIndex x = tree.index("X", 1);
    const QPersistentModelIndex c = tree.index("C");
    tree.controller->moveNode(tree.node("B"), {0});
    EXPECT_EQ(tree.text(), "B(X) A C");
    EXPECT_EQ(&tree.node("B"), node);
    EXPECT_EQ(b, tree.index("B"));
    EXPECT_EQ(x, tree.index("X", 1));
    EXPECT_EQ(c, tree.index("C"));
}

TEST(TreeControllerMove, SelectionAndCurrentRowAreKept) {
    const Tree tree("A B C D");
    tree.controller->setSelectedNodes(tree.nodes({"B", "C"}));
    const Told told(tree);
    tree.controller->moveNode(tree.node("C"), {0});
    EXPECT_EQ(tree.selection(), "C B");
    EXPECT_EQ(tree.controller->selectionModel()->currentIndex(), tree.index("B"));
    EXPECT_EQ(told.counts(), std::pair(1, 0));
}

TEST(TreeControllerMove, ASelectionOfAllSiblingsIsKeptWhenOneLeaves) {
    const Tree tree("A B C");
    tree.controller->setSelectedNodes(tree.nodes({"A", "B", "C"}));
    tree.controller->moveNode(tree.node("C"), {0, 0});
    EXPECT_EQ(tree.text(), "A(C) B");
    EXPECT_EQ(tree.selection(), "A C B");
    tree.controller->moveNode(tree.node("B"), {0, 1});
    EXPECT_EQ(tree.selection(), "A C B");
}

TEST(TreeControllerMove, WhoeverIsToldFindsTheSelectionInPlace) {
    const Tree tree("A B C");
    tree.controller->setSelectedNodes(tree.nodes({"B", "C"}));
    QString seen;
    QObject::connect(tree.controller.get(), &TreeController::rowsMoved, tree.controller.get(),
                     [&] { seen = tree.selection(); });
    tree.controller->moveNode(tree.node("A"), {3});
    EXPECT_EQ(seen, "B C");
}

/// Fifty children, of which every other one moves: more runs than are moved one by one.
class ScatteredMove : public testing::Test {
protected:
    ScatteredMove() {
        for (int i = 0; i < 100; ++i) {
            tree.item("P").insertObjectInChildrenAtIndex(test::newItem(QString::number(i)), size_t(i));
            if (i % 2 == 1) odd.push_back(&tree.node(QString::number(i)));
        }
    }

    QString numbers(int first) const {
        QStringList parts;
        for (int i = first; i < 100; i += 2)
            parts.append(QString::number(i));
        return parts.join(u' ');
    }

    Tree tree{"P(Z) Q"};
    std::vector<TreeNode *> odd;
};

TEST_F(ScatteredMove, ToAnotherParent) {
    EXPECT_TRUE(tree.controller->moveNodes(odd, {1, 0}));
    EXPECT_EQ(tree.text(), "P(" + numbers(0) + " Z) Q(" + numbers(1) + ")");
}

TEST_F(ScatteredMove, AmongTheirSiblings) {
    EXPECT_TRUE(tree.controller->moveNodes(odd, {0, 4}));
    EXPECT_EQ(tree.text(), "P(0 2 " + numbers(1) + " " + numbers(4) + " Z) Q");
}

TEST_F(ScatteredMove, AreOneNewLayout) {
    const Told told(tree);
    tree.controller->moveNodes(odd, {1, 0});
    EXPECT_EQ(told.laidOut.count(), 1);
    EXPECT_EQ(told.counts(), std::pair(0, 1));
}

/// Up to a number of runs, views that fold rows by themselves need not lay out anew.
TEST(TreeControllerMove, ThirtyOneRunsAreToldOneByOneAndMoreTogether) {
    for (const int runs : {31, 32}) {
        QStringList titles;
        QStringList moved;
        for (int i = 0; i < 2 * runs; ++i) {
            titles.append(QString::number(i));
            if (i % 2 == 1) moved.append(titles.last());
        }
        const Tree tree(titles.join(' '));
        QSignalSpy moves(tree.controller.get(), &QAbstractItemModel::rowsMoved);
        QSignalSpy layouts(tree.controller.get(), &QAbstractItemModel::layoutChanged);
        EXPECT_TRUE(tree.controller->moveNodes(tree.nodes(moved), {0}));
        EXPECT_TRUE(tree.text().startsWith(moved.join(' ') + " 0 2 4"));
        EXPECT_EQ(moves.size(), runs < 32 ? runs : 0);
        EXPECT_EQ(layouts.size(), runs < 32 ? 0 : 1);
    }
}

TEST_F(ScatteredMove, KeepSelectionCurrentRowAndIndexes) {
    tree.controller->setSelectedNodes(odd);
    std::vector<std::pair<QPersistentModelIndex, QString>> kept;
    for (const QString title : {"P", "Q", "Z", "0", "1", "50", "51", "99"})
        kept.emplace_back(tree.index(title, 1), title);
    tree.controller->moveNodes(odd, {0});
    EXPECT_EQ(tree.controller->selectedNodes(), odd);
    EXPECT_EQ(tree.controller->selectionModel()->currentIndex(), tree.index("1"));
    for (const auto &[index, title] : kept)
        EXPECT_EQ(index, tree.index(title, 1));
}

TEST_F(ScatteredMove, IntoTheirOwnSubtreeAreRefused) {
    EXPECT_FALSE(tree.controller->moveNodes(odd, odd[3]->indexPath().indexPathByAddingIndex(0)));
}

class ManyMoves : public testing::Test {
protected:
    Tree tree{"A(B C) D E"};
};

TEST_F(ManyMoves, AreOneNewLayout) {
    QSignalSpy moved(tree.controller.get(), &QAbstractItemModel::rowsMoved);
    QSignalSpy laidOut(tree.controller.get(), &QAbstractItemModel::layoutChanged);
    {
        const TreeController::ManyMoves together(*tree.controller);
        tree.controller->moveNode(tree.node("E"), {0});
        tree.controller->moveNode(tree.node("B"), {3});
        EXPECT_EQ(tree.node("D").indexPath(), IndexPath({2}));
        EXPECT_EQ(laidOut.size(), 0);
    }
    EXPECT_EQ(moved.size(), 0);
    EXPECT_EQ(laidOut.size(), 1);
    EXPECT_EQ(test::written(tree.controller->arrangedObjects()), "E A(C) D B");
    EXPECT_EQ(test::written(tree.root), "E A(C) D B");
}

TEST_F(ManyMoves, KeepSelectionCurrentRowAndIndexes) {
    tree.controller->setSelectedNodes({&tree.node("B"), &tree.node("E")});
    const QPersistentModelIndex kept = tree.index("C", 1);
    {
        const TreeController::ManyMoves together(*tree.controller);
        tree.controller->moveNode(tree.node("B"), {3});
        tree.controller->moveNode(tree.node("C"), {0});
    }
    EXPECT_EQ(test::titles(tree.controller->selectedNodes()), "E B");
    EXPECT_EQ(QModelIndex(kept), tree.index("C", 1));
    EXPECT_EQ(tree.controller->selectionModel()->currentIndex(), tree.index("B"));
}

TEST_F(ManyMoves, TakenBackKeepSelectionAndNodes) {
    test::Tree other("A B(C D) E");
    TreeNode &moved = other.node("C");
    other.controller->setSelectedNodes({&moved});
    other.controller->moveNode(moved, {0});
    other.edits.undo();
    EXPECT_EQ(other.text(), "A B(C D) E");
    EXPECT_EQ(&other.node("C"), &moved);
    EXPECT_EQ(other.selection(), "C");
    other.edits.redo();
    EXPECT_EQ(other.text(), "C A B(D) E");
    EXPECT_EQ(&other.node("C"), &moved);
}

}  // namespace
}  // namespace leafwright
