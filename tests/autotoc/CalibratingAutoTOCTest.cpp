#include "autotoc/CalibratingAutoTOC.h"
#include "categories/FontIdentity.h"
#include "support/FakePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::FakePages;
using test::makeFont;
using test::Piece;

/// One page with headings of fonts h(1), the largest, to h(9), each with a paragraph behind it that keeps the
/// next one from continuing it.
class CalibratingAutoTOC : public testing::Test {
protected:
    CalibratingAutoTOC() {
        for (int level = 9; level >= 1; --level)
            fonts.append(fontString(h(level)));
    }

    static Font h(int level) { return makeFont("Times", 40 - 2 * level); }
    void add(int level, const QString &text) { add(h(level), text); }
    void add(const Font &font, const QString &text) {
        pieces.push_back({text, font});
        pieces.push_back({" body text that is longer than the window ", body});
    }
    QString run(int maxDepth = 9) const {
        FakePages pages;
        pages.add("7", pieces);
        QString lines =
            runCalibratingAutoTOC(pages, CalibratedLevels(fonts), maxDepth)->plusDescriptionForLevel(0);
        return lines.remove(0, lines.indexOf('\n') + 1).remove(" @7");
    }

    Font body = makeFont("Times", 10);
    QStringList fonts;
    std::vector<Piece> pieces;
};

TEST_F(CalibratingAutoTOC, LevelsInTurnNestInTurn) {
    add(1, "Chapter One");
    add(2, "Section Alpha");
    add(3, "Detail Below");
    add(2, "Section Beta");
    add(1, "Chapter Two");
    EXPECT_EQ(run(), "+ Chapter One\n++ Section Alpha\n+++ Detail Below\n++ Section Beta\n+ Chapter Two\n");
}

TEST_F(CalibratingAutoTOC, TopItemIsThatOfAutoTOC) {
    FakePages pages;
    pages.add("iv", {}).add("v", {});
    const auto top = runCalibratingAutoTOC(pages, CalibratedLevels(fonts), 12);
    EXPECT_EQ(top->plusDescriptionForLevel(0), " @iv AutoTOC12\n");
    EXPECT_TRUE(runCalibratingAutoTOC(FakePages(), CalibratedLevels(fonts), 3)->pageLabel().isNull());
}

TEST_F(CalibratingAutoTOC, AFirstHeadingOfLevelThreeGetsDepthOneAndItsFontLevelOne) {
    add(3, "First heading");
    add(3, "Second heading");
    EXPECT_EQ(run(), "+ First heading\n+ Second heading\n");
}

TEST_F(CalibratingAutoTOC, AFirstHeadingOfLevelFourIsDropped) {
    add(4, "Too deep");
    add(1, "Chapter One");
    EXPECT_EQ(run(), "+ Chapter One\n");
}

TEST_F(CalibratingAutoTOC, SmallerFontsFollowTheOneThatWasCorrected) {
    add(3, "Level three is one");
    add(4, "Four is two");
    add(5, "Five is three");
    add(4, "Four is two still");
    add(3, "Three is one still");
    EXPECT_EQ(run(),
              "+ Level three is one\n++ Four is two\n+++ Five is three\n++ Four is two still\n"
              "+ Three is one still\n");
}

TEST_F(CalibratingAutoTOC, ASkippedLevelIsClosed) {
    add(1, "Chapter One");
    add(4, "Level four is two");
    add(4, "Another of it");
    add(1, "Chapter Two");
    add(4, "And one more");
    EXPECT_EQ(run(),
              "+ Chapter One\n++ Level four is two\n++ Another of it\n+ Chapter Two\n++ And one more\n");
}

TEST_F(CalibratingAutoTOC, FourLevelsDeeperThanTheDepthAreDropped) {
    add(1, "Chapter One");
    add(5, "Too deep");
    add(4, "Not too deep");
    EXPECT_EQ(run(), "+ Chapter One\n++ Not too deep\n");
}

