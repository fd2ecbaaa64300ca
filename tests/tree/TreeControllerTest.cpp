#include "tree/TreeController.h"
#include "tree/TreeFixture.h"

#include <QSignalSpy>

#include <gtest/gtest.h>
#include <stdexcept>

namespace leafwright {
namespace {

using test::newItem;
using test::Tree;

TEST(TreeController, ArrangesTheItemsThatAreThere) {
    const Tree tree("A(B C(D)) E");
    EXPECT_EQ(tree.text(), "A(B C(D)) E");
    EXPECT_EQ(tree.controller->nodeCount(), 5u);
    const TreeNode &root = tree.controller->arrangedObjects();
    EXPECT_EQ(root.parentNode(), nullptr);
    EXPECT_EQ(root.representedObject(), &tree.root);
    EXPECT_EQ(tree.node("A").parentNode(), &root);
}

TEST(TreeController, PathsLeadToNodesAndBack) {
    const Tree tree("A(B C(D)) E");
    const IndexPath path{0, 1, 0};
    EXPECT_EQ(tree.controller->descendantNodeAtIndexPath(path), &tree.node("D"));
    EXPECT_EQ(tree.node("D").indexPath(), path);
    EXPECT_EQ(tree.controller->descendantNodeAtIndexPath({}), &tree.controller->arrangedObjects());
    EXPECT_TRUE(tree.controller->arrangedObjects().indexPath().isEmpty());
}

TEST(TreeController, APositionPastTheEndLeadsToNoNode) {
    const Tree tree("A(B) E");
    EXPECT_EQ(tree.controller->descendantNodeAtIndexPath({2}), nullptr);
    EXPECT_EQ(tree.controller->descendantNodeAtIndexPath({0, 1}), nullptr);
    EXPECT_EQ(tree.controller->descendantNodeAtIndexPath({1, 0, 0}), nullptr);
}

TEST(TreeController, ATopLevelNodeHasDepthOne) {
    const Tree tree("A(B(C))");
    EXPECT_EQ(tree.node("A").depth(), 1u);
    EXPECT_EQ(tree.node("C").depth(), 3u);
    EXPECT_EQ(tree.controller->arrangedObjects().depth(), 0u);
}

TEST(TreeController, ANodeIsADescendantOfItselfAndAllAboveIt) {
    const Tree tree("A(B(C)) D");
    EXPECT_TRUE(tree.node("C").isDescendantOf(tree.node("C")));
    EXPECT_TRUE(tree.node("C").isDescendantOf(tree.node("A")));
    EXPECT_TRUE(tree.node("C").isDescendantOf(tree.controller->arrangedObjects()));
    EXPECT_FALSE(tree.node("A").isDescendantOf(tree.node("C")));
    EXPECT_FALSE(tree.node("C").isDescendantOf(tree.node("D")));
}

TEST(TreeController, FindsNodesByIndexAndItem) {
    const Tree tree("A(B C)");
    EXPECT_EQ(&tree.controller->nodeForIndex(tree.index("C", 1)), &tree.node("C"));
    EXPECT_EQ(&tree.controller->nodeForIndex({}), &tree.controller->arrangedObjects());
    EXPECT_EQ(tree.controller->nodeForItem(tree.item("B")), &tree.node("B"));
    EXPECT_EQ(tree.controller->nodeForItem(MyOutlineItem()), nullptr);
    EXPECT_FALSE(tree.controller->indexForNode(tree.controller->arrangedObjects()).isValid());
}

TEST(TreeController, FollowsAnItemInsertedWithItsChildren) {
    Tree tree("A C");
    QSignalSpy inserted(tree.controller.get(), &TreeController::rowsInserted);
    auto item = newItem("B");
    test::addItems(*item, "X(Y)");
    tree.root.insertObjectInChildrenAtIndex(std::move(item), 1);
    EXPECT_EQ(tree.text(), "A B(X(Y)) C");
    EXPECT_EQ(tree.node("C").indexPath(), IndexPath{2});
    ASSERT_EQ(inserted.count(), 1);
    EXPECT_EQ(inserted[0][1], 1);
    EXPECT_EQ(inserted[0][2], 1);
    EXPECT_EQ(tree.selection(), "");
}

TEST(TreeController, FollowsAnItemRemovedWithItsChildren) {
    Tree tree("A B(X(Y)) C");
    QSignalSpy removed(tree.controller.get(), &TreeController::rowsRemoved);
    const auto item = tree.root.removeObjectFromChildrenAtIndex(1);
    EXPECT_EQ(tree.text(), "A C");
    EXPECT_EQ(tree.node("C").indexPath(), IndexPath{1});
    EXPECT_EQ(removed.count(), 1);
    EXPECT_EQ(tree.controller->nodeCount(), 2u);
    EXPECT_EQ(tree.controller->nodeForItem(*item), nullptr);
    EXPECT_EQ(tree.controller->nodeForItem(*item->children()[0]), nullptr);
}

TEST(TreeController, ListensNoMoreToWhatWasRemoved) {
    Tree tree("A(B)");
    const auto item = tree.root.removeObjectFromChildrenAtIndex(0);
    QSignalSpy changed(tree.controller.get(), &TreeController::dataChanged);
    item->setPageTitle("X");
    item->children()[0]->setPageTitle("Y");
    item->insertObjectInChildrenAtIndex(newItem("Z"), 0);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(tree.text(), "");
}

TEST(TreeController, AnItemThatComesBackIsArrangedAgain) {
    Tree tree("A(B) C");
    tree.root.insertObjectInChildrenAtIndex(tree.root.removeObjectFromChildrenAtIndex(0), 1);
    EXPECT_EQ(tree.text(), "C A(B)");
    tree.item("B").setPageTitle("X");
    EXPECT_EQ(tree.text(), "C A(X)");
}

TEST(TreeController, AKeptNodeExpiresWhenItsItemLeaves) {
    Tree tree("A(B) C");
    const std::weak_ptr<TreeNode> b = tree.node("B").weak_from_this();
    const std::weak_ptr<TreeNode> c = tree.node("C").weak_from_this();
    const auto item = tree.root.removeObjectFromChildrenAtIndex(0);
    EXPECT_TRUE(b.expired());
    EXPECT_FALSE(c.expired());
}

TEST(TreeController, ANodeThatIsOwnedBeyondItsTimeStandsAlone) {
    Tree tree("A(B)");
    const std::shared_ptr<TreeNode> a = tree.node("A").shared_from_this();
    const auto item = tree.root.removeObjectFromChildrenAtIndex(0);
    EXPECT_EQ(a->representedObject(), nullptr);
    EXPECT_EQ(a->parentNode(), nullptr);
    EXPECT_TRUE(a->childNodes().empty());
    EXPECT_FALSE(tree.controller->moveNode(*a, {0}));
}

TEST(TreeController, AReplacedListKeepsTheNodesAtBothEnds) {
    Tree tree("A B C D");
    const QPersistentModelIndex a = tree.index("A");
    const QPersistentModelIndex d = tree.index("D");
    MyOutlineItem::Children children = tree.root.takeChildren();
    EXPECT_EQ(tree.text(), "");
    EXPECT_FALSE(a.isValid());
    tree.root.setChildren(std::move(children));
    EXPECT_EQ(tree.text(), "A B C D");
    EXPECT_FALSE(d.isValid());
}

/// Tells of rows that are about to leave while their items can still be asked.
TEST(TreeController, RowsThatLeaveCanBeReadUntilTheyAreGone) {
    Tree tree("A(B) C");
    QStringList left;
    QObject::connect(tree.controller.get(), &TreeController::rowsAboutToBeRemoved, tree.controller.get(),
                     [&](const QModelIndex &parent, int first, int last) {
                         for (int row = first; row <= last; ++row)
                             left.append(tree.controller->index(row, 0, parent).data().toString());
                     });
    MyOutlineItem::Children others;
    others.push_back(newItem("X"));
    tree.root.setChildren(std::move(others));
    EXPECT_EQ(left, (QStringList{"A", "C"}));
    EXPECT_EQ(tree.text(), "X");
}

TEST(TreeController, AnItemsTitleAndLabelAreFollowed) {
    Tree tree("A(B)");
    QSignalSpy changed(tree.controller.get(), &TreeController::dataChanged);
    tree.item("B").setPageLabel("iv");
    tree.item("B").setPageTitle("X");
    ASSERT_EQ(changed.count(), 2);
    EXPECT_EQ(changed[0][0].toModelIndex(), tree.index("X", TreeController::PageColumn));
    EXPECT_EQ(changed[1][0].toModelIndex(), tree.index("X", TreeController::TitleColumn));
    EXPECT_EQ(tree.index("X").data(), "X");
    EXPECT_EQ(tree.index("X", TreeController::PageColumn).data(), "iv");
}

TEST(TreeController, OtherPropertiesAreNotShown) {
    Tree tree("A");
    QSignalSpy changed(tree.controller.get(), &TreeController::dataChanged);
    tree.item("A").setLevelstr("0");
    tree.item("A").setPointOnPage({1, 2});
    tree.root.setPageTitle("Root");
    EXPECT_EQ(changed.count(), 0);
}

TEST(TreeController, InsertsAnObjectAndSelectsIt) {
    Tree tree("A(B)");
    tree.controller->setSelectedNodes({&tree.node("A")});
    const TreeNode &node = tree.controller->insertObjectAtArrangedObjectIndexPath(newItem("X"), {0, 1});
    EXPECT_EQ(tree.text(), "A(B X)");
    EXPECT_EQ(&node, &tree.node("X"));
    EXPECT_EQ(tree.selection(), "X");
    EXPECT_EQ(tree.controller->selectionModel()->currentIndex(), tree.index("X"));
}

TEST(TreeController, InsertsIntoAnEmptyTree) {
    Tree tree("");
    tree.controller->insertObjectAtArrangedObjectIndexPath(newItem("X"), {0});
    EXPECT_EQ(tree.text(), "X");
}

TEST(TreeController, DoesNotInsertWhereNothingIs) {
    Tree tree("A(B)");
    EXPECT_THROW(tree.controller->insertObjectAtArrangedObjectIndexPath(newItem("X"), {1, 0}),
                 std::out_of_range);
    EXPECT_THROW(tree.controller->insertObjectAtArrangedObjectIndexPath(newItem("X"), {2}),
                 std::out_of_range);
    EXPECT_THROW(tree.controller->insertObjectAtArrangedObjectIndexPath(newItem("X"), {}), std::out_of_range);
    EXPECT_EQ(tree.text(), "A(B)");
}

TEST(TreeController, RemovesAnObject) {
    Tree tree("A(B C)");
    tree.controller->removeObjectAtArrangedObjectIndexPath({0, 0});
    EXPECT_EQ(tree.text(), "A(C)");
    EXPECT_THROW(tree.controller->removeObjectAtArrangedObjectIndexPath({0, 1}), std::out_of_range);
    EXPECT_THROW(tree.controller->removeObjectAtArrangedObjectIndexPath({}), std::out_of_range);
}

TEST(TreeController, TheStructureRevisionTellsOfEveryChange) {
    Tree tree("A(B) C");
    std::vector<quint64> seen{tree.controller->structureRevision()};
    const auto note = [&] { seen.push_back(tree.controller->structureRevision()); };
    tree.controller->moveNode(tree.node("C"), {0});
    note();
    tree.controller->insertObjectAtArrangedObjectIndexPath(newItem("X"), {0});
    note();
    tree.controller->removeObjectAtArrangedObjectIndexPath({0});
    note();
    EXPECT_TRUE(std::adjacent_find(seen.begin(), seen.end(), std::greater_equal<>()) == seen.end());
    tree.item("A").setPageTitle("Y");
    EXPECT_EQ(tree.controller->structureRevision(), seen.back());
}

TEST(TreeController, ItemsOutliveTheControllerUnwatched) {
    MyOutlineItem root;
    test::addItems(root, "A(B)");
    OutlineEdits edits(root);
    { const TreeController controller(edits); }
    root.children()[0]->children()[0]->setPageTitle("X");
    root.insertObjectInChildrenAtIndex(newItem("C"), 0);
    EXPECT_EQ(test::written(root), "C A(X)");
}

TEST(TreeController, ArrangesAChainOfManyLevels) {
    constexpr size_t levels = 100'000;
    MyOutlineItem root;
    MyOutlineItem *deepest = &root;
    for (size_t i = 0; i < levels; ++i)
        deepest = &deepest->appendChild(std::make_unique<MyOutlineItem>());
    OutlineEdits edits(root);
    TreeController controller(edits);
    TreeNode *node = controller.nodeForItem(*deepest);
    EXPECT_EQ(node->depth(), levels);
    EXPECT_EQ(controller.descendantNodeAtIndexPath(node->indexPath()), node);
    controller.setSelectedNodes({node});
    EXPECT_TRUE(controller.moveNode(*node, {0}));
    EXPECT_EQ(node->indexPath(), IndexPath{0});
    controller.removeObjectAtArrangedObjectIndexPath({1});
    EXPECT_EQ(controller.nodeCount(), 1u);
}

}  // namespace
}  // namespace leafwright
