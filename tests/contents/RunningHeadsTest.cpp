#include "contents/BodyStyle.h"
#include "contents/PrintedNumbers.h"
#include "contents/RunningHeads.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;

std::vector<PageLines> linesOf(const MadePages &pages) {
    return readAllLines(pages, {}, [](int) {});
}

/// The running lines of all pages, "page text".
QStringList runningOf(const MadePages &pages) {
    std::vector<PageLines> lines = linesOf(pages);
    markRunningHeads(lines);
    QStringList running;
    for (const PageLines &page : lines) {
        for (const TextLine &line : page.lines) {
            if (line.isRunning) running += QString("%1 %2").arg(line.page).arg(line.text);
        }
    }
    return running;
}

/// Pages of running text with a text on each at the height y.
MadePages pagesWith(const QStringList &texts, double y) {
    MadePages pages;
    for (const QString &text : texts)
        pages.page().text(60, y, text).paragraph(200, 20);
    return pages;
}

TEST(RunningHeads, TextThatComesOnThreePagesIsOne) {
    EXPECT_EQ(runningOf(pagesWith({"Head", "Head", "Head"}, 40)),
              (QStringList{"0 Head", "1 Head", "2 Head"}));
    EXPECT_EQ(runningOf(pagesWith({"Head", "Head", "Other one"}, 40)), QStringList());
}

TEST(RunningHeads, NumbersInThemMayDiffer) {
    EXPECT_EQ(runningOf(pagesWith({"Page 1 of 3", "Page 2 of 3", "Page 3 of 3"}, 40)).size(), 3);
}

TEST(RunningHeads, OnlyNearTheEdges) {
    EXPECT_EQ(runningOf(pagesWith({"Head", "Head", "Head"}, 150)).size(), 3);
    EXPECT_EQ(runningOf(pagesWith({"Head", "Head", "Head"}, 170)).size(), 0);
    EXPECT_EQ(runningOf(pagesWith({"Foot", "Foot", "Foot"}, 650)).size(), 3);
    EXPECT_EQ(runningOf(pagesWith({"Foot", "Foot", "Foot"}, 630)).size(), 0);
}

TEST(RunningHeads, AtOneHeightOnly) {
    MadePages pages;
    for (const double y : {40, 60, 80})
        pages.page().text(60, y, "Summary").paragraph(200, 20);
    EXPECT_EQ(runningOf(pages), QStringList());
}

TEST(RunningHeads, PageNumbersAdvanceWithThePages) {
    EXPECT_EQ(runningOf(pagesWith({"7", "8", "9"}, 770)).size(), 3);
    EXPECT_EQ(runningOf(pagesWith({"vii", "viii", "ix"}, 770)).size(), 3);
}

TEST(RunningHeads, NumbersThatDoNotAdvanceAreRowsOfAContents) {
    EXPECT_EQ(runningOf(pagesWith({"7", "19", "40"}, 100)), QStringList());
}

TEST(RunningHeads, HeadsOfShortChaptersStandInABand) {
    MadePages pages;
    for (const QString head : {"One", "One", "One", "Two", "Two", "Two", "Three", "Three", "Three", "Four"})
        pages.page().text(60, 40, head).paragraph(200, 20);
    EXPECT_EQ(runningOf(pages).size(), 10);
}

TEST(RunningHeads, HeadingsAtTheTopAreNoBand) {
    MadePages pages;
    for (const QString head : {"One", "Two", "Three", "Four", "Five", "Six"})
        pages.page().text(60, 100, head, boldLook(18)).paragraph(200, 20);
    EXPECT_EQ(runningOf(pages), QStringList());
}

TEST(RunningHeads, WhatStandsBesideThemIsRunningToo) {
    MadePages pages;
    for (const QString chapter : {"Alpha", "Beta", "Gamma"})
        pages.page().text(60, 40, "The whole manual").text(450, 40, chapter).paragraph(200, 20);
    EXPECT_EQ(runningOf(pages).size(), 6);
}

TEST(RunningHeads, RowsOfAContentsBesideThemAreNot) {
    MadePages pages;
    for (const QString chapter : {"Alpha", "Beta", "Gamma"})
        pages.page().text(60, 40, "The whole manual").text(300, 40, chapter + " .... 3").paragraph(200, 20);
    EXPECT_EQ(runningOf(pages).size(), 3);
}

TEST(RunningHeads, ANumberAloneAtTheVeryEdgeIsAPageNumber) {
    EXPECT_EQ(runningOf(pagesWith({"A-17"}, 760)), QStringList{"0 A-17"});
    EXPECT_EQ(runningOf(pagesWith({"A-17"}, 700)), QStringList());
}

