#include "outlineview/OutlineFixture.h"

#include <QLineEdit>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class OutlineViewEditing : public testing::Test, protected OutlineViewDelegate {
protected:
    OutlineViewEditing() {
        outline.view.setDelegate(this);
        outline.show();
        outline.view.setFocus();
    }
    bool shouldEditTableColumn(int /*column*/, const TreeNode & /*node*/) override { return !locked; }

    QLineEdit *editor() { return outline.view.viewport()->findChild<QLineEdit *>(); }
    /// Types into the editor and ends with a key.
    void type(const QString &text, Qt::Key end) {
        ASSERT_NE(editor(), nullptr);
        QTest::keyClicks(editor(), text);
        QTest::keyClick(editor(), end);
        // The text is taken, and the editor goes, when the event loop comes round.
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    bool locked = false;
    test::Outline outline{"A(B) C"};
};

TEST_F(OutlineViewEditing, EditColumnOpensTheCellWithItsTextSelected) {
    outline.view.editColumn(1, 1);
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(editor()->selectedText(), "1");
    QSignalSpy edited(outline.controller.get(), &TreeController::itemEdited);
    type("iv", Qt::Key_Return);
    EXPECT_EQ(outline.item("C").pageLabel(), "iv");
    EXPECT_EQ(edited.count(), 1);
}

TEST_F(OutlineViewEditing, EscapeLeavesTheTextAsItWas) {
    outline.view.editColumn(0, 0);
    QSignalSpy edited(outline.controller.get(), &TreeController::itemEdited);
    type("X", Qt::Key_Escape);
    EXPECT_EQ(outline.text(), "A(B) C");
    EXPECT_EQ(edited.count(), 0);
}

TEST_F(OutlineViewEditing, AnInsertedItemIsOpenedByTheSelectedRow) {
    outline.controller->insertObjectAtArrangedObjectIndexPath(test::newItem("New"), {1});
    outline.view.editColumn(0, outline.view.selectedRow());
    type("X", Qt::Key_Return);
    EXPECT_EQ(outline.text(), "A(B) X C");
}

