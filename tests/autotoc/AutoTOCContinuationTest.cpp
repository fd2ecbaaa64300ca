#include "autotoc/AutoTOC.h"
#include "support/FakePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::FakePages;
using test::makeFont;
using test::Piece;

const Font body = makeFont("Times", 10);
const Font a = makeFont("Times", 24);
const Font b = makeFont("Times", 18);
const HeadingLevelMap map{levelRecord(1, a), levelRecord(2, b)};

Piece between(int units) {
    return {QString(units, '.'), body};
}

QString titles(const FakePages &pages, int maxDepth = 3) {
    const QStringList all =
        runAutoTOCwithH1H2H3Map(pages, map, maxDepth)->plusDescriptionForLevel(0).split('\n');
    return all.mid(1).join('\n');
}

QString titles(const std::vector<Piece> &pieces, int maxDepth = 3) {
    FakePages pages;
    pages.add("1", pieces);
    return titles(pages, maxDepth);
}

TEST(AutoTOCContinuation, ARunCloseBehindJoinsTheTitle) {
    EXPECT_EQ(titles({{"The first part", a}, {" * ", body}, {"and the rest", a}}),
              "+ @1 The first part and the rest\n");
}

TEST(AutoTOCContinuation, TheWindowIsLessThanFifteenCharacters) {
    EXPECT_EQ(titles({{"First", a}, between(14), {"Second", a}}), "+ @1 First Second\n");
    EXPECT_EQ(titles({{"First", a}, between(15), {"Second", a}}), "+ @1 First\n+ @1 Second\n");
}

TEST(AutoTOCContinuation, TheWindowStartsAtTheEndOfTheRunBlanksIncluded) {
    EXPECT_EQ(titles({{"First   \n", a}, between(14), {"Second", a}}), "+ @1 First Second\n");
    EXPECT_EQ(titles({{"First   \n", a}, between(15), {"Second", a}}), "+ @1 First\n+ @1 Second\n");
}

TEST(AutoTOCContinuation, EveryContinuationMovesTheWindow) {
    EXPECT_EQ(titles({{"First", a}, between(14), {"Second", a}, between(14), {"Third", a}}),
              "+ @1 First Second Third\n");
}

TEST(AutoTOCContinuation, BlanksShrinkInTheFirstPartOnly) {
    EXPECT_EQ(titles({{" The   first\npart ", a}, {"*", body}, {" and   the\n rest ", a}}),
              "+ @1 The first part and   the  rest\n");
}

TEST(AutoTOCContinuation, AJoinedTitleMayBeLong) {
    const QString sixty(60, 'x');
    EXPECT_EQ(titles({{sixty, a}, {"*", body}, {sixty, a}}), "+ @1 " + sixty + " " + sixty + "\n");
}

TEST(AutoTOCContinuation, PointAndLabelStayThoseOfTheFirstPart) {
    FakePages pages;
    pages.add("1", {{"First", a}, {"*", body}, {"Second", a}});
    const auto top = runAutoTOCwithH1H2H3Map(pages, map, 3);
    ASSERT_EQ(top->children().size(), 1U);
    EXPECT_EQ(top->children()[0]->pointOnPage(), QPointF(10, 120));
}

TEST(AutoTOCContinuation, TooShortAPartIsNotJoined) {
    EXPECT_EQ(titles({{"First", a}, {"*", body}, {"and", a}}), "+ @1 First\n");
}

TEST(AutoTOCContinuation, AnotherFontOfTheSameLevelJoinsToo) {
    const HeadingLevelMap twoFonts{levelRecord(1, a), levelRecord(1, b)};
    FakePages pages;
    pages.add("1", {{"Chapter One", a}, {"Getting started", b}});
    EXPECT_EQ(runAutoTOCwithH1H2H3Map(pages, twoFonts, 3)->plusDescriptionForLevel(0),
              " @1 AutoTOC3\n+ @1 Chapter One Getting started\n");
}

TEST(AutoTOCContinuation, ADeeperLevelIsNeverJoined) {
    EXPECT_EQ(titles({{"Chapter", a}, {"Section", b}}), "+ @1 Chapter\n++ @1 Section\n");
}

TEST(AutoTOCContinuation, AShallowerLevelIsNeverJoined) {
    EXPECT_EQ(titles({{"Chapter", a}, {"Section", b}, {"Another", a}}),
              "+ @1 Chapter\n++ @1 Section\n+ @1 Another\n");
}

TEST(AutoTOCContinuation, ALevelBelowItsDepthIsNotJoinedButNested) {
    const HeadingLevelMap onlyThree{levelRecord(3, a)};
    FakePages pages;
    pages.add(
        "1",
        {{"First", a}, {"*", body}, {"Second", a}, {"*", body}, {"Third", a}, {"*", body}, {"Fourth", a}});
    EXPECT_EQ(runAutoTOCwithH1H2H3Map(pages, onlyThree, 3)->plusDescriptionForLevel(0),
              " @1 AutoTOC3\n+ @1 First\n++ @1 Second\n+++ @1 Third Fourth\n");
}

TEST(AutoTOCContinuation, ADroppedHeadingDoesNotMoveTheWindow) {
    EXPECT_EQ(titles({{"Chapter", a}, {"Dropped section", b}, {"Another", a}}, 1),
              "+ @1 Chapter\n+ @1 Another\n");
    EXPECT_EQ(titles({{"Chapter", a}, {"Dropped", b}, {"goes on", a}}, 1), "+ @1 Chapter goes on\n");
}

TEST(AutoTOCContinuation, PagesWithDifferentLabelsAreNotJoined) {
    FakePages pages;
    pages.add("1", {{"At the end", a}}).add("2", {{"At the start", a}});
    EXPECT_EQ(titles(pages), "+ @1 At the end\n+ @2 At the start\n");
}

TEST(AutoTOCContinuation, TheLastEndIsKeptFromPageToPage) {
    // Both pages bear one label, and the places in their texts are compared as if on one page.
    FakePages pages;
    pages.add("1", {between(40), {"At the end", a}}).add("1", {between(64), {"go on", a}});
    EXPECT_EQ(titles(pages), "+ @1 At the end go on\n");
    FakePages farther;
    farther.add("1", {between(40), {"At the end", a}}).add("1", {between(65), {"go on", a}});
    EXPECT_EQ(titles(farther), "+ @1 At the end\n+ @1 go on\n");
}

}  // namespace
}  // namespace leafwright
