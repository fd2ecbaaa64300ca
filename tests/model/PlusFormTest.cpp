#include "model/MyOutlineItem.h"
#include "support/OutlineItems.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace leafwright {
namespace {

using test::makeItem;

std::unique_ptr<MyOutlineItem> parse(const QString &line) {
    return MyOutlineItem::initWithPlusString(line);
}

TEST(PlusForm, WritesALineAnItemWithItsDepth) {
    const auto chapter = makeItem({"Chapter One", "5", {72, 700}, {{"First Section", "7"}}});
    EXPECT_EQ(chapter->plusDescriptionForLevel(1), "+ @5 Chapter One\n++ @7 First Section\n");
}

TEST(PlusForm, LevelZeroLinesBeginWithTheBlank) {
    const auto top = makeItem({"A", "1", {}, {{"B", "2", {}, {{"C", "3"}}}, {"D", "4"}}});
    EXPECT_EQ(top->plusDescriptionForLevel(0), " @1 A\n+ @2 B\n++ @3 C\n+ @4 D\n");
}

TEST(PlusForm, NegativeLevelsHaveNoPlusAndCountUp) {
    const auto top = makeItem({"A", "1", {}, {{"B", "2", {}, {{"C", "3", {}, {{"D", "4"}}}}}}});
    EXPECT_EQ(top->plusDescriptionForLevel(-2), " @1 A\n @2 B\n @3 C\n+ @4 D\n");
}

TEST(PlusForm, WritesTitlesAndLabelsAsTheyAre) {
    EXPECT_EQ(makeItem({"a @b\nc", "A 1"})->plusDescriptionForLevel(1), "+ @A 1 a @b\nc\n");
}

TEST(PlusForm, ReadsLabelAndTitle) {
    const auto item = parse("++ @ii The Title");
    ASSERT_TRUE(item);
    EXPECT_EQ(item->pluslevelstr(), "++");
    EXPECT_EQ(item->pageLabel(), "ii");
    EXPECT_EQ(item->pageTitle(), "The Title");
}

TEST(PlusForm, ReadItemHasNothingElse) {
    const auto item = parse("++ @ii The Title");
    ASSERT_TRUE(item);
    EXPECT_EQ(item->levelnum(), 0U);
    EXPECT_TRUE(item->levelstr().isNull());
    EXPECT_TRUE(item->children().empty());
    EXPECT_EQ(item->pointOnPage(), QPointF(0, 0));
    EXPECT_EQ(item->initiallevel(), 0U);
}

TEST(PlusForm, ALevelZeroLineHasAnEmptyPlusRun) {
    const auto item = parse(" @3 Title");
    ASSERT_TRUE(item);
    EXPECT_TRUE(item->pluslevelstr().isEmpty());
    EXPECT_FALSE(item->pluslevelstr().isNull());
    EXPECT_EQ(item->pageLabel(), "3");
    EXPECT_EQ(item->pageTitle(), "Title");
}

TEST(PlusForm, TitleKeepsItsBlanksAndALineFeed) {
    EXPECT_EQ(parse("+ @3 A  B \n")->pageTitle(), "A  B \n");
    EXPECT_EQ(parse("+ @3  A")->pageTitle(), " A");
}

TEST(PlusForm, TitleMayBeEmpty) {
    const auto item = parse("+ @3 ");
    ASSERT_TRUE(item);
    EXPECT_EQ(item->pageLabel(), "3");
    EXPECT_TRUE(item->pageTitle().isEmpty());
}

TEST(PlusForm, LabelLosesItsFirstCharacterWhateverItIs) {
    EXPECT_EQ(parse("+ x3 Title")->pageLabel(), "3");
    const auto unlabelled = parse("+ @ Title");
    EXPECT_TRUE(unlabelled->pageLabel().isEmpty());
    EXPECT_EQ(unlabelled->pageTitle(), "Title");
}

TEST(PlusForm, LinesWithFewerThanThreeFieldsFail) {
    EXPECT_FALSE(parse("+ @3"));
    EXPECT_FALSE(parse("+"));
    EXPECT_FALSE(parse(""));
    EXPECT_FALSE(parse(QString()));
}

TEST(PlusForm, TwoBlanksBetweenTheFieldsAreARangeError) {
    EXPECT_THROW(parse("+  @3 Title"), std::out_of_range);
}

TEST(PlusForm, WrittenLinesAreReadAgain) {
    const auto top = makeItem({"Chapter One", "5", {}, {{"A @ B + C", "vii"}}});
    const QStringList lines = top->plusDescriptionForLevel(1).split('\n');
    ASSERT_EQ(lines.size(), 3);
    const auto chapter = parse(lines[0]);
    const auto section = parse(lines[1]);
    EXPECT_EQ(chapter->pageTitle(), "Chapter One");
    EXPECT_EQ(chapter->pageLabel(), "5");
    EXPECT_EQ(chapter->pluslevelstr().size(), 1);
    EXPECT_EQ(section->pageTitle(), "A @ B + C");
    EXPECT_EQ(section->pageLabel(), "vii");
    EXPECT_EQ(section->pluslevelstr().size(), 2);
}

TEST(PlusForm, ALabelWithABlankSpillsIntoTheTitle) {
    const auto item = parse("+ @A 1 Title");
    EXPECT_EQ(item->pageLabel(), "A");
    EXPECT_EQ(item->pageTitle(), "1 Title");
}

}  // namespace
}  // namespace leafwright
