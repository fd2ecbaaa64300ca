#include "outlineview/OutlineFixture.h"

#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QHelpEvent>
#include <QToolTip>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class OutlineViewDrag : public testing::Test, protected OutlineViewDelegate {
protected:
    OutlineViewDrag() {
        outline.view.setDelegate(this);
        outline.view.registerForDraggedTypes({"KIND", "text/plain"});
        outline.view.expandItem(outline.node("A"));
        outline.show();
        pasteboard.setData("KIND", {});
    }

    bool outlineViewWriteItems(OutlineView & /*view*/, const std::vector<TreeNode *> &nodes,
                               QMimeData &data) override {
        written = test::titles(nodes);
        data.setData("KIND", {});
        return true;
    }
    DragOperation outlineViewValidateDrop(OutlineView & /*view*/, const DraggingInfo &info,
                                          TreeNode *proposedItem, int proposedChildIndex) override {
        lastInfo = info;
        place = text(proposedItem, proposedChildIndex);
        return operation;
    }
    bool outlineViewAcceptDrop(OutlineView & /*view*/, const DraggingInfo &info, TreeNode *item,
                               int childIndex) override {
        lastInfo = info;
        dropped = text(item, childIndex);
        return true;
    }
    bool shouldShowCellExpansion(int /*column*/, const TreeNode & /*node*/) override { return expansion; }

    static QString text(const TreeNode *parent, int index) {
        return QStringLiteral("%1:%2")
            .arg(parent ? parent->representedObject()->pageTitle() : "-")
            .arg(index);
    }
    QPoint top(const QString &title) const {
        return outline.view.visualRect(outline.index(title)).topLeft() + QPoint(5, 0);
    }
    QPoint bottom(const QString &title) const {
        return outline.view.visualRect(outline.index(title)).bottomLeft() + QPoint(5, 0);
    }
    /// Drags something in from outside and lets it go. @return whether it could be let go there
    bool drag(const QPoint &position, bool release = true) {
        QWidget *viewport = outline.view.viewport();
        QDragEnterEvent enter(position, Qt::CopyAction | Qt::MoveAction, &pasteboard, Qt::LeftButton, {});
        QCoreApplication::sendEvent(viewport, &enter);
        if (!enter.isAccepted()) return false;
        QDragMoveEvent move(position, Qt::CopyAction | Qt::MoveAction, &pasteboard, Qt::LeftButton, {});
        QCoreApplication::sendEvent(viewport, &move);
        if (!move.isAccepted() || !release) return move.isAccepted();
        QDropEvent drop(position, Qt::CopyAction | Qt::MoveAction, &pasteboard, Qt::LeftButton, {});
        QCoreApplication::sendEvent(viewport, &drop);
        return drop.isAccepted();
    }

    DragOperation operation = DragOperation::Generic;
    bool expansion = true;
    QString written;
    QString place;
    QString dropped;
    DraggingInfo lastInfo;
    QMimeData pasteboard;
    test::Outline outline{"A(B C) D"};
};

TEST_F(OutlineViewDrag, OntoAnItem) {
    EXPECT_TRUE(drag(outline.center("D")));
    EXPECT_EQ(dropped, "D:-1");
}

TEST_F(OutlineViewDrag, BetweenItems) {
    EXPECT_TRUE(drag(top("C")));
    EXPECT_EQ(dropped, "A:1");
    EXPECT_TRUE(drag(top("D")));
    EXPECT_EQ(dropped, "-:1");
    EXPECT_TRUE(drag(bottom("C")));
    EXPECT_EQ(dropped, "A:2");
}

TEST_F(OutlineViewDrag, BelowAnUnfoldedItemIsBeforeItsFirstChild) {
    EXPECT_TRUE(drag(bottom("A")));
    EXPECT_EQ(place, "A:0");
    EXPECT_EQ(dropped, "A:0");
    outline.view.collapseItem(outline.node("A"));
    EXPECT_TRUE(drag(bottom("A")));
    EXPECT_EQ(dropped, "-:1");
}

TEST_F(OutlineViewDrag, BesideAllItems) {
    EXPECT_TRUE(drag({50, 250}));
    EXPECT_EQ(dropped, "-:-1");
}

TEST_F(OutlineViewDrag, TheDelegateIsToldWhatIsDragged) {
    drag(outline.center("D"));
    EXPECT_EQ(lastInfo.draggingPasteboard, &pasteboard);
    EXPECT_EQ(lastInfo.draggingSource, nullptr);
    EXPECT_EQ(lastInfo.draggingSourceClassName, "");
}

TEST_F(OutlineViewDrag, ARefusedPlaceTakesNothing) {
    operation = DragOperation::None;
    EXPECT_FALSE(drag(outline.center("D")));
    EXPECT_EQ(place, "D:-1");
    EXPECT_EQ(dropped, "");
}

TEST_F(OutlineViewDrag, OtherKindsDoNotEnter) {
    pasteboard.clear();
    pasteboard.setData("OTHER", {});
    EXPECT_FALSE(drag(outline.center("D")));
    EXPECT_EQ(place, "");
}

TEST_F(OutlineViewDrag, WithoutADelegateNothingIsDropped) {
    outline.view.setDelegate(nullptr);
    EXPECT_FALSE(drag(outline.center("D")));
}

