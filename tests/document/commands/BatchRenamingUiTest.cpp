#include "document/commands/BatchRenaming.h"
#include "support/TreeWindowFixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class Renaming : public test::TreeWindowFixture {
protected:
    template <typename Field>
    Field *field(const char *name) {
        return qobject_cast<Field *>(document.openSheet()->field(name));
    }
    QStringList titles() {
        QStringList result;
        for (const auto &item : document.root().children())
            result.append(item->pageTitle());
        return result;
    }
    void press(int tag) {
        ASSERT_NE(document.openSheet(), nullptr);
        EXPECT_TRUE(document.openSheet()->pressButton(tag));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(document.openSheet(), nullptr);
    }
};

TEST_F(Renaming, TheExampleFollowsTheFields) {
    setOutline("Intro");
    select({{0}});
    perform("renameSequentialNumbering:");
    field<QLineEdit>("sequentialNumberingPrefixField")->setText("Part");
    field<QSpinBox>("sequentialNumberingFirstNumberField")->setValue(7);
    EXPECT_EQ(field<QLabel>("exampleText")->text(), "Part 7. Intro");
    press(0);
}

TEST_F(Renaming, LowerCaseKnowsTheFinalSigma) {
    setOutline("ΛΌΓΟΣ ΣΟΦΊΑΣ Σ Σ'ΑΣ΄ İΣΑ ΑΣ'Α Α'Σ");
    select({{0}, {1}, {2}, {3}, {4}, {5}, {6}});
    perform("changeCaseToLowerCase:");
    EXPECT_EQ(titles(), (QStringList{"λόγος", "σοφίας", "σ", "σ'ας΄", "i̇σα", "ασ'α", "α'ς"}));
    setOutline("straße ﬁn");
    select({{0}, {1}});
    perform("changeCaseToUpperCase:");
    EXPECT_EQ(titles(), (QStringList{"STRASSE", "FIN"}));
}

