#include "tree/TreeFixture.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::Tree;

TEST(TreeControllerCells, TwoColumnsAreNamed) {
    const Tree tree("A");
    EXPECT_EQ(tree.controller->columnCount(), 2);
    EXPECT_EQ(tree.controller->headerData(0, Qt::Horizontal), "Title");
    EXPECT_EQ(tree.controller->headerData(1, Qt::Horizontal), "Page");
    EXPECT_FALSE(tree.controller->headerData(0, Qt::Vertical).isValid());
}

TEST(TreeControllerCells, BothAreEditedInPlace) {
    const Tree tree("A(B)");
    QSignalSpy edited(tree.controller.get(), &TreeController::itemEdited);
    EXPECT_TRUE(tree.controller->setData(tree.index("B", 1), "iv"));
    EXPECT_TRUE(tree.controller->setData(tree.index("B"), "X"));
    EXPECT_EQ(tree.item("X").pageLabel(), "iv");
    ASSERT_EQ(edited.count(), 2);
    EXPECT_EQ(edited[0][0].value<TreeNode *>(), &tree.node("X"));
    EXPECT_EQ(edited[0][1], 1);
    EXPECT_EQ(edited[1][1], 0);
}

TEST(TreeControllerCells, TheSameTextIsNoEdit) {
    const Tree tree("A");
    QSignalSpy edited(tree.controller.get(), &TreeController::itemEdited);
    EXPECT_TRUE(tree.controller->setData(tree.index("A"), "A"));
    EXPECT_EQ(edited.count(), 0);
}

TEST(TreeControllerCells, AnAbsentLabelLeftEmptyStaysAbsent) {
    const Tree tree("A");
    tree.item("A").setPageLabel(QString());
    EXPECT_TRUE(tree.controller->setData(tree.index("A", 1), ""));
    EXPECT_TRUE(tree.item("A").pageLabel().isNull());
}

TEST(TreeControllerCells, AClearedTitleIsEmptyButPresent) {
    const Tree tree("A");
    EXPECT_TRUE(tree.controller->setData(tree.index("A"), QString()));
    const MyOutlineItem &item = *tree.root.children()[0];
    EXPECT_FALSE(item.pageTitle().isNull());
    EXPECT_TRUE(item.pageTitle().isEmpty());
}

TEST(TreeControllerCells, WhatElseAnEntryTellsIsAnnounced) {
    const Tree tree("A");
    QSignalSpy changed(tree.controller.get(), &TreeController::dataChanged);
    OutlineEntry entry = tree.item("A").entry();
    entry.action = OutlineEntry::Action{"URI", "https://a.example"};
    tree.item("A").setEntry(entry);
    ASSERT_EQ(changed.count(), 1);
    const auto roles = changed[0][2].value<QList<int>>();
    for (const int role :
         {int{TreeController::ElsewhereRole}, int{Qt::ToolTipRole}, int{Qt::AccessibleDescriptionRole}})
        EXPECT_TRUE(roles.contains(role)) << role;
}

TEST(TreeControllerCells, ALockedCellIsNotEdited) {
    const Tree tree("A B");
    tree.controller->setShouldEdit([&](int column, const TreeNode &node) {
        return column == TreeController::TitleColumn && &node == &tree.node("A");
    });
    QSignalSpy edited(tree.controller.get(), &TreeController::itemEdited);
    EXPECT_FALSE(tree.controller->setData(tree.index("B"), "X"));
    EXPECT_FALSE(tree.controller->setData(tree.index("A", 1), "X"));
    EXPECT_EQ(tree.text(), "A B");
    EXPECT_EQ(edited.count(), 0);
    EXPECT_TRUE(tree.index("A").flags() & Qt::ItemIsEditable);
    EXPECT_FALSE(tree.index("B").flags() & Qt::ItemIsEditable);
    EXPECT_TRUE(tree.controller->setData(tree.index("A"), "X"));
}

/// Notes what it is asked.
struct Handler : TreeDragHandler {
    bool writeNodes(const std::vector<TreeNode *> &nodes, QMimeData &data) override {
        written = test::titles(nodes);
        data.setData("KIND", {});
        return answer;
    }
    bool canDrop(const QMimeData & /*data*/, TreeNode *parent, int childIndex) override {
        place = {parent, childIndex};
        return answer;
    }
    bool drop(const QMimeData & /*data*/, TreeNode *parent, int childIndex) override {
        ++drops;
        place = {parent, childIndex};
        return true;
    }

    bool answer = true;
    QString written;
    std::pair<TreeNode *, int> place;
    int drops = 0;
};

