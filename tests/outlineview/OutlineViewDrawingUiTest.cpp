#include "outlineview/OutlineCellDelegate.h"
#include "outlineview/OutlineFixture.h"

#include <QHeaderView>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

/// The rows look as those of a plain tree view do, of which they differ in speed only, where the desktop's
/// palette tells selections of views without the keyboard apart.
class OutlineViewDrawing : public testing::Test {
protected:
    OutlineViewDrawing() {
        plain.setIndentation(outline.view.indentation());
        plain.setUniformRowHeights(true);
        plain.setAllColumnsShowFocus(true);
        plain.setSelectionMode(outline.view.selectionMode());
        plain.setSelectionBehavior(outline.view.selectionBehavior());
        plain.setItemDelegate(new OutlineCellDelegate(&plain));
        plain.header()->setStretchLastSection(false);
        plain.setModel(outline.controller.get());
        const QItemSelectionModel *unused = plain.selectionModel();
        plain.setSelectionModel(outline.controller->selectionModel());
        delete unused;
        plain.header()->setSectionResizeMode(TreeController::TitleColumn, QHeaderView::Stretch);
        plain.header()->setSectionResizeMode(TreeController::PageColumn, QHeaderView::ResizeToContents);
        plain.resize(outline.view.size());
        QPalette palette = plain.palette();
        palette.setColor(QPalette::Inactive, QPalette::Highlight, Qt::darkGray);
        for (QTreeView *view : views())
            view->setPalette(palette);
        for (QTreeView *view : views()) {
            for (const char *title : {"A", "B", "E"})
                view->expand(outline.index(title));
        }
    }
    ~OutlineViewDrawing() override { plain.setModel(nullptr); }

    std::vector<QTreeView *> views() { return {&outline.view, &plain}; }
    /// Draws a view while it has the keyboard, or has not.
    static QImage pictureOf(QTreeView &view, bool focused) {
        view.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view));
        view.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&view));
        if (focused) {
            view.setFocus();
        } else {
            view.clearFocus();
        }
        QImage picture = view.viewport()->grab().toImage();
        view.hide();
        return picture;
    }
    void expectTheSame(const char *what) {
        for (const bool focused : {false, true})
            EXPECT_EQ(pictureOf(outline.view, focused), pictureOf(plain, focused)) << what << ' ' << focused;
    }

    test::Outline outline{"A(B(C D) E(F)) G(H) I"};
    QTreeView plain;
};

TEST_F(OutlineViewDrawing, OfRowsAndBranches) {
    expectTheSame("nothing selected");
}

TEST_F(OutlineViewDrawing, OfSelectedRows) {
    outline.controller->setSelectedNodes(
        {&outline.node("B"), &outline.node("D"), &outline.node("G"), &outline.node("I")});
    outline.controller->selectionModel()->setCurrentIndex(outline.index("B"), QItemSelectionModel::NoUpdate);
    expectTheSame("four selected");
}

TEST_F(OutlineViewDrawing, FromRightToLeft) {
    outline.controller->setSelectedNodes({&outline.node("D"), &outline.node("G")});
    for (QTreeView *view : views())
        view->setLayoutDirection(Qt::RightToLeft);
    expectTheSame("from right to left");
}

TEST_F(OutlineViewDrawing, OfADisabledView) {
    outline.controller->setSelectedNodes({&outline.node("B")});
    for (QTreeView *view : views())
        view->setEnabled(false);
    expectTheSame("disabled");
}

TEST_F(OutlineViewDrawing, OfARowThatIsTooNarrow) {
    for (QTreeView *view : views())
        view->resize(90, 300);
    expectTheSame("narrow");
}

}  // namespace
}  // namespace leafwright
