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
    /// An item with the entry that it stands for in the file before.
    MyOutlineItem &addOld(const QString &title, const QString &label, const OutlineEntry &entry) {
        addEntryBefore(title, entry, !label.isNull());
        MyOutlineItem &item = add(title, label);
        item.setEntry(entry);
        return item;
    }
    void addEntryBefore(const QString &title, const OutlineEntry &entry, bool leadsToPage = false) {
        add(outlineBefore, title, entry, leadsToPage);
    }
    void addEntry(const QString &title, const OutlineEntry &entry, bool leadsToPage = false) {
        add(outline, title, entry, leadsToPage);
    }
    static OutlineEntry entry(int number) { return {.number = number, .bold = true}; }
    static OutlineEntry entry(int number, const QString &action) {
        return {.number = number, .bold = true, .action = OutlineEntry::Action{action}};
    }
    LostTargets relink() { return relinkOutline(edits, before, now, entriesInFile(outlineBefore), outline); }
    std::optional<int> number(size_t position) { return root.children().at(position)->entry().number; }

    MyOutlineItem root;
    OutlineEdits edits{root};
    test::FakePages before;
    test::FakePages now;
    PDFOutline outlineBefore;
    PDFOutline outline;

private:
    static void add(PDFOutline &to, const QString &title, const OutlineEntry &entry, bool leadsToPage) {
        PDFOutline &added = to.insertChildAtIndex(std::make_unique<PDFOutline>(title), to.numberOfChildren());
        added.setEntry(entry);
        if (leadsToPage) added.setDestination(PDFDestination{0, {72, 700}});
    }
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
        addOld("Twice", QString(), entry(number, "Launch"));
    addOld("Twice", "1", entry(9));
    addEntry("Twice", entry(16), true);
    addEntry("Twice", entry(17, "Launch"));
    addEntry("Twice", entry(18, "Launch"));
    EXPECT_EQ(relink().actions, 0U);
    EXPECT_EQ(root.children()[0]->entry(), entry(17, "Launch"));
    EXPECT_EQ(root.children()[1]->entry(), entry(18, "Launch"));
    EXPECT_EQ(root.children()[2]->entry(), entry(16));
}

TEST_F(Relinked, EntriesAreFoundByTheTitlesThatTheFileBeforeHas) {
    MyOutlineItem &renamed = addOld("Play", QString(), entry(7, "JavaScript"));
    addOld("Stop", QString(), entry(8, "JavaScript"));
    renamed.setPageTitle("Stop");
    addEntry("Play", entry(17, "JavaScript"));
    addEntry("Stop", entry(18, "JavaScript"));
    EXPECT_EQ(relink().actions, 0U);
    EXPECT_EQ(number(0), 17) << "not the one whose title it has taken";
    EXPECT_EQ(number(1), 18);
    EXPECT_EQ(renamed.pageTitle(), "Stop");
}

TEST_F(Relinked, EntriesAreFoundThoughTheirItemsLeadElsewhere) {
    addOld("Web", QString(), entry(7, "URI")).setPageLabel("1");
    addOld("Page", "1", entry(8)).setPageLabel(QString());
    addEntry("Web", entry(17, "URI"));
    addEntry("Page", entry(18), true);
    relink();
    EXPECT_EQ(number(0), 17);
    EXPECT_EQ(number(1), 18);
}

TEST_F(Relinked, ThereAreSeveralWaysToLeadToAPage) {
    addOld("First", "1", entry(7, "GoTo"));
    addOld("Second", "2", entry(8));
    addEntry("First", entry(17), true);
    addEntry("Second", entry(18, "GoTo"), true);
    relink();
    EXPECT_EQ(number(0), 17);
    EXPECT_EQ(number(1), 18);
}

TEST_F(Relinked, WhatWasAddedToAFileLeavesEntriesTheirNumbers) {
    addOld("Play", QString(), entry(8, "JavaScript"));
    addOld("Exercises", "1", entry(10));
    addOld("Play", QString(), entry(7, "JavaScript"));
    for (const int number : {7, 8, 9})
        addEntry("Play", entry(number, "JavaScript"));
    for (const int number : {10, 11})
        addEntry("Exercises", entry(number), true);
    EXPECT_EQ(relink().actions, 0U);
    EXPECT_EQ(number(0), 8);
    EXPECT_EQ(number(1), 10);
    EXPECT_EQ(number(2), 7);
}

TEST_F(Relinked, NoEntryIsTakenForAnotherThatLooksTheSame) {
    addOld("Play", QString(), entry(8, "JavaScript"));
    addEntry("Play", entry(17, "JavaScript"));
    addEntry("Play", entry(18, "JavaScript"));
    EXPECT_EQ(relink().actions, 1U) << "another one has come";
    EXPECT_FALSE(number(0));
}

