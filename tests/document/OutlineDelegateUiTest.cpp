#include "document/OutlineDelegate.h"
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
    ASSERT_EQ(OutlineDelegate::draggedTypes().size(), 3);
    EXPECT_EQ(OutlineDelegate::draggedTypes()[1], NSPOINT_PBOARD_TYPE);
    EXPECT_EQ(OutlineDelegate::draggedTypes()[2], "text/plain");
}

TEST_F(Dropping, ItemsOfAnotherOutlineAreRefused) {
    setOutline("a b");
    const QObject other;
    EXPECT_EQ(dragItems({{0}}, nullptr, 2, &other), DragOperation::None);
    EXPECT_EQ(outline(), "a b");
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
