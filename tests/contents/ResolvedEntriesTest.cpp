#include "contents/EntryResolving.h"
#include "contents/PrintedContents.h"
#include "support/MadePages.h"
#include "support/PrintedEntries.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;
using test::printedEntry;

/// What becomes of entries in a document without printed numbers, so that they are counted from its first
/// page unless the titles tell otherwise.
std::vector<PrintedEntry> resolved(const MadePages &made, std::vector<PrintedEntry> entries,
                                   const QStringList &labels = {}) {
    std::vector<PageLines> pages = readAllLines(made, {}, [](int) {});
    const BodyStyle body = findBodyStyle(pages);
    TitleSearch search(pages, body);
    resolveEntries(entries, pages, PrintedNumbers(pages, labels), search);
    return entries;
}

/// Pages of running text, with one of these lines on each of the first.
MadePages pagesWith(const QStringList &lines, int pages, const test::TextLook &look = {}) {
    MadePages made;
    for (int i = 0; i < pages; ++i) {
        made.page().paragraph(300, 20);
        if (i < lines.size() && !lines[i].isEmpty()) made.text(60, 100, lines[i], look);
    }
    return made;
}

bool isLocated(const PrintedEntry &entry) {
    return !entry.heading.isNull();
}

TEST(ResolveEntries, ByTheNumberDoubtfulPlacesAreNone) {
    const auto isFound = [](const QString &title) {
        return isLocated(resolved(pagesWith({title + " goes on"}, 3), {printedEntry(title, "1")}).at(0));
    };
    EXPECT_TRUE(isFound("A title of length"));
    EXPECT_FALSE(isFound("Title ab"));
}

TEST(ResolveEntries, ByTheLinkTheyAreTakenUnlessTheyStandInText) {
    const auto isFound = [](double gap) {
        MadePages pages = MadePages().page().paragraph(100, 5).text(60, 148 + gap, "Title ab goes on");
        PrintedEntry entry = printedEntry("Title ab", "");
        entry.link = ContentsLink{{}, 0, {}};
        return isLocated(resolved(pages.paragraph(300, 20), {entry}).at(0));
    };
    EXPECT_TRUE(isFound(20));
    EXPECT_FALSE(isFound(12));
}

TEST(ResolveEntries, TheFirstPageOfANumberIsPreferred) {
    const auto pageOf = [](const test::TextLook &look) {
        MadePages pages = pagesWith({"", "", "The title"}, 3);
        pages.page().paragraph(300, 20).text(60, 100, "The title", look);
        return resolved(pages, {printedEntry("The title", "3")}, {"1", "2", "3", "3"}).at(0).page;
    };
    EXPECT_EQ(pageOf(boldLook(10)), 3) << "bold is worth more than that";
    EXPECT_EQ(pageOf({15}), 2);
}

TEST(ResolveEntries, PagesNearbyScoreLess) {
    const MadePages pages = pagesWith({"Alpha b", "Beta bb", "", "Gamma b"}, 5);
    EXPECT_EQ(resolved(pages, {printedEntry("Alpha b", "1"), printedEntry("Beta bb", "2"),
                               printedEntry("Gamma b", "3")})
                  .at(2)
                  .score,
              95);
}

/// How many of ten entries are located, of which so many stand where their numbers say and the others fifteen
/// pages behind.
int locatedOfTen(int standing) {
    QStringList lines;
    std::vector<PrintedEntry> entries;
    for (int i = 0; i < 10; ++i) {
        const QString title = QString("Title of %1").arg(QString(6, QChar(u'a' + i)));
        entries.push_back(printedEntry(title, QString::number(i + 1)));
        const int page = i < standing ? i : i + 15;
        lines.resize(std::max<qsizetype>(lines.size(), page + 1));
        lines[page] = title;
    }
    return countLocated(resolved(pagesWith(lines, 30), entries));
}

TEST(ResolveEntries, WhereFewStandTheTitlesAreLookedForEverywhere) {
    EXPECT_EQ(locatedOfTen(4), 10);
    EXPECT_EQ(locatedOfTen(6), 6);
}

