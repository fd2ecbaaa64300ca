#include "contents/ContentsEntries.h"
#include "contents/RunningHeads.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;

std::vector<ContentsRow> rowsOf(const MadePages &pages, bool withLinks = true) {
    return contentsRows(readLines(pages.pageEvidence(0), 0), 0, withLinks);
}

/// "title|number" of each row that is an entry.
QStringList entriesIn(const std::vector<ContentsRow> &rows) {
    QStringList entries;
    for (const ContentsRow &row : rows) {
        if (const RowEnd *end = row.entryEnd()) entries += end->title + u'|' + end->number;
    }
    return entries;
}

TEST(ContentsRows, LeadersMakeAnEntry) {
    MadePages pages;
    pages.page().contentsRow(60, 100, "Alpha", "7").paragraph(200, 10);
    EXPECT_EQ(entriesIn(rowsOf(pages)), QStringList{"Alpha|7"});
}

TEST(ContentsRows, OneNumberBehindAGapIsNone) {
    MadePages pages;
    pages.page()
        .contentsRow(60, 100, "Alpha", "7", false)
        .contentsRow(60, 112, "Beta", "8", false)
        .paragraph(200, 10);
    EXPECT_EQ(entriesIn(rowsOf(pages)), QStringList());
}

TEST(ContentsRows, ThreeAlignedNumbersAreEntries) {
    MadePages pages;
    pages.page().contentsRow(60, 100, "Alpha", "7", false).contentsRow(60, 112, "Beta", "8", false);
    pages.contentsRow(60, 124, "Gamma", "19", false).paragraph(200, 10);
    EXPECT_EQ(entriesIn(rowsOf(pages)), (QStringList{"Alpha|7", "Beta|8", "Gamma|19"}));
}

TEST(ContentsRows, ALinkToTheNumberMakesAnEntry) {
    MadePages pages;
    pages.page().contentsRow(60, 100, "Alpha", "7", false).paragraph(200, 10).link(60, 541, 100, 5, 90);
    EXPECT_EQ(entriesIn(rowsOf(pages)), QStringList{"Alpha|7"});
    EXPECT_EQ(entriesIn(rowsOf(pages, false)), QStringList());
}

TEST(ContentsRows, NumbersRightBehindTheTitleWhereAllRise) {
    MadePages pages;
    pages.page();
    int y = 100;
    for (const QString row : {"Alpha and more 3", "Beta 5", "Gamma of it 9", "Delta 12", "Epsilon 15"})
        pages.text(60, y += 12, row);
    EXPECT_EQ(entriesIn(rowsOf(pages)).size(), 5);
    pages.text(60, y + 12, "Zeta 2").text(60, y + 24, "Eta 1");
    EXPECT_EQ(entriesIn(rowsOf(pages)).size(), 0);
}

TEST(ContentsRows, RomanAndCompoundNumbers) {
    MadePages pages;
    pages.page().contentsRow(60, 100, "Preface", "xiv").contentsRow(60, 112, "Alpha", "3-12");
    pages.contentsRow(60, 124, "Tables", "A-3");
    EXPECT_EQ(entriesIn(rowsOf(pages)), (QStringList{"Preface|xiv", "Alpha|3-12", "Tables|A-3"}));
}

TEST(ContentsRows, LeadersOfAnyKindGo) {
    for (const QString leaders : {" . . . . ", "......", " … ", "····", "____"}) {
        MadePages pages;
        pages.page().text(60, 100, "Alpha" + leaders + "12");
        const auto end = rowEnd(readLines(pages.pageEvidence(0), 0).lines.at(0));
        ASSERT_TRUE(end) << leaders.toStdString();
        EXPECT_EQ(end->title, "Alpha") << leaders.toStdString();
        EXPECT_TRUE(end->hasLeaders) << leaders.toStdString();
    }
}

TEST(ContentsRows, TwoColumnsAreReadOneAfterTheOther) {
    MadePages pages;
    pages.page();
    for (int i = 0; i < 6; ++i) {
        pages.text(60, 100 + 12 * i, QString("Left %1").arg(QChar(u'a' + i)))
            .textUpTo(280, 100 + 12 * i, QString::number(i + 1));
        pages.text(320, 100 + 12 * i, QString("Right %1").arg(QChar(u'a' + i)))
            .textUpTo(540, 100 + 12 * i, QString::number(i + 7));
    }
    EXPECT_EQ(entriesIn(rowsOf(pages)),
              (QStringList{"Left a|1", "Left b|2", "Left c|3", "Left d|4", "Left e|5", "Left f|6",
                           "Right a|7", "Right b|8", "Right c|9", "Right d|10", "Right e|11", "Right f|12"}));
}

