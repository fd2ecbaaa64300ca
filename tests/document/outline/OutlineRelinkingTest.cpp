#include "document/outline/OutlineRelinking.h"
#include "support/FakePages.h"
#include "support/OutlineItems.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using testing::ElementsAre;

class Relinked : public testing::Test {
protected:
    MyOutlineItem &add(const QString &title, const QString &label, std::optional<int> page = {}) {
        MyOutlineItem &item = root.appendChild(std::make_unique<MyOutlineItem>());
        item.setPageTitle(title);
        item.setPageLabel(label);
        item.setImportedPage(page);
        return item;
    }
    static OutlineEntry entry(int number) { return {.number = number, .bold = true}; }
    static OutlineEntry entry(int number, const QString &action) {
        return {.number = number, .bold = true, .action = OutlineEntry::Action{action}};
    }
    void addEntry(const QString &title, const OutlineEntry &entry) {
        outline.insertChildAtIndex(std::make_unique<PDFOutline>(title), outline.numberOfChildren())
            .setEntry(entry);
    }

    LostTargets relink() { return relinkOutline(edits, before, now, outline); }

    MyOutlineItem root;
    OutlineEdits edits{root};
    test::FakePages before;
    test::FakePages now;
    PDFOutline outline;
};

TEST_F(Relinked, AnItemKeepsItsPageByItsLabelAndTheOrderOfThoseThatHaveIt) {
    before.add("1", {}).add("2", {}).add("1", {});
    now.add("cover", {}).add("1", {}).add("2", {}).add("3", {}).add("1", {});
    const MyOutlineItem &first = add("First", "1", 0);
    const MyOutlineItem &last = add("Last", "1", 2);
    const MyOutlineItem &made = add("Made here", "1");
    EXPECT_EQ(relink().unknownLabels, 0U);
    EXPECT_EQ(first.importedPage(), 1);
    EXPECT_EQ(last.importedPage(), 4);
    EXPECT_EQ(made.importedPage(), std::nullopt);
}

TEST_F(Relinked, WhereThereAreFewerPagesWithALabelItIsTheLabelThatCounts) {
    before.add("1", {}).add("1", {});
    now.add("1", {});
    const MyOutlineItem &item = add("Second", "1", 1);
    EXPECT_EQ(relink().unknownLabels, 0U);
    EXPECT_EQ(item.importedPage(), std::nullopt);
}

TEST_F(Relinked, LabelsThatAreGoneAreTold) {
    for (const char *label : {"1", "2", "3", "4", "5"})
        before.add(label, {});
    now.add("1", {});
    add("Stays", "1", 0);
    MyOutlineItem &chapter = add("Gone", "2", 1);
    chapter.appendChild(std::make_unique<MyOutlineItem>()).setPageLabel("2");
    add("Gone", "3");
    add("Gone", "4", 3);
    add("Gone", "5", 4);
    add("Never there", "17");
    add("Web", QString());
    const LostTargets lost = relink();
    EXPECT_EQ(lost.unknownLabels, 5U);
    EXPECT_THAT(lost.firstUnknownLabels, ElementsAre("2", "3", "4"));
    EXPECT_EQ(chapter.importedPage(), std::nullopt);
}

TEST_F(Relinked, EntriesAreFoundByTheirTitlesAndWhatTheyDo) {
    for (const int number : {7, 8})
        add("Twice", QString()).setEntry(entry(number, "Launch"));
    add("Twice", "1").setEntry(entry(9));
    addEntry("Twice", entry(16));
    addEntry("Twice", entry(17, "Launch"));
    addEntry("Twice", entry(18, "Launch"));
    EXPECT_EQ(relink().actions, 0U);
    EXPECT_EQ(root.children()[0]->entry(), entry(17, "Launch"));
    EXPECT_EQ(root.children()[1]->entry(), entry(18, "Launch"));
    EXPECT_EQ(root.children()[2]->entry(), entry(16));
}

TEST_F(Relinked, WhatWasAddedToAFileLeavesEntriesTheirNumbers) {
    add("Play", QString()).setEntry(entry(8, "JavaScript"));
    add("Exercises", "1").setEntry(entry(10));
    add("Play", QString()).setEntry(entry(7, "JavaScript"));
    for (const int number : {7, 8, 9})
        addEntry("Play", entry(number, "JavaScript"));
    for (const int number : {10, 11})
        addEntry("Exercises", entry(number));
    EXPECT_EQ(relink().actions, 0U);
    EXPECT_EQ(root.children()[0]->entry().number, 8);
    EXPECT_EQ(root.children()[1]->entry().number, 10);
    EXPECT_EQ(root.children()[2]->entry().number, 7);
}

TEST_F(Relinked, NoEntryIsTakenForAnotherThatLooksTheSame) {
    add("Play", QString()).setEntry(entry(8, "JavaScript"));
    addEntry("Play", entry(17, "JavaScript"));
    addEntry("Play", entry(18, "JavaScript"));
    EXPECT_EQ(relink().actions, 1U) << "one of two has been removed";
    EXPECT_FALSE(root.children()[0]->entry().number);
}

TEST_F(Relinked, EntriesThatWereMovedAmongThoseThatLookTheSameAreNotFound) {
    add("Play", QString()).setEntry(entry(8, "JavaScript"));
    add("Play", QString()).setEntry(entry(7, "JavaScript"));
    addEntry("Play", entry(17, "JavaScript"));
    addEntry("Play", entry(18, "JavaScript"));
    EXPECT_EQ(relink().actions, 2U);
}

TEST_F(Relinked, NumbersThatAFileHasGivenToOthersCountForNothing) {
    add("Chapter", "1").setEntry(entry(5));
    add("Play", QString()).setEntry(entry(8, "JavaScript"));
    addEntry("Chapter", entry(6));
    addEntry("Play", entry(8, "JavaScript"));
    addEntry("Play", entry(9, "JavaScript"));
    EXPECT_EQ(relink().actions, 1U) << "the second, which was 8, is 9 now";
    EXPECT_EQ(root.children()[0]->entry().number, 6);
    EXPECT_FALSE(root.children()[1]->entry().number);
}

TEST_F(Relinked, CopiesOfAnItemStandForOneEntry) {
    add("Play", QString()).setEntry(entry(8, "JavaScript"));
    add("Play", QString()).setEntry(entry(8, "JavaScript"));
    addEntry("Play", entry(17, "JavaScript"));
    EXPECT_EQ(relink().actions, 0U);
    EXPECT_EQ(root.children()[0]->entry().number, 17);
    EXPECT_EQ(root.children()[1]->entry().number, 17);
}

TEST_F(Relinked, AnItemWithoutItsEntryIsNewAndLosesWhatOnlyTheEntryKnew) {
    add("Page", "1").setEntry(entry(7));
    const auto leads = [](const char *type, const char *target) {
        return OutlineEntry{.number = 8, .action = OutlineEntry::Action{type, target}};
    };
    add("Web", QString()).setEntry(leads("URI", "about:blank"));
    add("File", QString()).setEntry(leads("GoToR", "other.pdf"));
    add("File without a name", QString()).setEntry(entry(9, "GoToR"));
    add("Program", QString()).setEntry(entry(10, "Launch"));
    add("Made here", "1");
    outline.setEntry(entry(7));
    EXPECT_EQ(relink().actions, 2U) << "of the program, and of the file without a name";
    for (const auto &item : root.children())
        EXPECT_FALSE(item->entry().number) << "a number of the file before may be anything in this";
    EXPECT_TRUE(root.children()[0]->entry().bold);
}

}  // namespace
}  // namespace leafwright
