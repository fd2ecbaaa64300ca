#include "contents/ContentsEntries.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;

/// A titled contents of so many entries, "Title a" on page 1 and so on; the next row is to stand at
/// rowBehind().
MadePages contentsOf(int entries) {
    MadePages pages;
    pages.page().text(60, 60, "Contents", boldLook(16));
    for (int i = 0; i < entries; ++i)
        pages.contentsRow(60, 90 + 12 * i, QString("Title %1").arg(QChar(u'a' + i)), QString::number(i + 1));
    return pages;
}

double rowBehind(int entries) {
    return 114 + 12 * entries;
}

/// What follows so many entries.
QStringList behind(int entries, const MadePages &pages) {
    const std::vector<PageLines> lines = readAllLines(pages, {}, [](int) {});
    const ContentsPageFindings findings = findContentsPages(lines, true);
    QStringList titles;
    if (findings.regions.empty()) return titles;
    for (const PrintedEntry &entry : entriesOfRegion(findings, findings.regions[0], BodyStyle()))
        titles += entry.title;
    return titles.mid(entries);
}

TEST(ContentsEntries, AListOfFiguresBehindThreeEntriesEndsThem) {
    const auto isEnd = [](int entries) {
        const double y = rowBehind(entries);
        MadePages pages =
            contentsOf(entries).text(60, y, "List of Figures").contentsRow(60, y + 24, "More", "19");
        return behind(entries, pages.contentsRow(60, y + 36, "Still more", "20")).isEmpty();
    };
    EXPECT_TRUE(isEnd(3));
    EXPECT_FALSE(isEnd(2)) << "before that it is a part of the contents";
}

/// Whether a row without number is the beginning of the title in the next row.
bool isJoined(const QString &upper, double size, double distance, const QString &lower = "Second row",
              double left = 75) {
    const double y = rowBehind(4);
    MadePages pages = contentsOf(4).text(60, y, upper, {size}).contentsRow(left, y + distance, lower, "9");
    return behind(4, pages) == QStringList{upper + u' ' + lower};
}

TEST(ContentsEntries, RowsOfATitleAreNearAndOfNearlyOneSize) {
    EXPECT_TRUE(isJoined("First row", 10.5, 12));
    EXPECT_FALSE(isJoined("First row", 10.75, 12));
    EXPECT_TRUE(isJoined("First row", 10, 17.5));
    EXPECT_FALSE(isJoined("First row", 10, 18.5));
}

TEST(ContentsEntries, AFullRowGoesOnInTheNext) {
    EXPECT_TRUE(isJoined(QString(56, u'w'), 10, 12, "Second row", 60));
    EXPECT_FALSE(isJoined(QString(55, u'w'), 10, 12, "Second row", 60));
}

TEST(ContentsEntries, FullContentsBehindBriefOnesBeginWithTheSameTitle) {
    const auto isEnd = [](int entries, int number) {
        MadePages pages = contentsOf(entries);
        pages.contentsRow(60, rowBehind(entries), "Title a", QString::number(number));
        return behind(entries, pages).isEmpty();
    };
    EXPECT_TRUE(isEnd(9, 1));
    EXPECT_FALSE(isEnd(8, 1)) << "too few to be contents of their own";
    EXPECT_TRUE(isEnd(9, 3));
    EXPECT_FALSE(isEnd(9, 4)) << "contents do not begin there";
}

TEST(ContentsEntries, SixRowsWithoutNumberAreRemembered) {
    MadePages pages = contentsOf(12);
    double y = rowBehind(12);
    for (int i = 1; i <= 7; ++i, y += 24)
        pages.text(60, y, QString("Bold row ") + QString(i, u'x'), boldLook(10));
    const QStringList kept = behind(12, pages.contentsRow(60, y, "Plain", "19"));
    EXPECT_EQ(kept.size(), 7);
    EXPECT_EQ(kept.front(), "Bold row xx");
}