TEST_F(OutlineViewEditing, ARowThatDoesNotShowIsNotEdited) {
    outline.view.editColumn(0, -1);
    outline.view.editColumn(0, 2);
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(OutlineViewEditing, F2EditsTheTitleFromEitherColumn) {
    outline.controller->selectionModel()->setCurrentIndex(outline.index("C", 1),
                                                          QItemSelectionModel::ClearAndSelect);
    QTest::keyClick(&outline.view, Qt::Key_F2);
    type("X", Qt::Key_Return);
    EXPECT_EQ(outline.text(), "A(B) X");
}

TEST_F(OutlineViewEditing, F2UnfoldsWhatHidesTheRow) {
    outline.controller->setSelectedNodes({&outline.node("B")});
    QTest::keyClick(&outline.view, Qt::Key_F2);
    EXPECT_EQ(outline.rows(), "A B C");
    ASSERT_NE(editor(), nullptr);
    EXPECT_TRUE(outline.view.viewport()->rect().contains(editor()->geometry()));
    type("X", Qt::Key_Return);
    EXPECT_EQ(outline.text(), "A(X) C");
}

TEST_F(OutlineViewEditing, F2ScrollsToTheRow) {
    for (size_t i = 0; i < 100; ++i)
        outline.root.insertObjectInChildrenAtIndex(test::newItem(QString::number(i)), i);
    outline.view.selectRowIndexes({90});
    outline.view.scrollToTop();
    QTest::keyClick(&outline.view, Qt::Key_F2);
    ASSERT_NE(editor(), nullptr);
    EXPECT_TRUE(outline.view.viewport()->rect().contains(editor()->geometry()));
    type("X", Qt::Key_Return);
    EXPECT_EQ(outline.root.children()[90]->pageTitle(), "X");
}

TEST_F(OutlineViewEditing, F2EditsNothingThatIsTooDeepToBeShown) {
    outline.tester.reset();
    MyOutlineItem *deepest = &outline.item("B");
    for (int i = 0; i < 1'200; ++i)
        deepest = &deepest->appendChild(std::make_unique<MyOutlineItem>());
    outline.root.setChildren(outline.root.takeChildren());
    TreeNode *node = &outline.node("B");
    while (node->childCount() > 0)
        node = node->childNodes().front();
    outline.controller->setSelectedNodes({node});
    QTest::keyClick(&outline.view, Qt::Key_F2);
    EXPECT_EQ(outline.view.rowForItem(*node), -1);
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(OutlineViewEditing, TabAfterF2GoesToTheLabelWhereverTheRowWasClicked) {
    QTest::mouseClick(outline.view.viewport(), Qt::LeftButton, {}, outline.center("A", 1));
    QTest::keyClick(&outline.view, Qt::Key_F2);
    type("X", Qt::Key_Tab);
    type("iv", Qt::Key_Return);
    EXPECT_EQ(outline.text(), "X(B) C");
    EXPECT_EQ(outline.item("X").pageLabel(), "iv");
}

TEST_F(OutlineViewEditing, TabAfterF2GoesToTheLabelAlsoWhenThatWasEditedBefore) {
    outline.view.editColumn(1, 0);
    type("iv", Qt::Key_Return);
    QTest::keyClick(&outline.view, Qt::Key_F2);
    type("X", Qt::Key_Tab);
    type("v", Qt::Key_Return);
    EXPECT_EQ(outline.text(), "X(B) C");
    EXPECT_EQ(outline.item("X").pageLabel(), "v");
}

TEST_F(OutlineViewEditing, TabGoesOnToTheLabelAndToTheNextTitle) {
    outline.view.editColumn(0, 0);
    type("X", Qt::Key_Tab);
    type("iv", Qt::Key_Tab);
    type("Y", Qt::Key_Backtab);
    type("v", Qt::Key_Return);
    EXPECT_EQ(outline.text(), "X(B) Y");
    EXPECT_EQ(outline.item("X").pageLabel(), "v");
}

TEST_F(OutlineViewEditing, TabFromTheLastLabelEndsTheEditing) {
    outline.view.editColumn(1, 1);
    type("iv", Qt::Key_Tab);
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(outline.item("C").pageLabel(), "iv");
}

TEST_F(OutlineViewEditing, NothingIsEditedWhenTheDelegateSaysNo) {
    locked = true;
    outline.view.editColumn(0, 0);
    EXPECT_EQ(editor(), nullptr);
    outline.view.selectRowIndexes({0});
    QTest::keyClick(&outline.view, Qt::Key_F2);
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(OutlineViewEditing, NothingIsEditedWhenTheControllerSaysNo) {
    outline.controller->setShouldEdit([](int, const TreeNode &) { return false; });
    outline.view.editColumn(0, 0);
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(OutlineViewEditing, AMovedCellKeepsItsEditor) {
    outline.view.editColumn(0, 1);
    outline.controller->moveNode(outline.node("C"), {0});
    type("X", Qt::Key_Return);
    EXPECT_EQ(outline.text(), "X A(B)");
}

TEST_F(OutlineViewEditing, ACellRemovedWhileEditedIsGone) {
    outline.view.editColumn(0, 1);
    outline.root.removeObjectFromChildrenAtIndex(1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(outline.text(), "A(B)");
}

TEST_F(OutlineViewEditing, EndEditingTakesWhatWasTyped) {
    outline.view.endEditing();
    outline.view.editColumn(0, 0);
    ASSERT_NE(editor(), nullptr);
    QTest::keyClicks(editor(), "typed");
    outline.view.endEditing();
    EXPECT_EQ(outline.rows(), "typed C");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(OutlineViewEditing, AnOpenEditorFollowsItsItemAlsoBeforeALayout) {
    outline.view.editColumn(0, 0);
    ASSERT_NE(editor(), nullptr);
    // What is unfolded has not been laid out yet.
    outline.view.expandItem(outline.node("A"), true);
    outline.node("A").representedObject()->setPageTitle("renamed");
    EXPECT_EQ(editor()->text(), "renamed");
    outline.view.endEditing();
    EXPECT_EQ(outline.rows(), "renamed B C");
}

TEST_F(OutlineViewEditing, AnOpenEditorFollowsItsItemThroughManySteps) {
    outline.controller->setSelectionIndexPaths({{0}});
    outline.edits.setDisplay(&outline.view);
    MyOutlineItem &first = outline.item("A");
    MyOutlineItem &last = outline.item("C");
    {
        const OutlineEdits::Transaction many(outline.edits, "many:");
        for (int i = 0; i < 100; ++i)
            outline.edits.setPageTitle(last, QString::number(i));
        outline.edits.setPageTitle(first, "renamed");
    }
    outline.view.editColumn(0, 0);
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(editor()->text(), "renamed");
    outline.edits.undo();
    EXPECT_EQ(editor()->text(), "A");
    outline.edits.setDisplay(nullptr);
}

TEST_F(OutlineViewEditing, ReturnAsksWhereTheSelectedItemLeadsUnlessATextIsEdited) {
    QSignalSpy asked(&outline.view, &OutlineView::followRequested);
    QTest::keyClick(&outline.view, Qt::Key_Return);
    EXPECT_EQ(asked.count(), 0) << "nothing is selected";
    outline.controller->setSelectionIndexPaths({{1}});
    QTest::keyClick(&outline.view, Qt::Key_Return);
    QTest::keyClick(&outline.view, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(asked.count(), 2);
    outline.view.editColumn(0, 1);
    type("X", Qt::Key_Return);
    EXPECT_EQ(outline.text(), "A(B) X");
    EXPECT_EQ(asked.count(), 2);
}

}  // namespace
}  // namespace leafwright
