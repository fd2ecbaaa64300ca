#include "document/outline/OutlineImport.h"
#include "support/FakePages.h"
#include "support/OutlineItems.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

std::unique_ptr<PDFOutline> entry(const QString &label, const std::optional<PDFDestination> &destination) {
    auto entry = std::make_unique<PDFOutline>(label);
    entry->setDestination(destination);
    return entry;
}

PDFOutline &add(PDFOutline &parent, const QString &label, const std::optional<PDFDestination> &destination) {
    return parent.insertChildAtIndex(entry(label, destination), parent.numberOfChildren());
}

class OutlineImport : public testing::Test {
protected:
    OutlineImport() { pages.add("iv", {}).add("1", {}).add("2", {}); }

    test::FakePages pages;
    MyOutlineItem item;
};

TEST_F(OutlineImport, CopiesLabelPageAndPoint) {
    EXPECT_FALSE(addOutlineChildren(*entry("Preface", PDFDestination{0, {72.5, 700}}), item, pages));
    EXPECT_EQ(item.pageTitle(), "Preface");
    EXPECT_EQ(item.pageLabel(), "iv");
    EXPECT_EQ(item.pointOnPage(), QPointF(72.5, 700));
    EXPECT_TRUE(item.children().empty());
}

TEST_F(OutlineImport, CopiesEverythingBelowInOrder) {
    const auto top = entry("Part", PDFDestination{0, {1, 2}});
    PDFOutline &chapter = add(*top, "Chapter", PDFDestination{1, {3, 4}});
    add(chapter, "Section a", PDFDestination{1, {5, 6}});
    add(chapter, "Section b", PDFDestination{2, {7, 8}});
    add(*top, "Last", PDFDestination{2, {9, 10}});
    EXPECT_FALSE(addOutlineChildren(*top, item, pages));
    EXPECT_EQ(item.pageTitle(), "Part");
    EXPECT_EQ(test::treeText(item),
              "+ [1] Chapter (3,4)\n++ [1] Section a (5,6)\n++ [2] Section b (7,8)\n+ [2] Last (9,10)\n");
}

TEST_F(OutlineImport, AnEntryThatLeadsNowhereHasNoLabelAndNoSpot) {
    const auto link = entry("Web", std::nullopt);
    link->setEntry({.number = 42, .open = true});
    EXPECT_FALSE(addOutlineChildren(*link, item, pages));
    EXPECT_TRUE(item.pageLabel().isNull());
    EXPECT_EQ(item.pointOnPage(), QPointF(0, 0));
    EXPECT_EQ(item.entry(), (OutlineEntry{.number = 42, .open = true}));
}

TEST_F(OutlineImport, AnItemRemembersItsPageUntilItGetsAnotherLabel) {
    const auto top = entry("Part", PDFDestination{1, {1, 2}});
    add(*top, "Web", std::nullopt);
    addOutlineChildren(*top, item, pages);
    EXPECT_EQ(item.importedPage(), 1);
    EXPECT_EQ(item.children()[0]->importedPage(), std::nullopt);
    item.setPageTitle("Another");
    EXPECT_EQ(item.importedPage(), 1);
    item.setPageLabel(item.pageLabel());
    EXPECT_EQ(item.importedPage(), std::nullopt)
        << "a spot dropped on it may be on another page of that label";
}

TEST_F(OutlineImport, TellsOfEntriesWithoutASpot) {
    EXPECT_TRUE(addOutlineChildren(*entry("Zero", PDFDestination{0, {0, 0}}), item, pages));
}

TEST_F(OutlineImport, TellsOfEntriesWithoutASpotAtAnyDepth) {
    const auto top = entry("Part", PDFDestination{0, {1, 2}});
    PDFOutline &chapter = add(*top, "Chapter", PDFDestination{1, {3, 4}});
    add(chapter, "Zero", PDFDestination{1, {0, 0}});
    add(*top, "Last", PDFDestination{2, {9, 10}});
    EXPECT_TRUE(addOutlineChildren(*top, item, pages));
}

TEST_F(OutlineImport, TellsOfAnEntryWithoutASpotAboveOthersThatHaveOne) {
    const auto top = entry("Zero", PDFDestination{0, {0, 0}});
    add(*top, "Chapter", PDFDestination{1, {3, 4}});
    EXPECT_TRUE(addOutlineChildren(*top, item, pages));
}

TEST_F(OutlineImport, OneZeroCoordinateIsASpot) {
    EXPECT_FALSE(addOutlineChildren(*entry("Left", PDFDestination{0, {0, 1e-9}}), item, pages));
    EXPECT_FALSE(addOutlineChildren(*entry("Bottom", PDFDestination{0, {1e-9, 0}}), item, pages));
}

TEST_F(OutlineImport, DeepOutlinesAreCopiedWithoutRecursion) {
    const auto top = entry("Top", PDFDestination{0, {1, 2}});
    PDFOutline *last = top.get();
    for (int depth = 0; depth < 200'000; ++depth)
        last = &add(*last, "Deeper", PDFDestination{0, {1, 2}});
    EXPECT_FALSE(addOutlineChildren(*top, item, pages));
    EXPECT_EQ(item.itemsMatchingText("Deeper")->size(), 200'000U);
}

}  // namespace
}  // namespace leafwright
