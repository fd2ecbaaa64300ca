#include "document/commands/StructuralEdits.h"
#include "support/TreeWindowFixture.h"

#include <QLineEdit>
#include <QSet>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::PdfBuilder;
using Edits = test::TreeWindowFixture;

class Moves : public Edits {
protected:
    /// Whether the item's whole row is in sight.
    bool isInSight(const IndexPath &path) {
        const QRect row =
            document.outlineview()->visualRect(document.treecontroller().indexForNode(*node(path)));
        return document.outlineview()->rowForItem(*node(path)) >= 0 &&
               document.outlineview()->viewport()->rect().contains(row);
    }
    /// So many items, more than there is room for.
    void setLongOutline() {
        QString text;
        for (int i = 0; i < 200; ++i)
            text += QString::number(i) + ' ';
        setOutline(text);
    }
};
class Adding : public Moves {};
class Removing : public Moves {};

TEST_F(Moves, TheMovesAskNoLock) {
    setOutline("a b");
    document.setAllowTOCediting(false);
    document.setLockTOCediting(true);
    select({{1}});
    perform("moveUp:");
    EXPECT_EQ(outline(), "b a");
    EXPECT_FALSE(document.shouldIgnoreKVO());
}

TEST_F(Moves, WhatMovesIntoAFoldedItemUnfoldsIt) {
    for (const char *before : {"a b c", "a (x) b c"}) {
        setOutline(before);
        document.outlineview()->collapseItem(*node({0}));
        select({{1}, {2}});
        perform("moveRight:");
        EXPECT_EQ(selected(), "b c");
        EXPECT_TRUE(document.outlineview()->isItemExpanded(*node({0}))) << before;
        ASSERT_TRUE(isEnabled("moveLeft:"));
        perform("moveLeft:");
        EXPECT_EQ(outline(), before) << "it can be taken back";
    }
}

TEST_F(Moves, WhatMovesIsScrolledTo) {
    setLongOutline();
    select({{100}, {101}});
    for (const char *selector : {"moveUp:", "moveDown:", "moveRight:", "moveLeft:"}) {
        document.outlineview()->scrollToTop();
        perform(selector);
        for (const IndexPath &path : document.treecontroller().selectionIndexPaths())
            EXPECT_TRUE(isInSight(path)) << selector;
    }
}

TEST_F(Moves, PromotedChildrenAreScrolledTo) {
    setOutline("a (x y) b");
    for (size_t i = 0; i < 200; ++i)
        document.root().insertObjectInChildrenAtIndex(test::makeItem({"before"}), 0);
    select({{200}});
    document.outlineview()->scrollToTop();
    perform("promoteChildrenOutlineItem:");
    EXPECT_TRUE(isInSight({201}));
    EXPECT_TRUE(isInSight({202}));
}

TEST_F(Moves, WhatHasNoPlaceToGoIsSkippedWhileOthersMove) {
    setOutline("p (a b) q");
    select({{0}, {0, 1}});
    perform("moveLeft:");
    EXPECT_EQ(outline(), "p (a) b q");
    setOutline("p (a b) q (c d)");
    select({{0, 0}, {0, 1}, {1, 0}});
    perform("moveDown:");
    EXPECT_EQ(outline(), "p (a b) q (d c)");
    EXPECT_EQ(platform.beeps, 0);
}

TEST_F(Moves, WithNothingSelectedAChangeIsCountedAllTheSame) {
    setOutline("a b");
    select({});
    StructuralEdits &edits = document.structuralEdits();
    for (const auto move : {&StructuralEdits::moveLeft, &StructuralEdits::moveRight, &StructuralEdits::moveUp,
                            &StructuralEdits::moveDown}) {
        document.updateChangeCount(Document::Change::Cleared);
        (edits.*move)();
        EXPECT_TRUE(document.isDocumentEdited());
    }
    EXPECT_EQ(outline(), "a b");
}