TEST_F(CalibratingAutoTOC, MoreThanFiveLevelsBelowTheLastAreSkipped) {
    add(1, "Chapter One");
    add(7, "Skipped");
    add(2, "Section Alpha");
    EXPECT_EQ(run(), "+ Chapter One\n++ Section Alpha\n");
}

TEST_F(CalibratingAutoTOC, ALargerFontKeepsItsLevelAndSendsTheSmallerBehindIt) {
    add(3, "Level three is one");
    add(1, "So is level one");
    add(2, "Level two is two");
    add(3, "Level three is three again");
    EXPECT_EQ(
        run(),
        "+ Level three is one\n+ So is level one\n++ Level two is two\n+++ Level three is three again\n");
}

TEST_F(CalibratingAutoTOC, BelowTheDeepestLevelFontsAreCorrectedAllTheSame) {
    add(1, "Chapter One");
    add(2, "Section Alpha");
    add(5, "Dropped, but its level is three now");
    add(1, "Chapter Two");
    add(6, "Level six is four, near enough");
    EXPECT_EQ(run(2), "+ Chapter One\n++ Section Alpha\n+ Chapter Two\n++ Level six is four, near enough\n");
    EXPECT_EQ(run(0), "");
}

TEST_F(CalibratingAutoTOC, CloseRunsOfOneLevelAreJoined) {
    pieces = {{"The first", h(1)}, {" * ", body}, {"and the  rest", h(1)}, {" * ", body}, {"Section", h(2)}};
    EXPECT_EQ(run(), "+ The first and the  rest\n++ Section\n");
    pieces = {{"The first", h(1)}, {QString(15, '.'), body}, {"The second", h(1)}};
    EXPECT_EQ(run(), "+ The first\n+ The second\n");
}

TEST_F(CalibratingAutoTOC, FontsAreToldApartByTheirFontStrings) {
    add(makeFont("Times", 37.6), "Chapter One");
    add(makeFont("Times", 38.4), "Chapter Two");
    add(makeFont("Times", 38, BoldTrait), "Not in the list");
    EXPECT_EQ(run(), "+ Chapter One\n+ Chapter Two\n");
}

TEST_F(CalibratingAutoTOC, HeadingsHaveFourToSixtyUnitsAndLetters) {
    add(1, "1.2");
    add(1, "Ch 1");
    add(1, QString(61, 'x'));
    add(1, "1234 a");
    EXPECT_EQ(run(), "+ Ch 1\n");
}

TEST_F(CalibratingAutoTOC, ItemsLeadToTheirSpotsUnlessThoseAreNotWanted) {
    FakePages pages;
    pages.add("1", {{"Some text ", body}, {"Chapter", h(1)}});
    const CalibratedLevels levels(fonts);
    EXPECT_EQ(runCalibratingAutoTOC(pages, levels, 3, true)->children().at(0)->pointOnPage(),
              QPointF(20, 220));
    EXPECT_EQ(runCalibratingAutoTOC(pages, levels, 3, false)->children().at(0)->pointOnPage(), QPointF());
}

TEST_F(CalibratingAutoTOC, TheLevelsToBeginWithStayAsTheyWere) {
    FakePages pages;
    pages.add("1", {{"Chapter", h(3)}});
    const CalibratedLevels levels(fonts);
    runCalibratingAutoTOC(pages, levels, 3);
    EXPECT_EQ(levels.level(fontString(h(3))), 3);
}

TEST_F(CalibratingAutoTOC, WithoutFontsThereIsOnlyTheTopItem) {
    fonts.clear();
    add(1, "Chapter One");
    EXPECT_EQ(run(), "");
}

TEST(LevelGate, ALevelMoreThanFiveBelowTheLastDoesNotPassNorCount) {
    LevelGate gate;
    EXPECT_FALSE(gate.pass(6));
    EXPECT_TRUE(gate.pass(1));
    EXPECT_FALSE(gate.pass(7));
    EXPECT_FALSE(gate.pass(7)) << "the first did not count";
    EXPECT_TRUE(gate.pass(6));
    EXPECT_TRUE(gate.pass(7)) << "six did";
    EXPECT_TRUE(gate.pass(1));
}

}  // namespace
}  // namespace leafwright