/// A page of rows as a contents has them, with numbers from 1.
MadePages contentsPage(int rows, const QString &title, const std::vector<int> &numbers = {}) {
    MadePages pages;
    pages.page();
    if (!title.isEmpty()) pages.text(60, 80, title, boldLook(16));
    for (int i = 0; i < rows; ++i) {
        const int number = numbers.empty() ? i + 1 : numbers.at(static_cast<size_t>(i));
        pages.contentsRow(60, 110 + 12 * i, QString("Title %1").arg(QChar(u'a' + i)),
                          QString::number(number));
    }
    return pages;
}

size_t regionsOf(const MadePages &pages, bool withLinks = true) {
    return findContentsPages(readAllLines(pages, {}, [](int) {}), withLinks).regions.size();
}

TEST(ContentsPages, ThreeRowsUnderATitle) {
    EXPECT_EQ(regionsOf(contentsPage(3, "Contents")), 1U);
    EXPECT_EQ(regionsOf(contentsPage(2, "Contents")), 0U);
}

TEST(ContentsPages, SixRowsWithoutTitle) {
    EXPECT_EQ(regionsOf(contentsPage(6, "")), 1U);
    EXPECT_EQ(regionsOf(contentsPage(5, "")), 0U);
}

TEST(ContentsPages, NumbersRise) {
    EXPECT_EQ(regionsOf(contentsPage(6, "Contents", {9, 4, 8, 3, 7, 2})), 0U);
}

TEST(ContentsPages, ListsOfFiguresAreNone) {
    EXPECT_EQ(regionsOf(contentsPage(8, "List of Figures")), 0U);
}

TEST(ContentsPages, AnIndexIsNone) {
    MadePages pages;
    pages.page();
    for (int i = 0; i < 8; ++i)
        pages.contentsRow(60, 100 + 12 * i, QString("word %1, 4, 7,").arg(QChar(u'a' + i)),
                          QString::number(i + 8));
    EXPECT_EQ(regionsOf(pages), 0U);
}

TEST(ContentsPages, MostlyTextIsNone) {
    MadePages pages = contentsPage(8, "");
    pages.paragraph(300, 9);
    EXPECT_EQ(regionsOf(pages), 0U);
}

TEST(ContentsPages, GoOnOverPagesAndAnEmptyOne) {
    MadePages pages = contentsPage(8, "Contents");
    pages.page();
    for (int i = 0; i < 3; ++i)
        pages.contentsRow(60, 80 + 12 * i, QString("More %1").arg(QChar(u'a' + i)), QString::number(i + 20));
    pages.page().page().contentsRow(60, 80, "Last", "30");
    const ContentsPageFindings findings = findContentsPages(readAllLines(pages, {}, [](int) {}), true);
    ASSERT_EQ(findings.regions.size(), 1U);
    EXPECT_EQ(findings.regions[0].lastPage, 3);
}

TEST(ContentsPages, LinkedListsWithoutNumbers) {
    MadePages pages;
    pages.page();
    for (int i = 0; i < 8; ++i)
        pages.text(60, 100 + 12 * i, QString("Title %1").arg(QChar(u'a' + i)))
            .link(60, 130, 100 + 12 * i, i + 1, 80);
    EXPECT_EQ(regionsOf(pages), 1U);
    EXPECT_EQ(regionsOf(pages, false), 0U);
}

TEST(ContentsPages, LinkedListBehindNumberedRowsIsNoMoreOfThem) {
    const auto lastPage = [](bool numbered) {
        MadePages pages;
        pages.page().text(60, 60, "Contents", boldLook(16));
        for (int i = 0; i < 12; ++i) {
            const int y = 80 + 12 * i;
            const QString title = QString("The %1 title").arg(QChar(u'a' + i));
            numbered ? pages.contentsRow(60, y, title, QString::number(i + 1)) : pages.text(60, y, title);
            pages.link(60, 540, y, i + 1, 80);
        }
        pages.page();
        for (int i = 0; i < 12; ++i) {
            pages.text(60, 80 + 12 * i, QString("What %1 says of it").arg(QChar(u'a' + i)));
            pages.link(60, 540, 80 + 12 * i, i + 1, 80);
        }
        return findContentsPages(readAllLines(pages, {}, [](int) {}), true).regions.at(0).lastPage;
    };
    EXPECT_EQ(lastPage(true), 0);
    EXPECT_EQ(lastPage(false), 1);
}