TEST_F(Renaming, ACancelledSheetChangesNothing) {
    setOutline("Intro");
    select({{0}});
    for (const char *selector : {"renameSequentialNumbering:", "renameFindReplace:", "renameAddPrefix:"}) {
        perform(selector);
        press(0);
    }
    EXPECT_EQ(titles(), QStringList{"Intro"});
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(Renaming, AnyOtherEndOfASheetThanCancelApplies) {
    setOutline("Intro");
    select({{0}});
    perform("renameAddPrefix:");
    constexpr int someTag = 7;
    document.openSheet()->end(someTag);
    EXPECT_EQ(titles(), QStringList{"Ch Intro"});
}

TEST_F(Renaming, NoLockIsAsked) {
    setOutline("intro");
    document.setAllowTOCediting(false);
    document.setLockTOCediting(true);
    select({{0}});
    perform("changeCaseToUpperCase:");
    document.batchRenaming().renameSelectedTOCItemsWithPrefix("x");
    EXPECT_EQ(titles(), QStringList{"x INTRO"});
    EXPECT_EQ(platform.beeps, 0);
}

TEST_F(Renaming, NumbersWrapAround) {
    setOutline("a b");
    select({{0}, {1}});
    document.batchRenaming().renameSelectedTOCItemsWithPrefix({"", "", " "}, 2147483647, 1);
    EXPECT_EQ(titles(), (QStringList{"2147483647 a", "-2147483648 b"}));
}

TEST_F(Renaming, NumbersMayGoDownToZero) {
    setOutline("a b c");
    select({{0}, {1}, {2}});
    document.batchRenaming().renameSelectedTOCItemsWithPrefix({"", "", "."}, 10, -5);
    EXPECT_EQ(titles(), (QStringList{"10.a", "5.b", "0.c"}));
}

TEST_F(Renaming, AnEmptyPrefixKeepsTheFirstSeparator) {
    setOutline("a");
    select({{0}});
    document.batchRenaming().renameSelectedTOCItemsWithPrefix({"", " ", " "}, 1, 1);
    EXPECT_EQ(titles(), QStringList{" 1 a"});
}

TEST_F(Renaming, FindAndReplaceThroughTheSheet) {
    setOutline("Part part other");
    select({{0}, {1}, {2}});
    perform("renameFindReplace:");
    field<QLineEdit>("findReplaceFindTermText")->setText("PART");
    field<QLineEdit>("findReplaceReplaceTermText")->setText("Teil");
    field<QCheckBox>("findReplaceIgnoreCaseCheck")->setChecked(true);
    press(1);
    EXPECT_EQ(titles(), (QStringList{"Teil", "Teil", "other"}));
}

TEST_F(Renaming, AnEmptyFindTermBeepsAndAnEmptyReplacementDeletes) {
    setOutline("aXbX");
    select({{0}});
    document.batchRenaming().renameSelectedTOCItemsWithFindTerm("", false, "y");
    document.batchRenaming().renameSelectedTOCItemsWithFindTerm("X", false, QString());
    EXPECT_EQ(platform.beeps, 2);
    EXPECT_FALSE(document.isDocumentEdited());
    document.batchRenaming().renameSelectedTOCItemsWithFindTerm("X", false, "");
    EXPECT_EQ(titles(), QStringList{"ab"});
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Renaming, APrefixGoesBeforeABlankAlsoOfAnEmptyTitle) {
    setOutline("a b");
    document.root().children()[1]->setPageTitle("");
    select({{0}, {1}});
    perform("renameAddPrefix:");
    EXPECT_EQ(field<QLineEdit>("addPrefixPrefixTermField")->text(), "Ch");
    press(1);
    EXPECT_EQ(titles(), (QStringList{"Ch a", "Ch "}));
}

TEST_F(Renaming, ChildrenChangeOnlyIfTheyAreSelectedToo) {
    setOutline("a (x)");
    select({{0}});
    perform("changeCaseToUpperCase:");
    EXPECT_EQ(outline(), "A (x)");
    select({{0}, {0, 0}});
    perform("changeCaseToUpperCase:");
    EXPECT_EQ(outline(), "A (X)");
    perform("changeCaseToLowerCase:");
    EXPECT_EQ(outline(), "a (x)");
    document.root().children()[0]->setPageTitle("THE END");
    perform("changeCaseToTitleCase:");
    EXPECT_EQ(document.root().children()[0]->pageTitle(), "The End");
}

TEST_F(Renaming, WithoutASelectionEveryCommandBeeps) {
    setOutline("a");
    select({});
    document.batchRenaming().changeCaseToTitleCase();
    document.batchRenaming().renameSelectedTOCItemsWithPrefix("x");
    document.batchRenaming().renameSelectedTOCItemsWithPrefix({"x", " ", " "}, 1, 1);
    document.batchRenaming().renameSelectedTOCItemsWithFindTerm("a", false, "b");
    EXPECT_EQ(platform.beeps, 4);
    EXPECT_EQ(outline(), "a");
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(Renaming, FindAndReplaceTellsHowManyTitlesChangeAndShowsTheFirst) {
    setOutline("one two too");
    select({{0}, {1}, {2}});
    perform("renameFindReplace:");
    const auto changes = [this] { return field<QLabel>("changesText")->text(); };
    const auto example = [this] { return field<QLabel>("exampleText")->text(); };
    EXPECT_EQ(changes(), "0 of 3 titles change");
    EXPECT_EQ(example(), "one");
    field<QLineEdit>("findReplaceFindTermText")->setText("T");
    EXPECT_EQ(changes(), "0 of 3 titles change");
    field<QCheckBox>("findReplaceIgnoreCaseCheck")->setChecked(true);
    field<QLineEdit>("findReplaceReplaceTermText")->setText("d");
    EXPECT_EQ(changes(), "2 of 3 titles change");
    EXPECT_EQ(example(), "dwo");
    field<QLineEdit>("findReplaceReplaceTermText")->setText("t");
    EXPECT_EQ(changes(), "0 of 3 titles change") << "they would be what they are";
    press(0);
}

}  // namespace
}  // namespace leafwright
