#include "model/OutlineEdits.h"
#include "support/QtPrinters.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using testing::ElementsAre;
using Transaction = OutlineEdits::Transaction;

std::unique_ptr<MyOutlineItem> newItem(const QString &title) {
    auto item = std::make_unique<MyOutlineItem>();
    item->setPageTitle(title);
    return item;
}

/// An outline of three entries, "A", "B" and "C".
class OutlineEditsTest : public testing::Test {
protected:
    OutlineEditsTest() {
        for (const char *title : {"A", "B", "C"})
            edits.insert(root, root.children().size(), newItem(title));
        edits.forgetHistory();
        edits.setSavedRevision(edits.revision());
        edits.setEditedHandler([this](bool edited) { told.push_back(edited); });
    }

    MyOutlineItem &at(size_t position) { return *root.children()[position]; }
    QString titles() const {
        QString text;
        for (const auto &item : root.children())
            text += item->pageTitle();
        return text;
    }

    MyOutlineItem root;
    OutlineEdits edits{root};
    std::vector<bool> told;
};

TEST_F(OutlineEditsTest, IsEditedFromTheFirstChangeUntilAllIsSaved) {
    edits.countChange();
    edits.setPageTitle(at(0), "X");
    EXPECT_TRUE(edits.isEdited());
    edits.setSavedRevision(edits.revision());
    EXPECT_FALSE(edits.isEdited());
    EXPECT_THAT(told, ElementsAre(true, false));
}

TEST_F(OutlineEditsTest, StaysEditedWhereAnOlderRevisionIsSaved) {
    edits.setPageTitle(at(0), "X");
    const quint64 written = edits.revision();
    edits.setPageTitle(at(0), "Y");
    edits.setSavedRevision(written);
    EXPECT_TRUE(edits.isEdited());
    edits.undo();
    EXPECT_FALSE(edits.isEdited()) << "that is what was written";
    edits.redo();
    EXPECT_TRUE(edits.isEdited());
}

TEST_F(OutlineEditsTest, ARevisionIsNeverThatOfAnotherState) {
    edits.setPageTitle(at(0), "X");
    const quint64 first = edits.revision();
    edits.undo();
    edits.setPageTitle(at(0), "Y");
    EXPECT_NE(edits.revision(), first);
}

TEST_F(OutlineEditsTest, ATransactionIsTakenBackAsAWhole) {
    const quint64 before = edits.revision();
    {
        const Transaction edit(edits, "everything:");
        edits.insert(root, 1, newItem("X"));
        edits.move({&root, 0, 1, &root, 4});
        edits.remove(root, 2);
        const Transaction within(edits, "within:");
        edits.setPageTitle(at(0), "Y");
        edits.setPageLabel(at(0), "ix");
        edits.setPointOnPage(at(0), {1, 2});
        edits.setEntry(at(0), {.number = 7, .bold = true});
    }
    EXPECT_EQ(titles(), "YBA");
    EXPECT_EQ(edits.revision(), before + 1);
    EXPECT_EQ(edits.undoSummary().name, "everything:");
    edits.undo();
    EXPECT_EQ(titles(), "ABC");
    EXPECT_EQ(edits.revision(), before);
    EXPECT_FALSE(edits.canUndo());
    EXPECT_EQ(edits.redoSummary().name, "everything:");
    edits.redo();
    EXPECT_EQ(titles(), "YBA");
    EXPECT_EQ(at(0).pageLabel(), "ix");
    EXPECT_EQ(at(0).pointOnPage(), QPointF(1, 2));
    EXPECT_EQ(at(0).entry().number, 7);
}

TEST_F(OutlineEditsTest, ALabelComesBackWithThePageThatItCameWith) {
    at(0).setImportedPage(4);
    edits.setPageLabel(at(0), "2");
    EXPECT_FALSE(at(0).importedPage());
    edits.undo();
    EXPECT_EQ(at(0).pageLabel(), "1");
    EXPECT_EQ(at(0).importedPage(), 4);
}