TEST(ContentsPages, AreLookedForInTheFront) {
    EXPECT_EQ(endOfFrontPages(20), 20);
    EXPECT_EQ(endOfFrontPages(100), 61);
    EXPECT_EQ(endOfFrontPages(1000), 401);
}

QStringList entriesOf(const MadePages &pages) {
    const std::vector<PageLines> lines = readAllLines(pages, {}, [](int) {});
    const ContentsPageFindings findings = findContentsPages(lines, true);
    QStringList titles;
    if (findings.regions.empty()) return titles;
    for (const PrintedEntry &entry : entriesOfRegion(findings, findings.regions[0], BodyStyle()))
        titles += entry.title + u'|' + entry.number;
    return titles;
}

TEST(ContentsEntries, TitlesWrappedOverRowsAreJoined) {
    MadePages pages = contentsPage(4, "Contents");
    pages.text(60, 200, "5 A title that goes on").contentsRow(75, 212, "in a second row", "9");
    EXPECT_EQ(entriesOf(pages).last(), "5 A title that goes on in a second row|9");
}

TEST(ContentsEntries, NumberedRowsAreEntriesOfTheirOwn) {
    MadePages pages = contentsPage(4, "Contents");
    pages.text(60, 200, "Some line above").contentsRow(75, 212, "5.1 Title", "9");
    EXPECT_EQ(entriesOf(pages).last(), "5.1 Title|9");
}

TEST(ContentsEntries, RowsFarAboveDoNotBelong) {
    MadePages pages = contentsPage(4, "Contents");
    pages.text(60, 200, "5 A remark").contentsRow(75, 228, "in a second row", "9");
    EXPECT_EQ(entriesOf(pages).last(), "in a second row|9");
}

TEST(ContentsEntries, AChapterLabelBelongsToItsTitle) {
    MadePages pages = contentsPage(4, "Contents");
    pages.text(60, 200, "Chapter 5").contentsRow(60, 212, "The Title", "9");
    EXPECT_EQ(entriesOf(pages).last(), "Chapter 5 The Title|9");
}

TEST(ContentsEntries, PartsWithoutNumberStay) {
    MadePages pages = contentsPage(4, "Contents");
    pages.text(60, 210, "Part II Beyond").contentsRow(60, 240, "Title", "9");
    EXPECT_EQ(entriesOf(pages).mid(4), (QStringList{"Part II Beyond|", "Title|9"}));
}

TEST(ContentsEntries, BoldRowsWithoutNumberStayAndOthersGo) {
    MadePages pages = contentsPage(4, "Contents");
    pages.text(60, 210, "Bold one", boldLook(10))
        .text(60, 232, "plain one")
        .contentsRow(60, 264, "Title", "9");
    EXPECT_EQ(entriesOf(pages).mid(4), (QStringList{"Bold one|", "Title|9"}));
}

TEST(ContentsEntries, SectionsCountedAnewAreOfAnotherList) {
    MadePages pages;
    pages.page().text(60, 80, "Contents", boldLook(16));
    pages.contentsRow(60, 110, "1.1 Alpha", "2").contentsRow(60, 122, "1.2 Beta", "5");
    pages.contentsRow(60, 134, "2.1 Gamma", "8").contentsRow(60, 146, "2.2 Delta", "9");
    pages.contentsRow(60, 180, "1.1 A picture", "3").contentsRow(60, 192, "2.1 A drawing", "9");
    EXPECT_EQ(entriesOf(pages), (QStringList{"1.1 Alpha|2", "1.2 Beta|5", "2.1 Gamma|8", "2.2 Delta|9"}));
}

TEST(ContentsEntries, AListOfFiguresEndsThem) {
    MadePages pages = contentsPage(4, "Contents");
    pages.text(60, 210, "List of Figures", boldLook(16)).contentsRow(60, 240, "1.1 A figure", "2");
    EXPECT_EQ(entriesOf(pages).size(), 4);
}

}  // namespace
}  // namespace leafwright