TEST_F(Moves, WhileItemsMoveTheDocumentSaysSo) {
    struct Watch : OutlineItemObserver {
        explicit Watch(MyDocument &watched) : document(watched) { document.root().addObserver(this); }
        ~Watch() { document.root().removeObserver(this); }
        void willChangeValueForKey(const MyOutlineItem & /*item*/, QLatin1String /*key*/) override {}
        void didChangeValueForKey(const MyOutlineItem & /*item*/, QLatin1String /*key*/) override {
            seen.append(document.shouldIgnoreKVO());
        }
        MyDocument &document;
        QList<bool> seen;
    };
    for (const char *selector : {"moveLeft:", "moveRight:", "moveUp:", "moveDown:"}) {
        setOutline("o p (a) q");
        select({selector == QLatin1String("moveLeft:") ? IndexPath{1, 0} : IndexPath{1}});
        const Watch watch(document);
        perform(selector);
        EXPECT_FALSE(watch.seen.isEmpty()) << selector;
        EXPECT_FALSE(watch.seen.contains(false)) << selector;
        EXPECT_FALSE(document.shouldIgnoreKVO()) << selector;
    }
}

TEST_F(Adding, ASiblingComesRightAfterTheSelectionAndIsEdited) {
    setOutline("a (x y) b");
    document.pdfview()->goToPage(document.pdfDoc()->page(4));
    select({{0, 0}});
    perform("addSiblingOutlineItem:");
    EXPECT_EQ(outline(), "a (x Page y) b");
    EXPECT_EQ(node({0, 1})->representedObject()->pageLabel(), "5");
    EXPECT_EQ(node({0, 1})->representedObject()->pointOnPage(), QPointF(0, 0));
    EXPECT_EQ(selected(), "Page");
    const auto *editor = document.outlineview()->findChild<QLineEdit *>();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->selectedText(), "Page");
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Adding, ASiblingGetsTheHooksOfUndoAndAChildDoesNot) {
    struct Hooks final : UndoSupport {
        Hooks(MyOutlineItem &root, QStringList &told) : UndoSupport(root), titles(told) {}
        void registerObserversForOutlineItem(MyOutlineItem &item) override {
            titles.append(item.pageTitle());
        }
        QStringList &titles;
    };
    setOutline("a");
    QStringList titles;
    document.setUndoSupport(std::make_unique<Hooks>(document.root(), titles));
    select({{0}});
    perform("addSiblingOutlineItem:");
    EXPECT_EQ(titles, QStringList("Page"));
    perform("addChildOutlineItem:");
    EXPECT_EQ(titles, QStringList("Page"));
}

TEST_F(Adding, AChildComesLastAndItsParentIsUnfolded) {
    setOutline("a (x) b");
    document.outlineview()->collapseItem(*node({0}));
    select({{0}});
    perform("addChildOutlineItem:");
    EXPECT_EQ(outline(), "a (x Page) b");
    EXPECT_TRUE(document.outlineview()->isItemExpanded(*node({0})));
    EXPECT_NE(document.outlineview()->findChild<QLineEdit *>(), nullptr);
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Adding, TheFirstChildOfAnItemIsShown) {
    setOutline("a b");
    select({{1}});
    perform("addChildOutlineItem:");
    EXPECT_EQ(outline(), "a b (Page)");
    EXPECT_TRUE(document.outlineview()->isItemExpanded(*node({1})));
    EXPECT_EQ(selected(), "Page");
}

TEST_F(Adding, WithoutASelectionBothAppendAtTheTopLevel) {
    setOutline("a");
    select({});
    perform("addSiblingOutlineItem:");
    select({});
    perform("addChildOutlineItem:");
    EXPECT_EQ(outline(), "a Page Page");
}