TEST_F(Relinked, WhatOtherItemsHaveBecomeDoesNotMatter) {
    addEntryBefore("Play", entry(7, "JavaScript"));
    addOld("Play", QString(), entry(8, "JavaScript"));
    addEntry("Play", entry(17, "JavaScript"));
    EXPECT_EQ(relink().actions, 1U) << "of the file's two one is left, and it may be the other";
    outline.insertChildAtIndex(std::make_unique<PDFOutline>("Play"), 1).setEntry(entry(18, "JavaScript"));
    root.children()[0]->setEntry(entry(8, "JavaScript"));
    EXPECT_EQ(relink().actions, 0U) << "whose item has been removed";
    EXPECT_EQ(number(0), 18);
}

TEST_F(Relinked, ItemsMayHaveBeenMovedAmongThoseThatLookTheSame) {
    for (const int number : {7, 8})
        addEntryBefore("Play", entry(number, "JavaScript"));
    for (const int number : {8, 7})
        add("Play", QString()).setEntry(entry(number, "JavaScript"));
    for (const int number : {17, 18})
        addEntry("Play", entry(number, "JavaScript"));
    EXPECT_EQ(relink().actions, 0U);
    EXPECT_EQ(number(0), 18);
    EXPECT_EQ(number(1), 17);
}

TEST_F(Relinked, EntriesThatWereSavedInAnotherOrderAmongThoseThatLookTheSameAreNotFound) {
    addOld("Play", QString(), entry(8, "JavaScript"));
    addOld("Play", QString(), entry(7, "JavaScript"));
    addEntry("Play", entry(17, "JavaScript"));
    addEntry("Play", entry(18, "JavaScript"));
    EXPECT_EQ(relink().actions, 2U);
}

TEST_F(Relinked, EntriesThatAnotherProgramHasMovedAmongThoseThatLookTheSameAreNotFound) {
    for (const int number : {7, 8})
        addOld("Play", QString(), entry(number, "JavaScript"));
    for (const int number : {9, 10})
        addOld("Stop", QString(), entry(number, "JavaScript"));
    addEntry("Play", entry(8, "JavaScript"));
    addEntry("Play", entry(7, "JavaScript"));
    addEntry("Stop", entry(9, "JavaScript"));
    EXPECT_EQ(relink().actions, 4U) << "numbers would do, but that one is gone speaks against them";
}

TEST_F(Relinked, NumbersThatAFileHasGivenToOthersCountForNothing) {
    addOld("Chapter", "1", entry(5));
    addOld("Play", QString(), entry(8, "JavaScript"));
    addEntry("Chapter", entry(6), true);
    addEntry("Play", entry(8, "JavaScript"));
    addEntry("Play", entry(9, "JavaScript"));
    EXPECT_EQ(relink().actions, 1U) << "the second, which was 8, is 9 now";
    EXPECT_EQ(number(0), 6);
    EXPECT_FALSE(number(1));
}

TEST_F(Relinked, CopiesOfAnItemStandForOneEntry) {
    addOld("Play", QString(), entry(8, "JavaScript"));
    addOld("Play", QString(), entry(8, "JavaScript")).setPageTitle("Play again");
    addEntry("Play", entry(17, "JavaScript"));
    EXPECT_EQ(relink().actions, 0U);
    EXPECT_EQ(number(0), 17);
    EXPECT_EQ(number(1), 17);
}

TEST_F(Relinked, AnEntryThatTheFileBeforeDidNotHaveIsNotLookedFor) {
    add("Play", QString()).setEntry(entry(8, "JavaScript"));
    addEntry("Play", entry(17, "JavaScript"));
    EXPECT_EQ(relink().actions, 1U) << "it was removed, saved, and taken back";
    EXPECT_FALSE(number(0));
}

TEST_F(Relinked, WhatLeadsToItsPageByALabelLosesNothingThatWouldBeTold) {
    addOld("As LaTeX writes it", "1", entry(7, "GoTo"));
    addOld("Given a page", QString(), entry(8, "Launch")).setPageLabel("1");
    EXPECT_EQ(relink().actions, 0U);
    EXPECT_FALSE(number(0));
    EXPECT_FALSE(number(1));
}

TEST_F(Relinked, AnItemWithoutItsEntryIsNewAndLosesWhatOnlyTheEntryKnew) {
    addOld("Page", "1", entry(7));
    const auto leads = [](int number, const char *type, const char *target) {
        return OutlineEntry{.number = number, .action = OutlineEntry::Action{type, target}};
    };
    addOld("Web", QString(), leads(8, "URI", "about:blank"));
    addOld("File", QString(), leads(9, "GoToR", "other.pdf"));
    addOld("File without a name", QString(), entry(10, "GoToR"));
    addOld("Program", QString(), entry(11, "Launch"));
    add("Made here", "1");
    outline.setEntry(entry(7));
    EXPECT_EQ(relink().actions, 2U) << "of the program, and of the file without a name";
    for (const auto &item : root.children())
        EXPECT_FALSE(item->entry().number) << "a number of the file before may be anything in this";
    EXPECT_TRUE(root.children()[0]->entry().bold);
}

}  // namespace
}  // namespace leafwright
