#include "tree/TreeFixture.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

/// As many siblings as a document may have. An operation that were quadratic would never come back.
class ManySiblings : public testing::Test {
protected:
    static constexpr size_t count = 100'000;

    static MyOutlineItem::Children manyItems() {
        MyOutlineItem::Children items;
        for (size_t i = 0; i < count; ++i)
            items.push_back(test::newItem(QString::number(i)));
        return items;
    }

    ManySiblings() { root.setChildren(manyItems()); }
    TreeNode &at(size_t row) const { return *controller.arrangedObjects().childNodes()[row]; }

    MyOutlineItem root;
    OutlineEdits edits{root};
    TreeController controller{edits};
};

TEST_F(ManySiblings, AreLoadedAtOnceAndReplacedAtOnce) {
    EXPECT_EQ(controller.nodeCount(), count);
    EXPECT_EQ(at(count - 1).indexPath(), IndexPath{count - 1});
    root.setChildren(manyItems());
    EXPECT_EQ(controller.nodeCount(), count);
    root.setChildren({});
    EXPECT_EQ(controller.nodeCount(), 0u);
}

TEST_F(ManySiblings, ComeGoAndMoveByOne) {
    for (int i = 0; i < 100; ++i) {
        controller.insertObjectAtArrangedObjectIndexPath(test::newItem("new"), {0});
        EXPECT_EQ(at(count).row(), count);
        EXPECT_TRUE(controller.moveNode(at(0), {count + 1}));
        EXPECT_EQ(at(count).representedObject()->pageTitle(), "new");
        EXPECT_TRUE(controller.moveNode(at(count), {0, 0}));
        EXPECT_EQ(at(0).childNodes()[0]->indexPath(), (IndexPath{0, 0}));
        controller.removeObjectAtArrangedObjectIndexPath({0, 0});
        EXPECT_EQ(at(count - 1).row(), count - 1);
    }
}

TEST_F(ManySiblings, ComeAndGoOneByOne) {
    MyOutlineItem::Children items = root.takeChildren();
    for (size_t i = 0; i < count; ++i)
        root.insertObjectInChildrenAtIndex(std::move(items[i]), i);
    EXPECT_EQ(controller.nodeCount(), count);
    EXPECT_EQ(at(count - 1).representedObject()->pageTitle(), QString::number(count - 1));
    for (size_t i = count; i > 0; --i)
        root.removeObjectFromChildrenAtIndex(i - 1);
    EXPECT_EQ(controller.nodeCount(), 0u);
}

TEST_F(ManySiblings, MoveTogetherAndBack) {
    TreeNode &target = controller.insertObjectAtArrangedObjectIndexPath(test::newItem("target"), {0});
    const std::vector<TreeNode *> moving(controller.arrangedObjects().childNodes().begin() + 1,
                                         controller.arrangedObjects().childNodes().end());
    controller.setSelectedNodes(moving);
    EXPECT_TRUE(controller.moveNodes(moving, {0, 0}));
    EXPECT_EQ(target.childCount(), count);
    EXPECT_TRUE(controller.moveNodes(moving, {1}));
    EXPECT_EQ(controller.selectedNodes(), moving);
}

TEST_F(ManySiblings, EveryOtherIsSelectedAndMoved) {
    std::vector<TreeNode *> odd;
    for (size_t row = 1; row < count; row += 2)
        odd.push_back(&at(row));
    controller.setSelectedNodes(odd);
    EXPECT_EQ(controller.selectedNodes(), odd);
    EXPECT_TRUE(controller.moveNodes(odd, {0, 0}));
    EXPECT_EQ(at(0).childNodes(), odd);
    EXPECT_EQ(controller.selectedNodes(), odd);
}

TEST_F(ManySiblings, AreRenamedOneByOne) {
    for (const auto &item : root.children())
        item->setPageTitle("new");
    EXPECT_EQ(controller.indexForNode(at(count - 1)).data(), "new");
}

/// A transaction that changes every second entry in a way, and back.
TEST_F(ManySiblings, AreChangedTakenBackAndChangedAgain) {
    const auto everySecond = [this] {
        std::vector<TreeNode *> nodes;
        for (size_t i = 0; i < controller.arrangedObjects().childCount(); i += 2)
            nodes.push_back(&at(i));
        return nodes;
    };
    {
        const OutlineEdits::Transaction edit(edits, "rename:");
        for (const TreeNode *node : everySecond())
            edits.setPageTitle(*node->representedObject(), "renamed");
    }
    EXPECT_TRUE(controller.moveNodes(everySecond(), {0}));
    {
        const OutlineEdits::Transaction edit(edits, "indent:");
        const TreeController::ManyMoves together(controller);
        for (size_t row = 1; row < 100; ++row)
            controller.moveNode(at(row), at(row - 1).indexPath().indexPathByAddingIndex(0));
    }
    {
        const OutlineEdits::Transaction edit(edits, "remove:");
        controller.removeObjects(controller.arrangedObjects().childNodes());
    }
    const quint64 last = edits.revision();
    while (edits.canUndo())
        edits.undo();
    EXPECT_EQ(controller.nodeCount(), count);
    for (size_t row = 0; row < count; ++row)
        ASSERT_EQ(at(row).representedObject()->pageTitle(), QString::number(row));
    while (edits.canRedo())
        edits.redo();
    EXPECT_EQ(edits.revision(), last);
    EXPECT_EQ(controller.nodeCount(), 0u);
}

}  // namespace
}  // namespace leafwright
