#include "contents/ContentsPageFinder.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;

/// A page of a contents: entries with these numbers, then rows of text.
void addPage(MadePages &pages, const std::vector<int> &numbers, int rows, const QString &title = {}) {
    pages.page();
    if (!title.isEmpty()) pages.text(60, 60, title, boldLook(16));
    double y = 90;
    for (const int number : numbers) {
        pages.contentsRow(60, y, QString("Title of %1").arg(QChar(u'a' + number)), QString::number(number));
        y += 12;
    }
    pages.paragraph(y + 12, rows);
}

std::vector<int> numbersTo(int count) {
    std::vector<int> numbers;
    for (int i = 1; i <= count; ++i)
        numbers.push_back(i);
    return numbers;
}

size_t regionsOf(const MadePages &pages) {
    return findContentsPages(readAllLines(pages, {}, [](int) {}), true).regions.size();
}

bool isContents(const std::vector<int> &numbers, int rows, const QString &title = {}) {
    MadePages pages;
    addPage(pages, numbers, rows, title);
    return regionsOf(pages) == 1;
}

TEST(ContentsPages, ATitledOneHasLessEntriesAmongItsRows) {
    EXPECT_TRUE(isContents(numbersTo(4), 7, "Contents")) << "a third";
    EXPECT_FALSE(isContents(numbersTo(4), 10, "Contents")) << "four of fifteen";
}

TEST(ContentsPages, OfFewNumbersMoreMayFall) {
    EXPECT_TRUE(isContents({1, 5, 3, 7}, 0, "Contents"));
    EXPECT_FALSE(isContents({1, 5, 3}, 0, "Contents"));
    EXPECT_FALSE(isContents({1, 5, 3, 7, 6}, 0, "Contents"));
}

TEST(ContentsPages, AListIsTitledInItsFirstRows) {
    const auto isList = [](int rowsBefore) {
        MadePages pages;
        pages.page();
        for (int i = 0; i < 8; ++i) {
            if (i == rowsBefore) pages.text(60, 90 + 24 * i - 12, "List of Figures");
            pages.contentsRow(60, 90 + 24 * i, QString("Title %1").arg(QChar(u'a' + i)),
                              QString::number(i + 1));
        }
        return regionsOf(pages) == 0;
    };
    EXPECT_TRUE(isList(2));
    EXPECT_FALSE(isList(3));
}

TEST(ContentsPages, InAnIndexManyEntriesHaveSeveralNumbers) {
    const auto isIndex = [](int several, int single) {
        MadePages pages;
        pages.page();
        for (int i = 0; i < several + single; ++i) {
            const QString title = QString("Title %1").arg(QChar(u'a' + i));
            pages.contentsRow(60, 90 + 12 * i, i < several ? title + " 4, 7," : title,
                              QString::number(i + 8));
        }
        return regionsOf(pages) == 0;
    };
    EXPECT_FALSE(isIndex(2, 8)) << "a fifth";
    EXPECT_TRUE(isIndex(2, 6));
}

/// The last page of contents that go on with a page of these entries and rows of text.
int lastPage(const std::vector<int> &numbers, int rows) {
    MadePages pages;
    addPage(pages, numbersTo(8), 0, "Contents");
    addPage(pages, numbers, rows);
    return findContentsPages(readAllLines(pages, {}, [](int) {}), true).regions.at(0).lastPage;
}

TEST(ContentsPages, TheLastRowsMayStandOnAPageOfTheirOwn) {
    EXPECT_EQ(lastPage({9}, 1), 1);
    EXPECT_EQ(lastPage({9}, 2), 0) << "most of it is something else";
    EXPECT_EQ(lastPage({12, 9}, 0), 0) << "these do not rise";
}

/// A list of links without numbers: to so many pages in turn; and rows without links.
bool isLinkedContents(int linked, int others, int targets, const QString &title = {}) {
    MadePages pages;
    pages.page();
    if (!title.isEmpty()) pages.text(60, 60, title, boldLook(16));
    for (int i = 0; i < linked; ++i) {
        const double y = 90 + 12 * i;
        pages.text(60, y, "Some title").link(60, 110, y, 1 + i * targets / linked, 80);
    }
    pages.paragraph(400, others);
    return regionsOf(pages) == 1;
}

TEST(ContentsPages, MostRowsOfALinkedListAreLinked) {
    EXPECT_TRUE(isLinkedContents(8, 2, 8));
    EXPECT_FALSE(isLinkedContents(7, 3, 7));
    EXPECT_TRUE(isLinkedContents(5, 4, 5, "Contents")) << "with its title they are ten";
    EXPECT_FALSE(isLinkedContents(4, 5, 4, "Contents"));
}

TEST(ContentsPages, LinksOfAListLeadToManyPages) {
    EXPECT_TRUE(isLinkedContents(10, 0, 3));
    EXPECT_FALSE(isLinkedContents(10, 0, 2));
    EXPECT_TRUE(isLinkedContents(20, 0, 4)) << "four are always enough";
    EXPECT_FALSE(isLinkedContents(20, 0, 3));
}

TEST(ContentsPages, LinksOfAListRise) {
    const auto isList = [](int falls) {
        MadePages pages;
        pages.page();
        for (int i = 0; i < 21; ++i) {
            const double y = 60 + 12 * i;
            // Each fall is two neighbours that have changed places.
            const int target = i < 2 * falls ? (i % 2 == 0 ? i + 2 : i) : i + 1;
            pages.text(60, y, "Some title").link(60, 110, y, target, 80);
        }
        return regionsOf(pages) == 1;
    };
    EXPECT_TRUE(isList(3)) << "of twenty steps";
    EXPECT_FALSE(isList(4));
}

}  // namespace
}  // namespace leafwright
