#include "contents/BodyStyle.h"
#include "contents/PrintedNumbers.h"
#include "contents/RunningHeads.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::MadePages;

std::vector<PageLines> linesOf(const MadePages &pages) {
    return readAllLines(pages, {}, [](int) {});
}

/// Where the number 4 is, of pages that have running text and their number plus one at a height.
std::vector<int> pagesOfFour(double y, int pages = 10) {
    MadePages made;
    for (int i = 0; i < pages; ++i)
        made.page().text(300, y, QString::number(i + 2)).paragraph(300, 20);
    return PrintedNumbers(linesOf(made), {}).pagesOf("4");
}

TEST(PrintedNumbers, StandNearTheEdges) {
    const std::vector<int> found{2};
    const std::vector<int> guessed{3};
    EXPECT_EQ(pagesOfFour(110), found);
    EXPECT_EQ(pagesOfFour(130), guessed);
    EXPECT_EQ(pagesOfFour(670), found);
    EXPECT_EQ(pagesOfFour(650), guessed);
}

/// Pages with a number each, some of which advance with the pages.
std::vector<int> pagesOfNinety(int advancing, int others) {
    MadePages made;
    for (int i = 0; i < advancing + others; ++i) {
        // Numbers of which no two agree.
        const int number = i < advancing ? i + 90 : 500 + 7 * i;
        made.page().text(300, 770, QString::number(number)).paragraph(300, 20);
    }
    return PrintedNumbers(linesOf(made), {}).pagesOf("91");
}

TEST(PrintedNumbers, EnoughPagesAgree) {
    EXPECT_EQ(pagesOfNinety(3, 10).front(), 1);
    EXPECT_EQ(pagesOfNinety(5, 95).front(), 1) << "of a hundred";
    EXPECT_EQ(pagesOfNinety(2, 6).front(), 1) << "a short document";
}

TEST(PrintedNumbers, HaveFourDigitsAtMost) {
    const auto isFound = [](int first) {
        MadePages made;
        for (int i = 0; i < 10; ++i)
            made.page().text(300, 770, QString::number(first + i)).paragraph(300, 20);
        return PrintedNumbers(linesOf(made), {}).pagesOf(QString::number(first + 3)) == std::vector<int>{3};
    };
    EXPECT_TRUE(isFound(1200));
    EXPECT_FALSE(isFound(12000));
}

/// How many of the pages' first lines are running heads: so many texts, each on so many pages in a row.
int runningHeads(const QList<int> &runs, int plainPages) {
    MadePages made;
    QChar letter = u'a';
    for (const int count : runs) {
        for (int i = 0; i < count; ++i)
            made.page().text(60, 40, QString("Head %1").arg(letter)).paragraph(300, 20);
        letter = QChar(letter.unicode() + 1);
    }
    for (int i = 0; i < plainPages; ++i)
        made.page().paragraph(300, 20);
    std::vector<PageLines> lines = linesOf(made);
    markRunningHeads(lines);
    int running = 0;
    for (const PageLines &page : lines)
        running += page.lines.front().isRunning ? 1 : 0;
    return running;
}

TEST(RunningHeads, ABandIsOnEnoughOfAllPages) {
    EXPECT_EQ(runningHeads({3, 3, 1}, 45), 7);
    EXPECT_EQ(runningHeads({3, 3, 1}, 65), 6) << "less than an eighth: only those that come thrice";
}

TEST(RunningHeads, MostOfABandComesAgain) {
    EXPECT_EQ(runningHeads({3, 3, 1, 1, 1}, 5), 9) << "two thirds come thrice";
    EXPECT_EQ(runningHeads({3, 3, 1, 1, 1, 1, 1}, 5), 6);
    EXPECT_EQ(runningHeads({2, 2, 2, 2, 1, 1}, 5), 10) << "four fifths come twice";
    EXPECT_EQ(runningHeads({2, 2, 2, 1, 1, 1, 1}, 5), 0);
}

TEST(RunningHeads, ThreeRowsAtTheEdgeAreLookedAt) {
    const auto isRunning = [](int rows) {
        MadePages made;
        for (int i = 0; i < 4; ++i) {
            made.page().paragraph(300, 20);
            for (int row = 1; row < rows; ++row)
                made.text(60, 20 + 12 * row,
                          QString("Row %1 of %2").arg(QChar(u'a' + row)).arg(QChar(u'k' + i)));
            made.text(60, 20 + 12 * rows, "The same");
        }
        std::vector<PageLines> lines = linesOf(made);
        markRunningHeads(lines);
        return lines[0].line(rows - 1).isRunning;
    };
    EXPECT_TRUE(isRunning(3));
    EXPECT_FALSE(isRunning(4));
}

TEST(RunningHeads, WhatIsBesideThemStandsOnTheirRow) {
    const auto isRunning = [](double y, double below) {
        MadePages made;
        for (int i = 0; i < 4; ++i)
            made.page()
                .text(60, y, "The same")
                .text(400, y + below, QString("Of %1").arg(QChar(u'k' + i)))
                .paragraph(300, 20);
        std::vector<PageLines> lines = linesOf(made);
        markRunningHeads(lines);
        return lines[0].line(1).isRunning;
    };
    EXPECT_TRUE(isRunning(115, 0));
    EXPECT_FALSE(isRunning(125, 0)) << "too far from the edge";
    EXPECT_TRUE(isRunning(100, 1.3));
    EXPECT_FALSE(isRunning(100, 1.7)) << "a row of its own";
}

/// Whether a number is that of the page on which it stands. So many pages agree with it; of the others more
/// count from one, so that it can't be reckoned.
bool isAgreedOn(int agreeing, int fromOne, int others) {
    MadePages made;
    for (int i = 0; i < agreeing + fromOne + others; ++i) {
        const int number = i < agreeing ? i + 500 : i < agreeing + fromOne ? i + 1 : 2000 + 7 * i;
        made.page().text(300, 770, QString::number(number)).paragraph(300, 20);
    }
    return !PrintedNumbers(linesOf(made), {}).pagesOf("500").empty();
}

TEST(PrintedNumbers, MoreAgreeInLongerDocuments) {
    EXPECT_TRUE(isAgreedOn(2, 3, 3)) << "of eight pages";
    EXPECT_FALSE(isAgreedOn(2, 3, 4));
    EXPECT_TRUE(isAgreedOn(3, 4, 13));
    EXPECT_FALSE(isAgreedOn(2, 4, 14));
    EXPECT_TRUE(isAgreedOn(4, 6, 90)) << "of a hundred";
    EXPECT_FALSE(isAgreedOn(3, 6, 91));
}

}  // namespace
}  // namespace leafwright