TEST_F(OutlineEditsTest, AllChildrenLeaveTogetherAndComeBack) {
    const MyOutlineItem *first = &at(0);
    edits.removeAll(root);
    EXPECT_EQ(titles(), "");
    edits.undo();
    EXPECT_EQ(titles(), "ABC");
    EXPECT_EQ(&at(0), first);
}

TEST_F(OutlineEditsTest, WhatIsNotCountedIsTakenBackAllTheSame) {
    {
        const Transaction edit(edits, "quietly:", OutlineEdits::Counting::No);
        edits.remove(root, 0);
    }
    EXPECT_FALSE(edits.isEdited());
    EXPECT_EQ(titles(), "BC");
    edits.undo();
    EXPECT_FALSE(edits.isEdited());
    EXPECT_EQ(titles(), "ABC");
}

TEST_F(OutlineEditsTest, AChangeOfNothingIsTakenBackWithTheOneBefore) {
    edits.setPageTitle(at(0), "X");
    edits.countChange();
    const quint64 last = edits.revision();
    edits.undo();
    EXPECT_FALSE(edits.isEdited());
    edits.redo();
    EXPECT_EQ(edits.revision(), last);
}

TEST_F(OutlineEditsTest, AChangeEndsWhatCouldBeDoneAgain) {
    edits.setPageTitle(at(0), "X");
    edits.undo();
    edits.setPageTitle(at(1), "Y");
    EXPECT_FALSE(edits.canRedo());
    EXPECT_EQ(edits.redoSummary().name, QString());
}

TEST_F(OutlineEditsTest, AStepThatFailsIsNone) {
    EXPECT_THROW(edits.insert(root, 4, newItem("X")), std::out_of_range);
    EXPECT_THROW(edits.remove(root, 3), std::out_of_range);
    EXPECT_FALSE(edits.isEdited());
    EXPECT_FALSE(edits.canUndo());
    {
        const Transaction edit(edits, "some:");
        edits.setPageTitle(at(0), "X");
        EXPECT_THROW(edits.remove(root, 3), std::out_of_range);
    }
    edits.undo();
    EXPECT_EQ(titles(), "ABC");
}

TEST_F(OutlineEditsTest, NothingIsTakenBackAmidATransactionOrBeforeAny) {
    EXPECT_THROW(edits.undo(), std::logic_error);
    EXPECT_THROW(edits.redo(), std::logic_error);
    edits.setPageTitle(at(0), "X");
    const Transaction edit(edits, "open:");
    EXPECT_THROW(edits.undo(), std::logic_error);
}

TEST_F(OutlineEditsTest, ItemsKeepTheirIdentitiesWhereverTheyAre) {
    std::vector<quint64> identities;
    for (const auto &item : root.children())
        identities.push_back(item->identity());
    EXPECT_EQ(std::set<quint64>(identities.begin(), identities.end()).size(), 3u);
    EXPECT_FALSE(std::ranges::count(identities, 0));
    edits.move({&root, 0, 1, &at(1), 0});
    EXPECT_EQ(at(0).children()[0]->identity(), identities[0]);
    edits.remove(root, 0);
    auto coming = newItem("X");
    coming->appendChild(newItem("Y"));
    edits.insert(root, 0, std::move(coming));
    EXPECT_FALSE(std::ranges::count(identities, at(0).identity()));
    EXPECT_FALSE(std::ranges::count(identities, at(0).children()[0]->identity()));
    edits.undo();
    edits.undo();
    EXPECT_EQ(at(0).identity(), identities[1]);
}

TEST_F(OutlineEditsTest, TheOldestIsForgottenWhenThereIsTooMuchToKeep) {
    constexpr qsizetype longTitle = 1'000'000;
    constexpr size_t bytes = 5 * longTitle;
    edits.setHeaviestHistory(bytes);
    for (const char letter : {'1', '2', '3', '4'})  // each keeps the title before, two bytes a letter
        edits.setPageTitle(at(0), QString(longTitle, QLatin1Char(letter)));
    int count = 0;
    for (; edits.canUndo(); ++count)
        edits.undo();
    EXPECT_EQ(count, 2);
    EXPECT_EQ(at(0).pageTitle().front(), u'2');
}

