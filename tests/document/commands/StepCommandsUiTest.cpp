#include "document/commands/StepCommands.h"
#include "document/commands/StructuralEdits.h"
#include "support/WindowFixture.h"

#include <QStatusBar>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::PdfBuilder;

/// An outline of "A" with "B" and "C" below it, and "D".
class Steps : public test::WindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(2);
        open(pdf);
        MyOutlineItem &a = add(document.root(), "A");
        add(a, "B");
        add(a, "C");
        add(document.root(), "D");
        document.edits().forgetHistory();
        document.updateChangeCount(Document::Change::Cleared);
    }
    MyOutlineItem &add(MyOutlineItem &parent, const QString &title) {
        auto item = std::make_unique<MyOutlineItem>(title, PageTarget{"1"});
        MyOutlineItem &added = *item;
        document.edits().insert(parent, parent.children().size(), std::move(item));
        return added;
    }
    QString lines() { return document.root().plusDescriptionForLevel(0); }
    bool perform(const char *selector) { return document.actions().perform(selector); }
    bool isEnabled(const char *selector) { return document.actions().validateUserInterfaceItem(selector); }
    QString titleOf(const char *selector) {
        document.myWindow()->updateActions();
        return document.myWindow()->findChild<QAction *>(selector)->text().remove(u'&');
    }
};

TEST_F(Steps, ThereAreNoneBeforeTheFirstChange) {
    EXPECT_FALSE(isEnabled("stepBack:"));
    EXPECT_FALSE(isEnabled("stepForward:"));
    EXPECT_EQ(titleOf("stepBack:"), "Step Back");
}

TEST_F(Steps, WhatIsRemovedComesBackAsItWas) {
    const QString before = lines();
    document.outlineview()->expandItem(*node({0}));
    select({{0}, {1}});
    ASSERT_TRUE(perform("removeOutlineItems:"));
    EXPECT_TRUE(document.root().children().empty());
    EXPECT_EQ(titleOf("stepBack:"), "Step Back: Remove 4 Entries");
    ASSERT_TRUE(perform("stepBack:"));
    EXPECT_EQ(lines(), before);
    EXPECT_TRUE(document.outlineview()->isItemExpanded(*node({0})));
    EXPECT_EQ(document.treecontroller().selectedNodes(), (std::vector<TreeNode *>{node({0}), node({1})}));
    EXPECT_FALSE(document.isDocumentEdited()) << "that is what the file has";
    EXPECT_EQ(titleOf("stepForward:"), "Step Forward: Remove 4 Entries");
    ASSERT_TRUE(perform("stepForward:"));
    EXPECT_TRUE(document.root().children().empty());
    EXPECT_TRUE(document.isDocumentEdited());
    EXPECT_FALSE(isEnabled("stepForward:"));
}

TEST_F(Steps, FoldedEntriesStayFolded) {
    select({{1}});
    ASSERT_TRUE(perform("moveUp:"));
    document.outlineview()->expandItem(*node({1}));
    ASSERT_TRUE(perform("stepBack:"));
    EXPECT_FALSE(document.outlineview()->isItemExpanded(*node({0})));
    ASSERT_TRUE(perform("stepForward:"));
    EXPECT_TRUE(document.outlineview()->isItemExpanded(*node({1})))
        << "as it was when the step was taken back";
}

TEST_F(Steps, LookAsBeforeTheyWereDoneAgain) {
    select({{1}});
    ASSERT_TRUE(perform("moveUp:"));
    ASSERT_TRUE(perform("stepBack:"));
    select({{0}});
    ASSERT_TRUE(perform("stepForward:"));
    EXPECT_EQ(document.treecontroller().selectedNodes(), std::vector<TreeNode *>{node({0})})
        << "what was moved";
    ASSERT_TRUE(perform("stepBack:"));
    EXPECT_EQ(document.treecontroller().selectedNodes(), std::vector<TreeNode *>{node({0})})
        << "what was selected last";
}

TEST_F(Steps, WhatWasTypedIsAStep) {
    const QModelIndex title = document.treecontroller().indexForNode(*node({1}));
    ASSERT_TRUE(document.treecontroller().setData(title, "Other"));
    EXPECT_EQ(titleOf("stepBack:"), "Step Back: Edit Title");
    ASSERT_TRUE(perform("stepBack:"));
    EXPECT_EQ(node({1})->representedObject()->pageTitle(), "D");
}

TEST_F(Steps, AreNamedByTheirCommands) {
    select({{1}});
    ASSERT_TRUE(perform("changeCaseToLowerCase:"));
    EXPECT_EQ(titleOf("stepBack:"), "Step Back: lower case");
    document.outlineview()->expandItem(*node({0}));
    select({{0, 0}});
    ASSERT_TRUE(perform("removeOutlineItems:"));
    EXPECT_EQ(titleOf("stepBack:"), "Step Back: Remove 1 Entry");
    EXPECT_EQ(stepTitle({"renameFindReplace:"}), "Find and Replace") << "without the ellipsis";
}

TEST_F(Steps, AreNotTakenWhereEditingIsNotAllowed) {
    select({{1}});
    ASSERT_TRUE(perform("moveUp:"));
    document.setLockTOCediting(true);
    EXPECT_FALSE(isEnabled("stepBack:"));
    document.setLockTOCediting(false);
    EXPECT_TRUE(isEnabled("stepBack:"));
    document.setAllowTOCediting(false);
    EXPECT_FALSE(isEnabled("stepBack:"));
}

TEST_F(Steps, GoOnAfterASave) {
    select({{1}});
    ASSERT_TRUE(perform("moveUp:"));
    ASSERT_TRUE(perform("saveDocument:"));
    EXPECT_FALSE(document.isDocumentEdited());
    ASSERT_TRUE(perform("stepBack:"));
    EXPECT_TRUE(document.isDocumentEdited()) << "the file has the other order now";
    ASSERT_TRUE(perform("stepForward:"));
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(Steps, UndoNamesThemWhereItHasNothingToDo) {
    ASSERT_TRUE(perform("undo:"));
    EXPECT_EQ(document.myWindow()->statusBar()->currentMessage(), "") << "there are no steps";
    const QString before = lines();
    select({{1}});
    ASSERT_TRUE(perform("moveUp:"));
    const QString after = lines();
    ASSERT_TRUE(perform("undo:"));
    EXPECT_EQ(lines(), after);
    EXPECT_THAT(document.myWindow()->statusBar()->currentMessage().toStdString(),
                testing::HasSubstr("Step Back (Ctrl+Alt+Z)"));
    platform.userDefaults().setValue("LeafwrightUndoStepsBack", true);
    ASSERT_TRUE(perform("undo:"));
    EXPECT_EQ(lines(), before);
    ASSERT_TRUE(perform("redo:"));
    EXPECT_EQ(lines(), after);
}

}  // namespace
}  // namespace leafwright