TEST(BodyStyle, IsThatOfMostCharacters) {
    MadePages pages;
    pages.page().text(60, 100, "A heading", boldLook(18)).paragraph(130, 20);
    std::vector<PageLines> lines = linesOf(pages);
    const BodyStyle body = findBodyStyle(lines);
    EXPECT_EQ(body.size, 10);
    EXPECT_EQ(body.family, "times");
    EXPECT_FALSE(body.bold);
    EXPECT_EQ(body.leading, 12);
    EXPECT_FALSE(lines[0].lines.at(0).isBody);
    EXPECT_TRUE(lines[0].lines.at(1).isBody);
}

TEST(BodyStyle, ListingsDoNotCount) {
    MadePages pages;
    pages.page().paragraph(100, 4);
    for (int i = 0; i < 40; ++i)
        pages.text(60, 200 + 10 * i, "listing of a program in lines that are long", {8, false, "Courier"});
    std::vector<PageLines> lines = linesOf(pages);
    EXPECT_EQ(findBodyStyle(lines).size, 10);
}

TEST(BodyStyle, UnlessThereIsNothingElse) {
    MadePages pages;
    pages.page().text(60, 100, "listing of a program", {8, false, "Courier"});
    std::vector<PageLines> lines = linesOf(pages);
    EXPECT_EQ(findBodyStyle(lines).size, 8);
}

TEST(BodyStyle, NoiseInSizesIsRoundedAway) {
    MadePages pages;
    pages.page();
    for (int i = 0; i < 20; ++i)
        pages.text(60, 100 + 12 * i, "running text of a line", {10 + 0.01 * (i % 5)});
    std::vector<PageLines> lines = linesOf(pages);
    EXPECT_EQ(findBodyStyle(lines).size, 10);
    EXPECT_TRUE(lines[0].lines.at(4).isBody);
}

TEST(BodyStyle, LinesOfItsSizeAreInItAndLargerOnesAreNot) {
    MadePages pages = MadePages().page().paragraph(100, 20);
    pages.text(60, 400, "A quarter of a point more", {10.25}).text(60, 420, "Half a point more", {10.5});
    std::vector<PageLines> lines = linesOf(pages);
    findBodyStyle(lines);
    EXPECT_TRUE(lines[0].line(20).isBody);
    EXPECT_FALSE(lines[0].line(21).isBody);
}

/// The leading of pages with two lines of running text each, so far apart.
double leadingOf(double distance) {
    MadePages pages;
    for (int i = 0; i < 3; ++i)
        pages.page().paragraph(100, 1).paragraph(100 + distance, 1);
    std::vector<PageLines> lines = linesOf(pages);
    return findBodyStyle(lines).leading;
}

TEST(BodyStyle, LinesFarApartHaveNoLeading) {
    EXPECT_EQ(leadingOf(39), 39);
    EXPECT_EQ(leadingOf(41), 12) << "what is usual";
}

/// Pages numbered at the bottom: the numbers are the given texts.
PrintedNumbers numbersOf(const QStringList &numbers, const QStringList &labels = {}) {
    return PrintedNumbers(linesOf(pagesWith(numbers, 770)), labels);
}

TEST(PrintedNumbers, AreThoseOnThePages) {
    const PrintedNumbers numbers = numbersOf({"i", "ii", "iii", "1", "2", "3"});
    EXPECT_EQ(numbers.pagesOf("2"), std::vector<int>{4});
    EXPECT_EQ(numbers.pagesOf("ii"), std::vector<int>{1});
    EXPECT_EQ(numbers.decimalOffset(), 2);
}

TEST(PrintedNumbers, PagesWithoutOneAreReckoned) {
    EXPECT_EQ(numbersOf({"", "1", "2", "3", "", "5"}).pagesOf("4"), std::vector<int>{4});
}

TEST(PrintedNumbers, StrayNumbersDoNotCount) {
    const PrintedNumbers numbers = numbersOf({"1", "2", "3", "4", "5", "6", "7", "8", "9", "1984"});
    EXPECT_EQ(numbers.pagesOf("1984"), std::vector<int>());
    EXPECT_EQ(numbers.pagesOf("10"), std::vector<int>{9});
}

TEST(PrintedNumbers, CompoundNumbers) {
    const PrintedNumbers numbers = numbersOf({"1-1", "1-2", "2-1"});
    EXPECT_EQ(numbers.pagesOf("2-1"), std::vector<int>{2});
    EXPECT_EQ(numbers.pagesOf(QString("1–2")), std::vector<int>{1});
}

TEST(PrintedNumbers, PageLabelsAreAsked) {
    const PrintedNumbers numbers = numbersOf({"", "", ""}, {"A", "B", "7"});
    EXPECT_EQ(numbers.pagesOf("7"), std::vector<int>{2});
    EXPECT_EQ(numbers.pagesOf("b"), std::vector<int>{1});
}

TEST(PrintedNumbers, WithoutAnyTheFirstPageIsOne) {
    EXPECT_EQ(numbersOf({"", "", ""}).pagesOf("2"), std::vector<int>{1});
    EXPECT_EQ(numbersOf({"", "", ""}).pagesOf("9"), std::vector<int>());
}

}  // namespace
}  // namespace leafwright
