#include "contents/HeadingBlocks.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;
using test::TextLook;

/// Whether two lines are one block, above running text in a page 600 points wide.
bool areOne(const MadePages &pages, const QString &both) {
    std::vector<PageLines> lines = readAllLines(pages, {}, [](int) {});
    const BodyStyle body = findBodyStyle(lines);
    return makeBlocks(lines, body).front().text == both;
}

struct Line {
    QString text;
    double size = 14;
    double left = 60;
};

bool areOne(const Line &upper, const Line &lower, double gap) {
    MadePages pages = MadePages().page().text(upper.left, 60, upper.text, boldLook(upper.size));
    pages.text(lower.left, 60 + gap, lower.text, boldLook(lower.size)).paragraph(300, 20);
    return areOne(pages, upper.text + u' ' + lower.text);
}

QString wide(qsizetype length) {
    return QString(length, u'w');
}

TEST(HeadingBlocks, LinesOfOneHaveNearlyOneSize) {
    EXPECT_TRUE(areOne({wide(40)}, {"Other", 14.5}, 17));
    EXPECT_FALSE(areOne({wide(40)}, {"Other", 14.75}, 17));
}

TEST(HeadingBlocks, ALongLineInCapitalsIsAnother) {
    EXPECT_TRUE(areOne({wide(40)}, {QString(12, u'W')}, 17));
    EXPECT_FALSE(areOne({wide(40)}, {QString(13, u'W')}, 17));
}

TEST(HeadingBlocks, LargeTitlesAreSetFurtherApart) {
    EXPECT_FALSE(areOne({wide(40), 13}, {"Other", 13}, 19));
    EXPECT_TRUE(areOne({wide(40), 13.25}, {"Other", 13.25}, 19));
    EXPECT_TRUE(areOne({wide(40), 12}, {"Other", 12}, 17)) << "give or take half a point";
    EXPECT_FALSE(areOne({wide(40), 12}, {"Other", 12}, 17.1));
}

TEST(HeadingBlocks, AShortLineEndsOneUnlessItIsCentred) {
    EXPECT_FALSE(areOne({wide(28)}, {"Other"}, 17)) << "less than a third of the width";
    EXPECT_TRUE(areOne({wide(29)}, {"Other"}, 17));
    // Both are 70 points wide.
    EXPECT_TRUE(areOne({wide(10), 14, 265}, {"Wwwwwwwwww", 14, 267.5}, 17));
    EXPECT_FALSE(areOne({wide(10), 14, 265}, {"Wwwwwwwwww", 14, 268.5}, 17));
}

TEST(HeadingBlocks, AShortSentenceEndsOneEvenThen) {
    EXPECT_FALSE(
        areOne({wide(24) + u'?', 14, 200}, {QString(25, u'W').toLower().replace(0, 1, "W"), 14, 200}, 17));
    EXPECT_TRUE(
        areOne({wide(25) + u'?', 14, 200}, {QString(26, u'W').toLower().replace(0, 1, "W"), 14, 200}, 17));
}

TEST(HeadingBlocks, WhatALabelBelongsToLooksLikeATitle) {
    const auto isJoined = [](double size, double gap) {
        MadePages pages = MadePages().page().text(60, 60, "Chapter 3", boldLook(14));
        pages.text(60, 60 + gap, "The Title", {size});
        return areOne(pages.paragraph(300, 20), "Chapter 3 The Title");
    };
    EXPECT_TRUE(isJoined(11.5, 30));
    EXPECT_FALSE(isJoined(11.25, 30));
    EXPECT_TRUE(isJoined(14, 104));
    EXPECT_FALSE(isJoined(14, 106)) << "more than ten sizes of the body below";
}

/// A page of lines on the left and on the right.
struct TwoSides {
    int left = 8;
    int right = 8;
    qsizetype letters = 20;
    QList<double> lefts{320};  ///< Where those on the right begin, in turn.
    int others = 0;            ///< More lines,
    double from = 60;          ///< from here
    double to = 540;           ///< to here.
};

PageLines pageOf(const TwoSides &sides) {
    MadePages pages;
    pages.page();
    for (int i = 0; i < sides.left; ++i)
        pages.text(60, 60 + 12 * i, wide(sides.letters));
    for (int i = 0; i < sides.right; ++i)
        pages.text(sides.lefts[i % sides.lefts.size()], 66 + 12 * i, wide(sides.letters));
    for (int i = 0; i < sides.others; ++i) {
        TextSpan span = test::madeSpan(sides.from, 500 + 12 * i, wide(20));
        span.box.setRight(sides.to);
        pages.span(span);
    }
    return readLines(pages.pageEvidence(0), 0);
}

bool hasColumns(const TwoSides &sides) {
    PageLines page = pageOf(sides);
    return assignColumns(page);
}

TEST(Columns, HaveEightLinesEach) {
    EXPECT_TRUE(hasColumns({}));
    EXPECT_FALSE(hasColumns({7, 8}));
    EXPECT_FALSE(hasColumns({8, 7}));
}

TEST(Columns, LinesHaveEightLetters) {
    EXPECT_TRUE(hasColumns({8, 8, 8}));
    EXPECT_FALSE(hasColumns({8, 8, 7}));
}

TEST(Columns, FewLinesGoAcross) {
    TwoSides sides;
    sides.others = 5;
    EXPECT_TRUE(hasColumns(sides));
    sides.others = 6;
    EXPECT_FALSE(hasColumns(sides)) << "more than a quarter";
    sides.from = 245;
    EXPECT_TRUE(hasColumns(sides)) << "these begin in the middle";
    sides.from = 235;
    EXPECT_FALSE(hasColumns(sides));
}

TEST(Columns, ManyLinesOnTheRightBeginAtOnePlace) {
    TwoSides sides;
    sides.right = 10;
    sides.lefts = {320, 320, 320, 320, 330, 340, 350, 360, 370, 380};
    EXPECT_TRUE(hasColumns(sides));
    sides.lefts[0] = 390;
    EXPECT_FALSE(hasColumns(sides)) << "less than 35 of a hundred";
    sides.lefts = {318.2, 318.2, 321.8, 321.8, 330, 340, 350, 360, 370, 380};
    EXPECT_TRUE(hasColumns(sides)) << "nearly";
}

/// The column of a line that begins and ends somewhere, in a page with two.
int columnOf(double from, double to) {
    TwoSides sides;
    sides.others = 1;
    sides.from = from;
    sides.to = to;
    PageLines page = pageOf(sides);
    assignColumns(page);
    return page.lines.back().column;
}

TEST(Columns, WhatGoesAcrossIsInTheFirst) {
    EXPECT_EQ(columnOf(235, 380), 0);
    EXPECT_EQ(columnOf(245, 380), 1);
    EXPECT_EQ(columnOf(235, 370), 1) << "hardly across, and its middle is on the right";
}

TEST(Columns, WhatBeginsBeforeTheMiddleIsInTheFirst) {
    EXPECT_EQ(columnOf(287, 310), 0);
    EXPECT_EQ(columnOf(289, 310), 1);
}

}  // namespace
}  // namespace leafwright
