#include "document/window/OutlineDelegate.h"
#include "support/TreeWindowFixture.h"
#include "view/SpotArchive.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class Dropping : public test::TreeWindowFixture {
protected:
    OutlineDelegate &delegate() { return document.outlineDelegate(); }

    DraggingInfo info(const QMimeData &data, const QObject *source, const char *className) {
        return {&data, source, className};
    }
    /// Drags items of the outline to a place, from an outline view. @return what validating answered
    DragOperation dragItems(const std::vector<IndexPath> &paths, TreeNode *parent, int index,
                            const QObject *source = nullptr) {
        std::vector<TreeNode *> nodes;
        for (const IndexPath &path : paths)
            nodes.push_back(node(path));
        QMimeData data;
        EXPECT_TRUE(delegate().outlineViewWriteItems(*document.outlineview(), nodes, data));
        return drop(info(data, source ? source : document.outlineview(), "OKNSOutlineView"), parent, index);
    }
    DragOperation dragPoint(TreeNode *parent, int index) {
        QMimeData data;
        data.setData(NSPOINT_PBOARD_TYPE, archivedSpot({{72.5, 700}, "3"}));
        return drop(info(data, document.pdfview(), "LabelPDFView"), parent, index);
    }
    DragOperation dragText(TreeNode *parent, int index, const char *className = "PDFViewTextDrag") {
        QMimeData data;
        data.setText("whatever");
        return drop(info(data, document.pdfview(), className), parent, index);
    }
    DragOperation drop(const DraggingInfo &dragging, TreeNode *parent, int index) {
        OutlineView &view = *document.outlineview();
        const DragOperation operation = delegate().outlineViewValidateDrop(view, dragging, parent, index);
        if (operation != DragOperation::None)
            accepted = delegate().outlineViewAcceptDrop(view, dragging, parent, index);
        return operation;
    }

    bool accepted = false;
};

TEST_F(Dropping, TheOutlineTakesThreeKinds) {
    const QStringList types{"SIMPLE_PBOARD_TYPE", "NSPOINT_PBOARD_TYPE", "text/plain"};
    EXPECT_EQ(OutlineDelegate::draggedTypes(), types);
    EXPECT_EQ(document.treecontroller().mimeTypes(), types) << "from the start";
}

TEST_F(Dropping, ItemsAreMarkedOnThePasteboardAndKeptByTheDocument) {
    setOutline("a b");
    document.setLockTOCediting(true);
    QMimeData data;
    EXPECT_TRUE(delegate().outlineViewWriteItems(*document.outlineview(), {node({1})}, data));
    EXPECT_EQ(data.formats(), QStringList{"SIMPLE_PBOARD_TYPE"});
    EXPECT_EQ(data.data("SIMPLE_PBOARD_TYPE"), "");
    EXPECT_EQ(delegate().draggedNodes(), std::vector<TreeNode *>{node({1})});
}

TEST_F(Dropping, ADragOfAnythingElseIsRefused) {
    setOutline("a");
    QMimeData data;
    data.setData("image/png", "whatever");
    EXPECT_EQ(drop(info(data, document.pdfview(), "PDFViewTextDrag"), nullptr, -1), DragOperation::None);
}

TEST_F(Dropping, ASpotCountsBeforeWhateverElseIsDragged) {
    setOutline("a");
    QMimeData data;
    data.setText("whatever");
    data.setData(NSPOINT_PBOARD_TYPE, archivedSpot({{1, 2}, "3"}));
    EXPECT_EQ(drop(info(data, document.pdfview(), "PDFViewTextDrag"), nullptr, 0), DragOperation::Generic);
    EXPECT_EQ(outline(), "New Dragged Target a");
}