TEST(TreeControllerDrags, NodesAreWrittenInTreeOrderOnceEach) {
    const Tree tree("A(B C) D");
    Handler handler;
    tree.controller->setDragHandler(&handler);
    const std::unique_ptr<QMimeData> data(
        tree.controller->mimeData({tree.index("D"), tree.index("C"), tree.index("C", 1), tree.index("A")}));
    EXPECT_EQ(handler.written, "A C D");
    EXPECT_TRUE(data->hasFormat("KIND"));
}

TEST(TreeControllerDrags, ARefusedDragHasNoData) {
    const Tree tree("A");
    EXPECT_EQ(tree.controller->mimeData({tree.index("A")}), nullptr);
    Handler handler;
    handler.answer = false;
    tree.controller->setDragHandler(&handler);
    EXPECT_EQ(tree.controller->mimeData({tree.index("A")}), nullptr);
}

TEST(TreeControllerDrags, DropsAreAskedForByParentAndPosition) {
    const Tree tree("A(B C) D");
    Handler handler;
    tree.controller->setDragHandler(&handler);
    tree.controller->setMimeTypes({"OTHER", "KIND"});
    QMimeData data;
    data.setData("KIND", {});
    const auto place = [&](int row, const QModelIndex &parent) {
        EXPECT_TRUE(tree.controller->canDropMimeData(&data, Qt::CopyAction, row, 0, parent));
        return handler.place;
    };
    EXPECT_EQ(place(2, tree.index("A")), std::pair(&tree.node("A"), 2));
    EXPECT_EQ(place(-1, tree.index("D")), std::pair(&tree.node("D"), -1));
    EXPECT_EQ(place(1, {}), std::pair(static_cast<TreeNode *>(nullptr), 1));
    EXPECT_EQ(place(-1, {}), std::pair(static_cast<TreeNode *>(nullptr), -1));
    EXPECT_TRUE(tree.controller->dropMimeData(&data, Qt::CopyAction, 1, 0, tree.index("A")));
    EXPECT_EQ(handler.drops, 1);
}

TEST(TreeControllerDrags, WhatMayNotBeDroppedIsNot) {
    const Tree tree("A");
    QMimeData data;
    data.setData("KIND", {});
    tree.controller->setMimeTypes({"KIND"});
    EXPECT_FALSE(tree.controller->canDropMimeData(&data, Qt::CopyAction, -1, -1, {}));
    Handler handler;
    tree.controller->setDragHandler(&handler);
    EXPECT_TRUE(tree.controller->canDropMimeData(&data, Qt::CopyAction, -1, -1, {}));
    handler.answer = false;
    EXPECT_FALSE(tree.controller->dropMimeData(&data, Qt::CopyAction, -1, -1, {}));
    handler.answer = true;
    tree.controller->setMimeTypes({"OTHER"});
    EXPECT_FALSE(tree.controller->dropMimeData(&data, Qt::CopyAction, -1, -1, {}));
    EXPECT_EQ(handler.drops, 0);
}

TEST(TreeControllerDrags, AViewCannotRemoveRows) {
    const Tree tree("A");
    EXPECT_FALSE(tree.controller->removeRows(0, 1));
    EXPECT_EQ(tree.text(), "A");
}

TEST(TreeControllerCells, IndexesAreWithinTheirParent) {
    const Tree tree("A(B C) D");
    EXPECT_EQ(tree.controller->index(1, 1, tree.index("A")), tree.index("C", 1));
    for (const auto &[row, column] : {std::pair(-1, 0), {2, 0}, {0, -1}, {0, 2}})
        EXPECT_FALSE(tree.controller->index(row, column, tree.index("A")).isValid()) << row << ' ' << column;
}

TEST(TreeControllerCells, SiblingsAreWithinTheirParent) {
    const Tree tree("A(B C) D");
    const auto sibling = [&](int row, int column, const QModelIndex &index) {
        return tree.controller->sibling(row, column, index);
    };
    EXPECT_EQ(sibling(1, 0, tree.index("A")), tree.index("D"));
    EXPECT_EQ(sibling(0, 1, tree.index("C")), tree.index("B", 1));
    for (const auto &[row, column] : {std::pair(-1, 0), {2, 0}, {0, -1}, {0, 2}})
        EXPECT_FALSE(sibling(row, column, tree.index("B")).isValid()) << row << ' ' << column;
    EXPECT_FALSE(sibling(0, 0, QModelIndex()).isValid());
}

TEST(TreeControllerCells, WhatIsDraggedIsMoved) {
    const Tree tree("A B");
    EXPECT_EQ(tree.controller->supportedDragActions(), Qt::MoveAction);
    EXPECT_TRUE(tree.controller->supportedDropActions() & Qt::MoveAction);
}

}  // namespace
}  // namespace leafwright