TEST(ContentsEntries, BoldRowsThatStayAreNotTooLong) {
    const auto isKept = [](int letters) {
        const double y = rowBehind(4);
        MadePages pages = contentsOf(4).text(60, y, QString(letters, u'w'), boldLook(10));
        return behind(4, pages.contentsRow(60, y + 24, "Plain", "9")).size() == 2;
    };
    EXPECT_TRUE(isKept(89));
    EXPECT_FALSE(isKept(90));
}

/// What comes of a row without number and the numbered one below it, which need nothing else to be one title.
QStringList ofTwoRows(const QString &upper, const QString &lower, const test::TextLook &look = {},
                      double left = 75) {
    const double y = rowBehind(4);
    return behind(4, contentsOf(4).text(60, y, upper, look).contentsRow(left, y + 12, lower, "9"));
}

TEST(ContentsEntries, RowsOfATitleHaveOneWeight) {
    EXPECT_EQ(ofTwoRows("First row", "second row"), QStringList("First row second row"));
    EXPECT_EQ(ofTwoRows("First row", "second row", boldLook(10)), (QStringList{"First row", "second row"}))
        << "a bold one stands for itself";
}

TEST(ContentsEntries, WhatEndsASentenceIsNoBeginningOfATitle) {
    EXPECT_EQ(ofTwoRows("First row.", "Second row"), QStringList("Second row"));
    EXPECT_EQ(ofTwoRows("First row:", "Second row"), QStringList("Second row"));
    EXPECT_EQ(ofTwoRows("First row,", "Second row"), QStringList("First row, Second row"));
}

TEST(ContentsEntries, APartAboveIsAnEntryOfItsOwn) {
    EXPECT_EQ(ofTwoRows("Part I First row", "Second row"), (QStringList{"Part I First row", "Second row"}));
}

TEST(ContentsEntries, ASmallLetterOrANumberAboveGoesOn) {
    const auto atMargin = [](const QString &upper, const QString &lower) {
        return ofTwoRows(upper, lower, {}, 60).first();
    };
    EXPECT_EQ(atMargin("First row", "second row"), "First row second row");
    EXPECT_EQ(atMargin("First row", "Second row"), "Second row");
    EXPECT_EQ(atMargin("5 First row", "Second row"), "5 First row Second row");
    EXPECT_EQ(atMargin("5.1 First row", "Second row"), "5.1 First row Second row");
}

/// The same of rows that lead to places on the second page; not where these are 0.
QStringList ofLinkedRows(double upperTarget, double lowerTarget, double left) {
    const double y = rowBehind(4);
    MadePages pages = contentsOf(4).text(60, y, "First row").contentsRow(left, y + 12, "Second row", "9");
    if (upperTarget > 0) pages.link(60, 105, y, 1, upperTarget);
    if (lowerTarget > 0) pages.link(left, 540, y + 12, 1, lowerTarget);
    return behind(4, pages);
}

TEST(ContentsEntries, RowsThatLeadToOnePlaceAreOneTitle) {
    EXPECT_EQ(ofLinkedRows(80, 80, 60), QStringList("First row Second row"));
    EXPECT_EQ(ofLinkedRows(80, 0, 60), QStringList("Second row")) << "nothing else speaks for it";
    EXPECT_EQ(ofLinkedRows(0, 0, 75), QStringList("First row Second row"));
    EXPECT_EQ(ofLinkedRows(80, 90, 75), QStringList("Second row")) << "whatever else speaks for it";
}

/// The entries of a list of links without numbers. @param targets of each row in turn
QStringList linkedList(const std::vector<std::vector<int>> &targets) {
    MadePages pages;
    pages.page().text(60, 60, "Contents", boldLook(16));
    double y = 90;
    QChar letter(u'a');
    for (const std::vector<int> &ofRow : targets) {
        pages.text(60, y, QString("Row %1 of it").arg(letter));
        double left = 60;
        for (const int target : ofRow) {
            pages.link(left, left + 12, y, target, 80);
            left += 12;
        }
        y += 12;
        letter = QChar(letter.unicode() + 1);
    }
    return behind(0, pages);
}