TEST_F(OutlineViewDrag, ADropThatMovesRowsLosesNone) {
    struct Mover : OutlineViewDelegate {
        explicit Mover(test::Outline &shown) : outline(shown) {}
        DragOperation outlineViewValidateDrop(OutlineView &, const DraggingInfo &, TreeNode *, int) override {
            return DragOperation::Generic;
        }
        bool outlineViewAcceptDrop(OutlineView &, const DraggingInfo &, TreeNode *item, int) override {
            return outline.controller->moveNode(outline.node("D"),
                                                item->indexPath().indexPathByAddingIndex(0));
        }
        test::Outline &outline;
    } mover(outline);
    outline.view.setDelegate(&mover);
    outline.controller->setSelectedNodes(outline.nodes({"D"}));
    EXPECT_TRUE(drag(outline.center("A")));
    EXPECT_EQ(outline.text(), "A(D B C)");
    EXPECT_EQ(outline.selection(), "D");
}

TEST_F(OutlineViewDrag, TheDelegateWritesWhatIsDragged) {
    const std::unique_ptr<QMimeData> data(
        outline.controller->mimeData({outline.index("D"), outline.index("B")}));
    EXPECT_EQ(written, "B D");
    EXPECT_TRUE(data->hasFormat("KIND"));
}

/// Rests the mouse on a cell. @return the tool tip that shows
QString tip(test::Outline &outline, const QModelIndex &cell) {
    QToolTip::hideText();
    const QPoint position = outline.view.visualRect(cell).center();
    QHelpEvent event(QEvent::ToolTip, position, outline.view.viewport()->mapToGlobal(position));
    QCoreApplication::sendEvent(outline.view.viewport(), &event);
    return event.isAccepted() ? QToolTip::text() : QString();
}

TEST_F(OutlineViewDrag, ATextWithoutRoomIsShownInFull) {
    EXPECT_EQ(tip(outline, outline.index("D")), "");
    const QString title = "<b>" + QString(200, u'x');
    outline.item("D").setPageTitle(title);
    EXPECT_EQ(tip(outline, outline.index(title)), "<p>&lt;b&gt;" + QString(200, u'x') + "</p>");
    expansion = false;
    EXPECT_EQ(tip(outline, outline.index(title)), "");
}

TEST_F(OutlineViewDrag, OfALabelThatNoPageHasThatIsTold) {
    const QModelIndex label = outline.index("D", TreeController::PageColumn);
    EXPECT_EQ(tip(outline, label), "");
    outline.controller->setLabelCheck([](const MyOutlineItem &item) { return item.pageTitle() == "D"; });
    const QString text = "No page has this label. The entry leads to the first page.";
    EXPECT_EQ(tip(outline, label), "<p>" + text + "</p>");
    EXPECT_EQ(label.data(Qt::AccessibleDescriptionRole).toString(), text);
    EXPECT_EQ(tip(outline, outline.index("D")), "");
    EXPECT_EQ(tip(outline, outline.index("C", TreeController::PageColumn)), "");
}

TEST_F(OutlineViewDrag, RestingOnAFoldedItemUnfoldsItAndFoldsNone) {
    test::Outline folded("X(Y)");
    folded.view.setDelegate(this);
    folded.view.registerForDraggedTypes({"KIND"});
    folded.show();
    drag(outline.center("A"), false);
    // Later on, so that the first has rested longer when this one unfolds.
    QDragEnterEvent enter(folded.center("X"), Qt::MoveAction, &pasteboard, Qt::LeftButton, {});
    QCoreApplication::sendEvent(folded.view.viewport(), &enter);
    QDragMoveEvent move(folded.center("X"), Qt::MoveAction, &pasteboard, Qt::LeftButton, {});
    QCoreApplication::sendEvent(folded.view.viewport(), &move);
    EXPECT_TRUE(QTest::qWaitFor([&] { return folded.view.isItemExpanded(folded.node("X")); }));
    EXPECT_TRUE(outline.view.isItemExpanded(outline.node("A")));
}

TEST_F(OutlineViewDrag, WhereItWouldGoIsMarkedWhileItMayGoThere) {
    QPalette palette;
    palette.setColor(QPalette::Highlight, Qt::magenta);
    outline.view.setPalette(palette);
    const auto marked = [&] {
        const QImage picture = outline.view.viewport()->grab().toImage();
        const QRect row = outline.view.visualRect(outline.index("C"));
        return picture.pixelColor(row.center().x(), row.top()) == QColor(Qt::magenta);
    };
    EXPECT_FALSE(marked());
    drag(top("C"), false);
    EXPECT_TRUE(marked());
    operation = DragOperation::None;
    drag(top("C"), false);
    EXPECT_FALSE(marked());
}

TEST_F(OutlineViewDrag, TheMarkGoesWhereTheDragIsRefused) {
    QWidget *viewport = outline.view.viewport();
    const auto moveTo = [&](const QPoint &position) {
        QDragMoveEvent move(position, Qt::MoveAction, &pasteboard, Qt::LeftButton, {});
        QCoreApplication::sendEvent(viewport, &move);
        return move.isAccepted();
    };
    const QImage unmarked = viewport->grab().toImage();
    for (const QPoint &allowed : {outline.center("D"), top("D")}) {
        QDragEnterEvent enter(allowed, Qt::MoveAction, &pasteboard, Qt::LeftButton, {});
        operation = DragOperation::Generic;
        QCoreApplication::sendEvent(viewport, &enter);
        ASSERT_TRUE(moveTo(allowed));
        EXPECT_NE(viewport->grab().toImage(), unmarked);
        QApplication::processEvents();
        struct : QObject {
            bool eventFilter(QObject * /*watched*/, QEvent *event) override {
                painted = painted || event->type() == QEvent::Paint;
                return false;
            }
            bool painted = false;
        } watch;
        viewport->installEventFilter(&watch);
        operation = DragOperation::None;
        EXPECT_FALSE(moveTo(outline.center("A")));
        EXPECT_TRUE(QTest::qWaitFor([&] { return watch.painted; })) << "the mark is drawn over";
        EXPECT_EQ(viewport->grab().toImage(), unmarked);
    }
}

}  // namespace
}  // namespace leafwright
