#include "outlineview/OutlineFixture.h"

#include <QLineEdit>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::Outline;

TEST(OutlineViewFilter, ShowsItemsUnfoldedToThem) {
    Outline outline("A(B(C) D) E");
    outline.view.showOnly(outline.nodes({"C"}));
    EXPECT_EQ(outline.rows(), "A B C");
    outline.view.showOnly(outline.nodes({"D"}));
    EXPECT_EQ(outline.rows(), "A D");
}

TEST(OutlineViewFilter, ThenAllIsFoldedAsItWasBefore) {
    Outline outline("A(B(C) D) E(F)");
    outline.view.expandItem(outline.node("E"));
    outline.view.showOnly(outline.nodes({"C"}));
    outline.view.showOnly(outline.nodes({"C", "D"}));
    outline.view.showAll();
    EXPECT_EQ(outline.rows(), "A E F");
    outline.view.showAll();
    EXPECT_EQ(outline.rows(), "A E F");
}

TEST(OutlineViewFilter, WhatIsSelectedStaysInSightAfterwards) {
    Outline outline("A(B(C)) D");
    outline.view.showOnly(outline.nodes({"C"}));
    outline.controller->setSelectedNodes(outline.nodes({"C"}));
    outline.view.showAll();
    EXPECT_EQ(outline.rows(), "A B C D");
    EXPECT_EQ(outline.selection(), "C");
}

TEST(OutlineViewFilter, WhatIsSelectedIsScrolledToAfterwards) {
    QString titles;
    for (int i = 0; i < 300; ++i)
        titles += QStringLiteral("P%1(T%1 U%1) ").arg(i);
    Outline outline(titles);
    for (const TreeNode *parent : outline.controller->arrangedObjects().childNodes())
        outline.view.expandItem(*parent);
    outline.show();
    outline.view.showOnly(outline.nodes({"T250"}));
    outline.controller->setSelectedNodes(outline.nodes({"T250"}));
    outline.view.showAll();
    const auto isInSight = [&] {
        const QRect row = outline.view.visualRect(outline.index("T250"));
        return !row.isEmpty() && outline.view.viewport()->rect().contains(row);
    };
    EXPECT_TRUE(QTest::qWaitFor(isInSight, 60'000));
}

TEST(OutlineViewFilter, RowsFollowTheTree) {
    Outline outline("A B C(D)");
    outline.view.showOnly(outline.nodes({"A", "D"}));
    outline.root.insertObjectInChildrenAtIndex(test::newItem("X"), 1);
    EXPECT_EQ(outline.rows(), "A X C D");
    outline.root.removeObjectFromChildrenAtIndex(0);
    EXPECT_EQ(outline.rows(), "X C D");
    outline.controller->moveNode(outline.node("D"), {0});
    EXPECT_EQ(outline.rows(), "D X C");
    EXPECT_EQ(outline.view.rowForItem(outline.node("B")), -1);
}

TEST(OutlineViewFilter, FoldingWithinItIsForThatTimeOnly) {
    Outline outline("A(B) C");
    outline.view.showOnly(outline.nodes({"B"}));
    outline.view.collapseItem(outline.node("A"));
    EXPECT_EQ(outline.rows(), "A");
    outline.view.showAll();
    outline.view.expandItem(outline.node("A"));
    EXPECT_EQ(outline.rows(), "A B C");
}

TEST(OutlineViewFilter, AnItemIsRevealedAllTheSame) {
    Outline outline("A(B) C");
    outline.view.showOnly(outline.nodes({"C"}));
    outline.view.revealItems(outline.nodes({"B"}));
    EXPECT_EQ(outline.rows(), "A B C");
}

TEST(OutlineViewFilter, TheLookIsThatWithoutIt) {
    Outline outline("");
    outline.edits.insert(outline.root, 0, test::newItem("A"));
    outline.edits.insert(outline.item("A"), 0, test::newItem("B"));
    outline.edits.insert(outline.root, 1, test::newItem("C"));
    outline.edits.insert(outline.item("C"), 0, test::newItem("D"));
    outline.view.expandItem(outline.node("A"));
    const OutlineLook before = outline.view.look();
    outline.view.showOnly(outline.nodes({"D"}));
    EXPECT_EQ(outline.view.look().unfolded, before.unfolded);

    OutlineLook other = before;
    other.unfolded = {outline.item("C").identity()};
    outline.view.setLook(other);
    EXPECT_EQ(outline.rows(), "C D");
    outline.view.showAll();
    EXPECT_EQ(outline.rows(), "A C D");
}

TEST(OutlineViewFilter, WhatIsBeingTypedCounts) {
    Outline outline("A B");
    outline.show();
    outline.view.editColumn(0, 0);
    auto *field = outline.view.findChild<QLineEdit *>();
    ASSERT_NE(field, nullptr);
    field->setText("X");
    outline.view.showOnly(outline.nodes({"B"}));
    EXPECT_EQ(outline.root.children()[0]->pageTitle(), "X");
}

TEST(OutlineViewFilter, AnOutlineWithoutSuchAnEntrySaysSo) {
    Outline outline("A");
    outline.view.setPlaceholderText("Nothing here");
    outline.show();
    outline.view.showOnly({});
    const QImage filtered = outline.view.viewport()->grab().toImage();
    outline.root.removeObjectFromChildrenAtIndex(0);
    outline.view.showAll();
    EXPECT_NE(outline.view.viewport()->grab().toImage(), filtered);
}

TEST(OutlineViewMark, StandsAtTheItemOrAtTheFoldedOneThatHidesIt) {
    Outline outline("A(B) C");
    outline.show();
    const auto isMarked = [&](const QString &title) {
        const QRect row = outline.view.visualRect(outline.index(title));
        const QImage image = outline.view.viewport()->grab().toImage();
        return image.pixelColor(1, row.center().y()) == outline.view.palette().color(QPalette::Highlight);
    };
    EXPECT_FALSE(isMarked("A"));
    outline.view.setMarkedItem(&outline.node("B"));
    EXPECT_TRUE(isMarked("A"));
    EXPECT_FALSE(isMarked("C"));
    outline.view.expandItem(outline.node("A"));
    EXPECT_TRUE(isMarked("B"));
    EXPECT_FALSE(isMarked("A"));
    outline.view.setMarkedItem(nullptr);
    EXPECT_FALSE(isMarked("B"));
}

TEST(OutlineViewMark, CanBeSeenOnASelectedRow) {
    Outline outline("A B");
    outline.show();
    outline.controller->setSelectedNodes(outline.nodes({"A"}));
    const auto edge = [&] {
        const QRect row = outline.view.visualRect(outline.index("A"));
        return outline.view.viewport()->grab().toImage().pixelColor(1, row.center().y());
    };
    const QColor before = edge();
    outline.view.setMarkedItem(&outline.node("A"));
    EXPECT_NE(edge(), before);
}

TEST(OutlineViewMark, GoesWithItsItem) {
    Outline outline("A B");
    outline.view.setMarkedItem(&outline.node("A"));
    EXPECT_EQ(outline.view.markedItem(), &outline.node("A"));
    outline.root.removeObjectFromChildrenAtIndex(0);
    EXPECT_EQ(outline.view.markedItem(), nullptr);
}

}  // namespace
}  // namespace leafwright