TEST_F(OutlineEditsTest, AQuarterOfAGigabyteIsKept) {
    // Each step counts its title, though the titles share their letters here.
    constexpr qsizetype mebibyteOfLetters = (1 << 20) / sizeof(QChar);
    const QString titles[] = {QString(64 * mebibyteOfLetters, u'a'), QString(64 * mebibyteOfLetters, u'b')};
    for (size_t i = 0; i < 8; ++i)
        edits.setPageTitle(at(0), titles[i % 2]);
    int count = 0;
    for (; edits.canUndo(); ++count)
        edits.undo();
    EXPECT_EQ(count, 3) << "of 64 MiB each, and little more";
}

TEST_F(OutlineEditsTest, SiblingsGoAndComeBackTogether) {
    const QString before = titles();
    edits.remove(root, 1, 2);
    EXPECT_EQ(root.children().size(), 1U);
    edits.remove(root, 0, 0);
    EXPECT_EQ(edits.undoSummary().itemsGone, 2U) << "to remove none is no step";
    edits.undo();
    EXPECT_EQ(titles(), before);
    edits.redo();
    EXPECT_EQ(root.children().size(), 1U);
    EXPECT_THROW(edits.remove(root, 0, 2), std::out_of_range);
}

TEST_F(OutlineEditsTest, ManyItemsAreTooMuchAsWell) {
    auto item = newItem("many");
    for (int i = 0; i < 10'000; ++i)
        item->appendChild(newItem("below"));
    edits.insert(root, 0, std::move(item));
    edits.forgetHistory();
    edits.setHeaviestHistory(1'000'000);
    edits.setPageTitle(at(1), "X");
    edits.remove(root, 0);
    edits.undo();
    EXPECT_FALSE(edits.canUndo());
    EXPECT_EQ(edits.redoSummary().itemsGone, 10'001U);
}

TEST_F(OutlineEditsTest, AValueThatWasThatAlreadyIsNoStep) {
    edits.setPageTitle(at(0), "A");
    edits.setPointOnPage(at(0), at(0).pointOnPage());
    edits.setEntry(at(0), at(0).entry());
    edits.setPageLabel(at(0), at(0).pageLabel());
    EXPECT_FALSE(edits.canUndo());
    EXPECT_TRUE(edits.isEdited()) << "it counts all the same";
    edits.setPageTitle(at(0), "");
    edits.setPageTitle(at(0), QString());
    edits.undo();
    EXPECT_FALSE(at(0).pageTitle().isNull()) << "an absent title is not an empty one";
}

/// Looks as it is told, and notes that.
class NotedDisplay : public OutlineDisplay {
public:
    OutlineLook look() const override { return look_; }
    void setLook(const OutlineLook &look) override { look_ = look; }
    void beginManyChanges() override { EXPECT_EQ(++open_, 1); }
    void endManyChanges() override { EXPECT_EQ(--open_, 0); }
    int open_ = 0;
    OutlineLook look_;
};

TEST_F(OutlineEditsTest, WhatIsTakenBackLooksAsItDidBefore) {
    NotedDisplay display;
    edits.setDisplay(&display);
    const OutlineLook before{{1}, {2, 3}};
    const OutlineLook after{{4}, {}};
    display.look_ = before;
    edits.setPageTitle(at(0), "X");
    display.look_ = after;
    edits.undo();
    EXPECT_EQ(display.look_, before);
    edits.redo();
    EXPECT_EQ(display.look_, after);
    edits.setDisplay(nullptr);
    edits.undo();
    EXPECT_EQ(display.look_, after);
}

/// What undo() can take back, and so what is kept.
int countOfUndo(OutlineEdits &edits) {
    int count = 0;
    for (; edits.canUndo(); ++count)
        edits.undo();
    return count;
}

TEST_F(OutlineEditsTest, LooksAreKeptAsWell) {
    constexpr size_t selected = 10'000;
    NotedDisplay display;
    edits.setDisplay(&display);
    const auto rename = [&](bool looksNew) {
        for (const char *title : {"1", "2", "3", "4", "5", "6"}) {
            if (looksNew) display.look_.selected.assign(selected, *title);
            edits.setPageTitle(at(0), title);
        }
    };
    edits.setHeaviestHistory(7 * selected * sizeof(quint64) / 2);
    display.look_.selected.assign(selected, 9);
    rename(false);
    EXPECT_EQ(countOfUndo(edits), 6) << "all of them share one look";
    edits.forgetHistory();
    rename(true);
    EXPECT_EQ(countOfUndo(edits), 3);
}

TEST_F(OutlineEditsTest, LooksThatWereShownAgainAreKeptOnce) {
    constexpr size_t selected = 10'000;
    NotedDisplay display;
    edits.setDisplay(&display);
    edits.setHeaviestHistory(9 * selected * sizeof(quint64) / 2);
    for (const char *title : {"1", "2", "3", "4"}) {
        display.look_.selected.assign(selected, *title);
        edits.setPageTitle(at(0), title);
    }
    EXPECT_EQ(countOfUndo(edits), 4);
    int redone = 0;
    for (; edits.canRedo(); ++redone)
        edits.redo();
    EXPECT_EQ(redone, 4);
    EXPECT_EQ(at(0).pageTitle(), "4");
}

TEST_F(OutlineEditsTest, WhatWasTakenBackIsKeptAsWell) {
    edits.setHeaviestHistory(1'000'000);
    for (int i = 0; i < 3; ++i) {
        auto item = newItem("many");
        for (int j = 0; j < 1'500; ++j)
            item->appendChild(newItem("below"));
        edits.insert(root, 0, std::move(item));
    }
    const auto before = root.children().size();
    EXPECT_EQ(countOfUndo(edits), 3);
    int redone = 0;
    for (; edits.canRedo(); ++redone)
        edits.redo();
    EXPECT_LT(redone, 3) << "what was taken back first is forgotten";
    EXPECT_GE(redone, 1);
    EXPECT_EQ(root.children().size(), before - 3U + size_t(redone));
}

TEST_F(OutlineEditsTest, WhatEntriesDoIsKeptAsWell) {
    constexpr qsizetype longAddress = 1'000'000;
    edits.setHeaviestHistory(5 * longAddress);
    for (const char letter : {'1', '2', '3', '4'})  // each keeps the entry before, two bytes a letter
        edits.setEntry(at(0),
                       {.action = OutlineEntry::Action{"URI", QString(longAddress, QLatin1Char(letter))}});
    EXPECT_EQ(countOfUndo(edits), 2);
}

TEST_F(OutlineEditsTest, ChangesOfTheHistoryAreTold) {
    int changes = 0;
    edits.setHistoryHandler([&changes] { ++changes; });
    edits.setPageTitle(at(0), "X");
    edits.undo();
    edits.redo();
    edits.forgetHistory();
    EXPECT_EQ(changes, 4);
}

TEST_F(OutlineEditsTest, TheLastIsKeptHoweverHeavy) {
    edits.setHeaviestHistory(1);
    edits.removeAll(root);
    edits.undo();
    EXPECT_EQ(titles(), "ABC");
}

TEST_F(OutlineEditsTest, ADefaultPointIsNoChange) {
    edits.setPageTitle(at(0), "X");
    OutlineEdits::setDefaultPoint(at(0), {306, 792});
    edits.undo();
    EXPECT_FALSE(edits.isEdited());
    EXPECT_EQ(at(0).pointOnPage(), QPointF(306, 792));
}

}  // namespace
}  // namespace leafwright