TEST_F(Dropping, WithNothingToInsertNothingIsDropped) {
    setOutline("a");
    QMimeData spot;
    spot.setData(NSPOINT_PBOARD_TYPE, archivedSpot({{1, 2}, "3"}));
    QMimeData text;
    text.setText("whatever");
    OutlineView &view = *document.outlineview();
    for (const QMimeData *data : {&spot, &text}) {
        for (TreeNode *parent : {static_cast<TreeNode *>(nullptr), node({0})})
            EXPECT_FALSE(delegate().outlineViewAcceptDrop(view, info(*data, nullptr, ""), parent, -1));
    }
    EXPECT_EQ(outline(), "a");
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(Dropping, WhatWouldBeAddedIsMadeAnewWheneverTheDragMoves) {
    setOutline("a");
    OutlineView &view = *document.outlineview();
    for (const char *label : {"2", "3"}) {
        QMimeData data;
        data.setData(NSPOINT_PBOARD_TYPE, archivedSpot({{1, 2}, label}));
        delegate().outlineViewValidateDrop(view, info(data, nullptr, ""), nullptr, 0);
        ASSERT_NE(delegate().draggedNewTOCItem(), nullptr);
        EXPECT_EQ(delegate().draggedNewTOCItem()->pageLabel(), label);
    }
}

TEST_F(Dropping, ItemsOfARefusedDragAreMovedByTheNextDropOfText) {
    setOutline("a (x) b");
    EXPECT_EQ(dragItems({{0}}, node({0, 0}), -1), DragOperation::None);
    EXPECT_EQ(delegate().draggedNodes().size(), 1U);
    document.pdfview()->setCurrentSelection(document.pdfDoc()->page(0)->selectionForRange({0, 4}));
    EXPECT_EQ(dragText(nullptr, -1), DragOperation::Generic);
    EXPECT_EQ(outline(), "b a (x)");
}

TEST_F(Dropping, AnItemIsNotDroppedOnItselfOrBelowItself) {
    setOutline("a (x (1)) b");
    EXPECT_EQ(dragItems({{0}}, node({0}), -1), DragOperation::None);
    EXPECT_EQ(dragItems({{0}}, node({0, 0, 0}), -1), DragOperation::None);
    EXPECT_EQ(dragItems({{0}}, nullptr, 2), DragOperation::Generic);
    EXPECT_EQ(outline(), "b a (x (1))");
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Dropping, ItemsDroppedOnAnItemBecomeItsFirstChildrenInOrder) {
    setOutline("a (x) b c");
    EXPECT_EQ(dragItems({{1}, {2}}, node({0}), -1), DragOperation::Generic);
    EXPECT_TRUE(accepted);
    EXPECT_EQ(outline(), "a (b c x)");
}

TEST_F(Dropping, BesideAllItemsIsTheEndOfTheTopLevel) {
    setOutline("a (x) b");
    EXPECT_EQ(dragItems({{0, 0}}, nullptr, -1), DragOperation::Generic);
    EXPECT_EQ(outline(), "a b x");
    EXPECT_TRUE(delegate().draggedNodes().empty()) << "dropped";
}

TEST_F(Dropping, ItemsOfAnotherDocumentAreRefused) {
    setOutline("a b");
    MyDocument other(platform);
    ASSERT_TRUE(other.readFromURL(dir.path("a.pdf")));
    other.makeWindowControllers();
    other.finishLoading();
    EXPECT_EQ(dragItems({{0}}, nullptr, 2, other.outlineview()), DragOperation::None);
    QMimeData data;
    delegate().outlineViewWriteItems(*document.outlineview(), {node({0})}, data);
    EXPECT_EQ(other.outlineDelegate().outlineViewValidateDrop(
                  *other.outlineview(), info(data, document.outlineview(), "OKNSOutlineView"), nullptr, -1),
              DragOperation::None);
    EXPECT_EQ(outline(), "a b");
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(Dropping, ASpotBetweenItemsBecomesANewItemThere) {
    setOutline("a b");
    document.pdfview()->setIconLocationData("something");
    EXPECT_EQ(dragPoint(nullptr, 1), DragOperation::Generic);
    ASSERT_TRUE(accepted);
    const MyOutlineItem &item = *node({1})->representedObject();
    EXPECT_EQ(item.pageTitle(), "New Dragged Target");
    EXPECT_EQ(item.pageLabel(), "3");
    EXPECT_EQ(item.pointOnPage(), QPointF(72.5, 700));
    EXPECT_TRUE(document.pdfview()->iconLocationData().isEmpty());
    EXPECT_EQ(delegate().draggedNewTOCItem(), nullptr);
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Dropping, ASpotOnAnItemChangesOnlyWhereItLeads) {
    setOutline("a (x) b");
    EXPECT_EQ(dragPoint(node({0}), -1), DragOperation::Generic);
    EXPECT_EQ(outline(), "a (x) b");
    EXPECT_EQ(node({0})->representedObject()->pageLabel(), "3");
    EXPECT_EQ(node({0})->representedObject()->pointOnPage(), QPointF(72.5, 700));
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Dropping, ASpotIsDroppedOnce) {
    setOutline("a b");
    EXPECT_EQ(dragPoint(node({0}), -1), DragOperation::Generic);
    QMimeData text;
    text.setText("whatever");
    EXPECT_FALSE(
        delegate().outlineViewAcceptDrop(*document.outlineview(), info(text, nullptr, ""), nullptr, 1));
    EXPECT_EQ(outline(), "a b") << "nothing is left to be inserted";
}

class DroppingText : public test::WindowFixture {};

TEST_F(DroppingText, ThreeLinesBetweenItemsBecomeOneItem) {
    test::PdfBuilder pdf;
    pdf.addPage(test::PdfBuilder::showText("F1", 12, 72, 700, "one") +
                test::PdfBuilder::showText("F1", 12, 72, 680, "two") +
                test::PdfBuilder::showText("F1", 12, 72, 660, "three"));
    open(pdf);
    document.root().insertObjectInChildrenAtIndex(test::makeItem({"before"}), 0);
    document.root().insertObjectInChildrenAtIndex(test::makeItem({"after"}), 1);
    const PDFPage &page = *document.pdfDoc()->page(0);
    const QString lines = "one\ntwo\nthree";
    ASSERT_TRUE(page.text()->attributedString.string.startsWith(lines));
    document.pdfview()->setCurrentSelection(page.selectionForRange({0, static_cast<int>(lines.size())}));
    QMimeData data;
    data.setText(lines);
    const DraggingInfo dragging{&data, document.pdfview(), "PDFViewTextDrag"};
    OutlineDelegate &delegate = document.outlineDelegate();
    OutlineView &view = *document.outlineview();
    EXPECT_EQ(delegate.outlineViewValidateDrop(view, dragging, nullptr, 1), DragOperation::Generic);
    EXPECT_TRUE(delegate.outlineViewAcceptDrop(view, dragging, nullptr, 1));
    ASSERT_EQ(document.root().children().size(), 3U);
    const MyOutlineItem &item = *document.root().children()[1];
    EXPECT_EQ(item.pageTitle(), "one two three");
    EXPECT_EQ(item.pageLabel(), "1");
    EXPECT_GT(item.pointOnPage().y(), 690);
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Dropping, ABlankLineGivesTwoBlanks) {
    EXPECT_EQ(titleOfDraggedText("one\n\nthree"), "one  three");
}

TEST_F(Dropping, TextIsTakenFromAPageViewOnlyAndOnlyWithASelection) {
    setOutline("a");
    EXPECT_EQ(dragText(nullptr, -1), DragOperation::None);
    document.pdfview()->setCurrentSelection(document.pdfDoc()->page(0)->selectionForRange({0, 4}));
    EXPECT_EQ(dragText(nullptr, -1, "QLineEdit"), DragOperation::None);
    EXPECT_EQ(dragText(nullptr, -1), DragOperation::Generic);
    EXPECT_EQ(outline(), "a Page");
}

TEST_F(Dropping, CellsMayBeEditedUnlessEditingIsLocked) {
    setOutline("a");
    EXPECT_TRUE(delegate().shouldEditTableColumn(0, *node({0})));
    document.setLockTOCediting(true);
    EXPECT_FALSE(delegate().shouldEditTableColumn(0, *node({0})));
    EXPECT_TRUE(delegate().shouldShowCellExpansion(0, *node({0})));
}

}  // namespace
}  // namespace leafwright