TEST(ContentsEntries, EachRowOfALinkedListIsAnEntry) {
    const QStringList entries = linkedList({{1}, {2}, {3}, {4}, {5}, {6}, {7}, {8}});
    EXPECT_EQ(entries.size(), 8);
    EXPECT_EQ(entries.first(), "Row a of it");
}

/// The entries of a linked list, of which the first two rows are as given. @param target of both, on its page
QStringList linkedTitle(const QString &upper, const QString &lower, double left, std::optional<double> target,
                        double distance = 12) {
    MadePages pages;
    pages.page().text(60, 60, "Contents", boldLook(16));
    pages.text(60, 90, upper).link(60, 120, 90, 1, target);
    pages.text(left, 90 + distance, lower).link(left, 160, 90 + distance, 1, target);
    for (int i = 0; i < 6; ++i) {
        const double y = 120 + distance + 20 * i;
        pages.text(60, y, QString("Row %1 of it").arg(QChar(u'a' + i))).link(60, 120, y, 2 + i, 80);
    }
    const QStringList entries = behind(0, pages);
    return entries.mid(0, entries.size() - 6);
}

TEST(ContentsEntries, ATitleOfALinkedListGoesOnInTheNextRow) {
    EXPECT_EQ(linkedTitle("First row", "Second row", 60, 80), QStringList("First row Second row"));
    EXPECT_EQ(linkedTitle("First row", "Second row", 60, 80, 24), (QStringList{"First row", "Second row"}))
        << "too far away";
    EXPECT_EQ(linkedTitle("1 First row", "1.1 Second row", 60, 80),
              (QStringList{"1 First row", "1.1 Second row"}));
    EXPECT_EQ(linkedTitle("First row.", "Second row", 60, 80), (QStringList{"First row.", "Second row"}));
}

TEST(ContentsEntries, SeveralEntriesOfALinkedListMayLeadToOnePage) {
    const std::optional<double> page;
    const QString full(56, u'w');
    EXPECT_EQ(linkedTitle("First row", "Second row", 60, page), (QStringList{"First row", "Second row"}));
    EXPECT_EQ(linkedTitle("First row", "Second row", 63, page), QStringList("First row Second row"));
    EXPECT_EQ(linkedTitle("First row", "second row", 60, page), QStringList("First row second row"));
    EXPECT_EQ(linkedTitle(full, "Second row", 60, page), QStringList(full + " Second row"));
}

TEST(ContentsEntries, ATitleOfALinkedListMayHaveManyRows) {
    MadePages pages;
    pages.page().text(60, 60, "Contents", boldLook(16));
    for (int i = 0; i < 3; ++i)
        pages.text(60, 90 + 12 * i, QString("Row %1").arg(QChar(u'x' + i))).link(60, 90, 90 + 12 * i, 1, 80);
    for (int i = 0; i < 5; ++i)
        pages.text(60, 126 + 12 * i, QString("Title %1").arg(QChar(u'p' + i)))
            .link(60, 90, 126 + 12 * i, 2 + i, 80);
    EXPECT_EQ(behind(0, pages),
              (QStringList{"Row x Row y Row z", "Title p", "Title q", "Title r", "Title s", "Title t"}));
}

TEST(ContentsEntries, RowsOfSeveralLinksAreRememberedLikeThoseWithoutAny) {
    const std::vector<int> two{1, 2};
    const QStringList entries =
        linkedList({two, two, two, two, two, two, two, {7}, {8}, {9}, {10}, {11}, {12}, {13}, {14}});
    EXPECT_EQ(entries.size(), 14) << "six of the seven";
    EXPECT_EQ(entries.first(), "Row b of it");
    EXPECT_EQ(linkedList({two, {1}, {3}, {4}, {5}, {6}, {7}}).size(), 7)
        << "the first is no title in two rows";
}

}  // namespace
}  // namespace leafwright