/// Whether titles of so many letters are found fifteen pages behind, where they stand on other pages, too.
bool areFoundEverywhere(int letters, int others) {
    QStringList lines(100);
    std::vector<PrintedEntry> entries;
    for (int i = 0; i < 3; ++i) {
        const QString title(letters, QChar(u'a' + i));
        entries.push_back(printedEntry(title, QString::number(i + 1)));
        lines[i + 15] = title;
        for (int k = 0; k < others; ++k)
            lines[30 + 17 * i + 3 * k] = title;  // no two as far behind
    }
    return countLocated(resolved(pagesWith(lines, 100), entries)) == 3;
}

TEST(ResolveEntries, ShortTitlesAreNotLookedForEverywhere) {
    EXPECT_TRUE(areFoundEverywhere(4, 0));
    EXPECT_FALSE(areFoundEverywhere(3, 0));
}

TEST(ResolveEntries, NorAreThoseThatStandOnManyPages) {
    EXPECT_TRUE(areFoundEverywhere(6, 3));
    EXPECT_FALSE(areFoundEverywhere(6, 4));
}

TEST(ResolveEntries, RowsWithoutNumberAreLookedForOnSixtyPages) {
    const auto isFound = [](int pages) {
        QStringList lines(pages + 1);
        lines.front() = "Alpha bb";
        lines[5] = "Beta bbb";
        lines.back() = "Gamma bb";
        return resolved(pagesWith(lines, pages + 1),
                        {printedEntry("Alpha bb", "1"), printedEntry("Beta bbb", ""),
                         printedEntry("Gamma bb", QString::number(pages + 1))})
                   .size() == 3;
    };
    EXPECT_TRUE(isFound(60));
    EXPECT_FALSE(isFound(61));
}

TEST(ResolveEntries, APartThatIsNotFoundLiesWhereWhatFollowsDoes) {
    const MadePages pages = pagesWith({"Alpha bb", "", "", "Gamma bb"}, 6);
    const auto between = [&](const QString &title) {
        return resolved(
            pages, {printedEntry("Alpha bb", "1"), printedEntry(title, ""), printedEntry("Gamma bb", "4")});
    };
    const std::vector<PrintedEntry> part = between("Part II Beyond");
    ASSERT_EQ(part.size(), 3U);
    EXPECT_EQ(part[1].page, 3);
    EXPECT_FALSE(isLocated(part[1]));
    EXPECT_EQ(between("Beyond").size(), 2U) << "what else is not found is nowhere";
}

/// What is found of a contents of twenty chapters, of which so many are there, one a page. The others are
/// behind the last page; but the last of them is named in the text of that page.
PrintedContents contentsOfExcerpt(int chapters) {
    const auto titleOf = [](int i) { return QString("%1 is the letter").arg(QString(6, QChar(u'a' + i))); };
    MadePages pages;
    pages.page().text(60, 60, "Contents", boldLook(16));
    for (int i = 0; i < 20; ++i)
        pages.contentsRow(60, 90 + 12 * i, titleOf(i), QString::number(i + 1));
    for (int i = 0; i < chapters; ++i)
        pages.page().text(60, 100, titleOf(i), boldLook(14)).paragraph(130, 20);
    pages.text(60, 500, titleOf(19));
    std::vector<PageLines> lines = readAllLines(pages, {}, [](int) {});
    const BodyStyle body = findBodyStyle(lines);
    const PrintedNumbers numbers(lines, {});
    return findPrintedContents(lines, findContentsPages(lines, true), numbers, body);
}

TEST(PrintedContents, ExcerptsLackTheirLastEntriesWithGoodReason) {
    EXPECT_EQ(contentsOfExcerpt(20).locatedShare(), 1);
    const PrintedContents excerpt = contentsOfExcerpt(10);
    EXPECT_EQ(excerpt.locatedShare(), 1);
    EXPECT_EQ(excerpt.entries.size(), 11U);
}

}  // namespace
}  // namespace leafwright