TEST_F(Adding, WhereEditingIsRefusedASiblingIsSilentAndAChildBeeps) {
    setOutline("a");
    document.setLockTOCediting(true);
    perform("addSiblingOutlineItem:");
    EXPECT_EQ(platform.beeps, 0);
    perform("addChildOutlineItem:");
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_EQ(outline(), "a");
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(Adding, SelectedTextBecomesASiblingOrAChildAtItsSpot) {
    setOutline("a (x y) b");
    const PDFPage &page = *document.pdfDoc()->page(2);
    document.pdfview()->setCurrentSelection(page.selectionForRange({0, 6}));
    select({{0, 0}});
    perform("addSelectedTextAsTOCSibling:");
    const MyOutlineItem &item = *node({0, 1})->representedObject();
    EXPECT_EQ(item.pageTitle(), "Page 3");
    EXPECT_EQ(item.pageLabel(), "3");
    EXPECT_GT(item.pointOnPage().y(), 0);
    select({{0}});
    perform("addSelectedTextAsTOCChild:");
    EXPECT_EQ(node({0, 3})->representedObject()->pageTitle(), "Page 3");
}

TEST_F(Adding, SelectedTextGoesToTheNextPathOrBehindTheChildren) {
    setOutline("a b c (d (x y) e)");
    document.pdfview()->setCurrentSelection(document.pdfDoc()->page(0)->selectionForRange({0, 4}));
    select({{2, 0}});
    perform("addSelectedTextAsTOCSibling:");
    EXPECT_EQ(outline(), "a b c (d (x y) Page e)");
    select({{2, 0}});
    perform("addSelectedTextAsTOCChild:");
    EXPECT_EQ(outline(), "a b c (d (x y Page) Page e)");
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Adding, WithoutSelectedTextNothingIsAdded) {
    setOutline("a");
    document.structuralEdits().addSelectedTextAsTOCSibling();
    document.structuralEdits().addSelectedTextAsTOCChild();
    EXPECT_EQ(outline(), "a");
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(Adding, WithNothingSelectedInTheOutlineSelectedTextIsAppended) {
    setOutline("a (x)");
    document.pdfview()->setCurrentSelection(document.pdfDoc()->page(0)->selectionForRange({0, 4}));
    select({});
    perform("addSelectedTextAsTOCSibling:");
    select({});
    perform("addSelectedTextAsTOCChild:");
    EXPECT_EQ(outline(), "a (x) Page Page");
}

TEST_F(Adding, TheNewRowIsShownAndOpenedWhereItWouldBeFoldedAway) {
    for (const char *selector : {"addSiblingOutlineItem:", "addChildOutlineItem:"}) {
        setOutline("a (x (y)) b");
        document.outlineview()->collapseItem(*node({0}), true);
        perform("selectTOCOnlyLevel2:");
        ASSERT_LT(document.outlineview()->rowForItem(*node({0, 0})), 0) << "selected, and yet not shown";
        perform(selector);
        EXPECT_EQ(selected(), "Page");
        EXPECT_EQ(document.treecontroller().selectionIndexPath()->indexAtPosition(0), 0U);
        const TreeNode &added = *document.treecontroller().selectedNodes().front();
        EXPECT_GE(document.outlineview()->rowForItem(added), 0) << selector;
        auto *editor = document.outlineview()->viewport()->findChild<QLineEdit *>();
        ASSERT_NE(editor, nullptr) << selector;
        EXPECT_EQ(editor->selectedText(), "Page");
        EXPECT_TRUE(document.outlineview()->viewport()->rect().contains(editor->geometry())) << selector;
        document.outlineview()->endEditing();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(Adding, TheNewRowIsScrolledTo) {
    for (const char *selector : {"addSiblingOutlineItem:", "addChildOutlineItem:"}) {
        setLongOutline();
        select({{100}});
        document.outlineview()->scrollToTop();
        perform(selector);
        EXPECT_TRUE(isInSight(*document.treecontroller().selectionIndexPath())) << selector;
        const auto *editor = document.outlineview()->viewport()->findChild<QLineEdit *>();
        ASSERT_NE(editor, nullptr) << selector;
        EXPECT_TRUE(document.outlineview()->viewport()->rect().contains(editor->geometry())) << selector;
        document.outlineview()->endEditing();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(Removing, TheListStaysWhereItWas) {
    setLongOutline();
    OKNSOutlineView &view = *document.outlineview();
    const auto onTop = [&] {
        return document.treecontroller().nodeForIndex(view.indexAt({5, 0})).representedObject()->pageTitle();
    };
    select({{3}, {190}, {191}});
    view.scrollTo(document.treecontroller().indexForNode(*node({80})), QAbstractItemView::PositionAtTop);
    ASSERT_EQ(onTop(), "80");
    perform("removeOutlineItems:");
    EXPECT_EQ(onTop(), "80");
    select({{79}, {80}});
    ASSERT_EQ(selected(), "80 81");
    view.scrollTo(document.treecontroller().indexForNode(*node({79})), QAbstractItemView::PositionAtTop);
    ASSERT_EQ(onTop(), "80");
    perform("removeOutlineItems:");
    EXPECT_EQ(onTop(), "82") << "what stood below moves up";
}

TEST_F(Removing, SelectedItemsGoWithWhatIsBelowThemAndNothingIsSelected) {
    setOutline("a (x (y) z) b c");
    select({{0, 0}, {0, 0, 0}, {1}});
    perform("removeOutlineItems:");
    EXPECT_EQ(outline(), "a (z) c");
    EXPECT_EQ(selected(), "");
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Removing, TheOnlyItemLeavesAnEmptyOutline) {
    setOutline("a");
    select({{0}});
    perform("removeOutlineItems:");
    EXPECT_EQ(outline(), "");
    EXPECT_EQ(selected(), "");
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Removing, SelectedItemsThatAreNotShownStay) {
    setOutline("a (x) b");
    document.outlineview()->collapseItem(*node({0}));
    select({{0, 0}, {1}});
    perform("removeOutlineItems:");
    EXPECT_EQ(outline(), "a (x)");
    EXPECT_EQ(selected(), "");
}

TEST_F(Removing, WhereEditingIsRefusedItBeeps) {
    setOutline("a");
    document.setAllowTOCediting(false);
    select({{0}});
    perform("removeOutlineItems:");
    EXPECT_EQ(outline(), "a");
    EXPECT_EQ(platform.beeps, 1);
}

TEST_F(Removing, PromotedChildrenBecomeTheFollowingSiblings) {
    setOutline("a (x (y) z) b");
    select({{0}});
    perform("promoteChildrenOutlineItem:");
    EXPECT_EQ(outline(), "a x (y) z b");
    EXPECT_EQ(selected(), "a");
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Removing, PromotingIsRefusedSilently) {
    setOutline("a (x) b");
    document.setLockTOCediting(true);
    select({{0}});
    perform("promoteChildrenOutlineItem:");
    EXPECT_EQ(outline(), "a (x) b");
    EXPECT_EQ(platform.beeps, 0);
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(Removing, PromotingTheChildrenOfAnItemWithoutAnyStillCountsAChange) {
    setOutline("a b");
    select({{0}});
    document.structuralEdits().promoteChildrenOutlineItem();
    EXPECT_EQ(outline(), "a b");
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Removing, ANodeRemovedByItsPathCountsNoChange) {
    setOutline("a (x) b");
    document.structuralEdits().removeNodeAtIndexPath({0, 0});
    EXPECT_EQ(outline(), "a b");
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(Edits, WhatIsEnabledDependsOnTheSelectionInTheOutline) {
    setOutline("a (x) b");
    const auto needsSelection = {"removeOutlineItems:",
                                 "moveLeft:",
                                 "moveRight:",
                                 "moveUp:",
                                 "moveDown:",
                                 "changeCaseToLowerCase:",
                                 "applyTOCExpand:",
                                 "applyTOCCollapse:",
                                 "changeCaseToUpperCase:",
                                 "renameAddPrefix:",
                                 "renameFindReplace:",
                                 "changeCaseToTitleCase:",
                                 "renameSequentialNumbering:",
                                 "toggleBold:",
                                 "toggleItalic:",
                                 "chooseTitleColor:",
                                 "toggleOpenInViewers:"};
    select({});
    for (const char *selector : needsSelection)
        EXPECT_FALSE(isEnabled(selector)) << selector;
    for (const char *selector : {"addSiblingOutlineItem:", "addChildOutlineItem:", "selectTOCAll:", "undo:",
                                 "redo:", "runSearchSelectSheet:", "nextPage:"})
        EXPECT_TRUE(isEnabled(selector)) << selector;
    select({{1}});
    for (const char *selector : needsSelection)
        EXPECT_TRUE(isEnabled(selector)) << selector;
    EXPECT_FALSE(isEnabled("promoteChildrenOutlineItem:")) << "it has no children";
    select({{0}});
    EXPECT_TRUE(isEnabled("promoteChildrenOutlineItem:"));
    setOutline("a (x) b (y)");
    select({{0}, {1}});
    EXPECT_FALSE(isEnabled("promoteChildrenOutlineItem:")) << "two are selected";
}

TEST_F(Edits, WhatIsEnabledDependsOnTheSelectionOnThePages) {
    setOutline("a");
    select({{0}});
    const auto needsText = {
        "addSelectedTextAsTOCSibling:", "addSelectedTextAsTOCChild:", "useSelectionforH1:",
        "useSelectionforH2:",           "useSelectionforH3:",         "useSelectionforH4:"};
    for (const char *selector : needsText)
        EXPECT_FALSE(isEnabled(selector)) << selector;
    document.pdfview()->setCurrentSelection(document.pdfDoc()->page(0)->selectionForRange({0, 4}));
    for (const char *selector : needsText)
        EXPECT_TRUE(isEnabled(selector)) << selector;
}

TEST_F(Edits, EveryOtherCommandIsAlwaysEnabled) {
    setOutline("");
    const QSet<QString> dependent{"removeOutlineItems:",
                                  "changeCaseToLowerCase:",
                                  "changeCaseToUpperCase:",
                                  "changeCaseToTitleCase:",
                                  "applyTOCExpand:",
                                  "applyTOCCollapse:",
                                  "moveLeft:",
                                  "moveRight:",
                                  "moveUp:",
                                  "moveDown:",
                                  "renameSequentialNumbering:",
                                  "renameFindReplace:",
                                  "renameAddPrefix:",
                                  "toggleBold:",
                                  "toggleItalic:",
                                  "chooseTitleColor:",
                                  "toggleOpenInViewers:",
                                  "promoteChildrenOutlineItem:",
                                  "pointSelectedEntryHere:",
                                  "runMiniTOC:",
                                  "addSelectedTextAsTOCSibling:",
                                  "addSelectedTextAsTOCChild:",
                                  "useSelectionforH1:",
                                  "useSelectionforH2:",
                                  "useSelectionforH3:",
                                  "useSelectionforH4:",
                                  "goBack:",
                                  "goForward:",
                                  "stepBack:",
                                  "stepForward:",
                                  "importOutline:",
                                  "exportOutline:",
                                  "findContents:",
                                  "completeContents:"};
    document.setAllowTOCediting(false);
    for (const ActionDescription *each : document.actions().handled())
        EXPECT_EQ(isEnabled(each->selector), !dependent.contains(each->selector)) << each->selector;
}

TEST_F(Edits, WhereEditingIsLockedCommandsAreStillEnabled) {
    setOutline("a");
    document.setLockTOCediting(true);
    select({{0}});
    EXPECT_TRUE(isEnabled("removeOutlineItems:"));
    EXPECT_TRUE(isEnabled("addChildOutlineItem:"));
}

TEST_F(Edits, TitleCaseOfTheSelectedRow) {
    setOutline("hello-world");
    select({{0}});
    perform("changeOutlineItemToTitleCase:");
    EXPECT_EQ(outline(), "Hello-World");
    document.setLockTOCediting(true);
    document.root().children()[0]->setPageTitle("again");
    perform("changeOutlineItemToTitleCase:");
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_EQ(outline(), "again");
}

TEST_F(Edits, TitleCaseWithoutASelectedRowCountsAChangeAllTheSame) {
    setOutline("hello");
    select({});
    perform("changeOutlineItemToTitleCase:");
    EXPECT_EQ(outline(), "hello");
    EXPECT_EQ(platform.beeps, 0);
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Edits, OfSeveralSelectedRowsTitleCaseChangesTheCurrentOne) {
    setOutline("one two three");
    select({{0}, {1}, {2}});
    document.treecontroller().selectionModel()->setCurrentIndex(
        document.treecontroller().indexForNode(*node({1})), QItemSelectionModel::NoUpdate);
    perform("changeOutlineItemToTitleCase:");
    EXPECT_EQ(outline(), "one Two three");
}

class TextOfAPage : public test::WindowFixture {};

TEST_F(TextOfAPage, ALineBreakInSelectedTextBecomesABlankOfTheTitle) {
    PdfBuilder pdf;
    pdf.addPage(PdfBuilder::showText("F1", 12, 72, 700, "Intro-") +
                PdfBuilder::showText("F1", 12, 72, 680, "duction"));
    open(pdf);
    const PDFPage &page = *document.pdfDoc()->page(0);
    constexpr int bothLines = 14;
    ASSERT_EQ(page.text()->attributedString.string.left(bothLines), "Intro-\nduction");
    document.pdfview()->setCurrentSelection(page.selectionForRange({0, bothLines}));
    ASSERT_TRUE(document.actions().perform("addSelectedTextAsTOCSibling:"));
    EXPECT_EQ(document.root().children().at(0)->pageTitle(), "Intro- duction");
}

TEST(LegitimateTitle, IsMadeOfLettersOnly) {
    EXPECT_FALSE(checkLegitimateTitle(""));
    EXPECT_TRUE(checkLegitimateTitle("Résumé"));
    EXPECT_FALSE(checkLegitimateTitle("A B"));
    EXPECT_FALSE(checkLegitimateTitle("Part2"));
}

}  // namespace
}  // namespace leafwright
