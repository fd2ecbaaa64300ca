#include "document/StructuralEdits.h"
#include "support/TreeWindowFixture.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using Edits = test::TreeWindowFixture;

class Moves : public Edits {};
class Adding : public Edits {};
class Removing : public Edits {};

TEST_F(Moves, TheMovesAskNoLock) {
    setOutline("a b");
    document.setAllowTOCediting(false);
    document.setLockTOCediting(true);
    select({{1}});
    perform("moveUp:");
    EXPECT_EQ(outline(), "b a");
    EXPECT_FALSE(document.shouldIgnoreKVO());
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

TEST_F(Removing, WhereEditingIsRefusedItBeeps) {
    setOutline("a");
    document.setAllowTOCediting(false);
    select({{0}});
    perform("removeOutlineItems:");
    EXPECT_EQ(outline(), "a");
    EXPECT_EQ(platform.beeps, 1);
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
                                 "renameSequentialNumbering:"};
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

TEST(LegitimateTitle, IsMadeOfLettersOnly) {
    EXPECT_FALSE(checkLegitimateTitle(""));
    EXPECT_TRUE(checkLegitimateTitle("Résumé"));
    EXPECT_FALSE(checkLegitimateTitle("A B"));
    EXPECT_FALSE(checkLegitimateTitle("Part2"));
}

}  // namespace
}  // namespace leafwright
