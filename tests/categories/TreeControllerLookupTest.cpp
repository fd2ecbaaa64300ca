#include "categories/TreeControllerLookup.h"
#include "categories/Uncalled.h"
#include "tree/TreeFixture.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class TreeControllerLookup : public testing::Test {
protected:
    TreeNode *step(const QString &node, const QString &item) {
        return isTreeNode(*tree.controller, tree.node(node), tree.item(item));
    }

    test::Tree tree{"A(B(C(D)) E) F"};
};

TEST_F(TreeControllerLookup, ANodeMatchesItsOwnItem) {
    EXPECT_EQ(step("A", "A"), &tree.node("A"));
    EXPECT_EQ(step("D", "D"), &tree.node("D"));
}

TEST_F(TreeControllerLookup, AChildlessNodeDoesNotMatchAnotherItem) {
    EXPECT_EQ(step("F", "A"), nullptr);
}

TEST_F(TreeControllerLookup, ADeepMatchIsAnsweredWithTheChildOnTheWay) {
    EXPECT_EQ(step("A", "D"), &tree.node("B"));
    EXPECT_EQ(step("B", "D"), &tree.node("C"));
    EXPECT_EQ(step("A", "E"), &tree.node("E"));
}

TEST_F(TreeControllerLookup, NoMatchBelowIsNone) {
    EXPECT_EQ(step("A", "F"), nullptr);
    EXPECT_EQ(step("C", "B"), nullptr);
    EXPECT_EQ(isTreeNode(*tree.controller, tree.node("A"), *test::newItem("B")), nullptr);
}

TEST_F(TreeControllerLookup, AnItemIsFoundByItsTopLevelNode) {
    EXPECT_EQ(treeNodeForRealObject(*tree.controller, tree.item("D")), &tree.node("A"));
    EXPECT_EQ(treeNodeForRealObject(*tree.controller, tree.item("F")), &tree.node("F"));
    EXPECT_EQ(treeNodeForRealObject(*tree.controller, *test::newItem("D")), nullptr);
    EXPECT_EQ(treeNodeForRealObject(*tree.controller, tree.root), nullptr);
}

TEST_F(TreeControllerLookup, TheTopLevelIsCounted) {
    EXPECT_EQ(countOfTopLevel(*tree.controller), 2u);
    EXPECT_EQ(countOfTopLevel(*test::Tree("").controller), 0u);
}

}  // namespace
}  // namespace leafwright
