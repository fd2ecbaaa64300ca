#include "contents/ContentsLevels.h"
#include "contents/EntryResolving.h"
#include "contents/TextFolding.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;

/// Pages with their lines, body style and numbers, to look for titles on.
struct Document {
    explicit Document(const MadePages &made)
        : pages(readAllLines(made, {}, [](int) {})), body(findBodyStyle(pages)) {}

    std::optional<TitlePlace> locate(const QString &title, int page) {
        TitleSearch search(pages, body);
        return search.locate(searchForms(title), page);
    }

    std::vector<PageLines> pages;
    BodyStyle body;
};

PrintedEntry entryOf(const QString &title, const QString &number, double left = 60,
                     const test::TextLook &look = {}) {
    MadePages pages;
    pages.page().contentsRow(left, 100, title, number, true, look);
    const ContentsRow row = contentsRows(readLines(pages.pageEvidence(0), 0), 0, false).at(0);
    PrintedEntry entry;
    entry.title = title;
    entry.number = number;
    entry.numbering = numberingOf(title);
    entry.rows = {row.line};
    return entry;
}

TEST(TitleSearch, TheVeryTitleScoresMost) {
    MadePages pages;
    pages.page().paragraph(80, 5).text(60, 200, "1.2 The Title", boldLook(14)).paragraph(230, 10);
    Document document(pages);
    const auto place = document.locate("1.2 The title", 0);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->line, (LineRef{0, 5}));
    EXPECT_GT(place->score, 100);
}

TEST(TitleSearch, NumbersMayBeMissing) {
    MadePages pages;
    pages.page().text(60, 100, "The Title", boldLook(14)).paragraph(130, 10);
    EXPECT_GT(Document(pages).locate("3 The Title", 0)->score, 95);
}

TEST(TitleSearch, TitlesOverTwoLinesAreFound) {
    MadePages pages;
    pages.page()
        .text(60, 100, "A title that", boldLook(14))
        .text(60, 118, "goes on", boldLook(14))
        .paragraph(150, 10);
    Document document(pages);
    const auto place = document.locate("A title that goes on", 0);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->lineCount, 2);
}

TEST(TitleSearch, AChapterLabelMayStandFarAbove) {
    MadePages pages;
    pages.page()
        .text(60, 100, "Chapter 3", boldLook(14))
        .text(60, 170, "The Title", boldLook(14))
        .paragraph(230, 10);
    EXPECT_GT(Document(pages).locate("Chapter 3 The Title", 0)->score, 95);
}

TEST(TitleSearch, RunInHeadsScoreLess) {
    MadePages pages;
    pages.page()
        .text(60, 100, "The title of it. Then the text goes on at once", boldLook(10))
        .paragraph(112, 10);
    const auto place = Document(pages).locate("The title of it", 0);
    ASSERT_TRUE(place);
    EXPECT_GT(place->score, 60);
    EXPECT_LT(place->score, 85);
}

TEST(TitleSearch, MisspelledTitlesAreAlike) {
    MadePages pages;
    pages.page().text(60, 100, "Instalation of the program", boldLook(14)).paragraph(130, 10);
    Document document(pages);
    EXPECT_GT(document.locate("Installation of the program", 0)->score, 70);
    EXPECT_FALSE(document.locate("Insulation of a wall", 0));
}

TEST(TitleSearch, LinesOfParagraphsAndRunningHeadsScoreLess) {
    MadePages pages;
    pages.page().text(60, 40, "The Title").text(60, 400, "The Title", boldLook(14)).paragraph(430, 10);
    Document document(pages);
    document.pages[0].lines[0].isRunning = true;
    EXPECT_EQ(document.locate("The Title", 0)->line.line, 1);
    document.pages[0].lines[1].inContents = true;
    EXPECT_LT(document.locate("The Title", 0)->score, 80);
}

/// The pages that entries lead to, 0-based; -1 for one that was taken out.
std::vector<int> resolvedPages(const MadePages &made, std::vector<PrintedEntry> entries) {
    Document document(made);
    TitleSearch search(document.pages, document.body);
    const PrintedNumbers numbers(document.pages, {});
    resolveEntries(entries, document.pages, numbers, search);
    std::vector<int> pages;
    for (const PrintedEntry &entry : entries)
        pages.push_back(entry.page);
    return pages;
}

/// Pages with a heading on each, numbered at the bottom from the given number on.
MadePages headedPages(const QStringList &titles, int firstNumber) {
    MadePages pages;
    for (int i = 0; i < titles.size(); ++i) {
        pages.page().text(60, 100, titles[i], boldLook(14)).paragraph(130, 10);
        pages.text(300, 780, QString::number(firstNumber + i));
    }
    return pages;
}

TEST(ResolveEntries, ByTheNumbersOnThePages) {
    const MadePages pages = headedPages({"Alpha", "Beta", "Gamma", "Delta"}, 11);
    EXPECT_EQ(resolvedPages(pages, {entryOf("Alpha", "11"), entryOf("Gamma", "13")}),
              (std::vector<int>{0, 2}));
}

TEST(ResolveEntries, TitlesCorrectNumbersThatAreOff) {
    const MadePages pages = headedPages({"Alpha", "Beta", "Gamma", "Delta"}, 11);
    EXPECT_EQ(resolvedPages(pages, {entryOf("Alpha", "11"), entryOf("Gamma", "13"), entryOf("Delta", "13")}),
              (std::vector<int>{0, 2, 3}));
}

TEST(ResolveEntries, TitlesTellTheOffsetWhereNoNumbersArePrinted) {
    MadePages pages;
    pages.page().paragraph(100, 10).page().paragraph(100, 10);
    for (const QString title : {"Alpha", "Beta", "Gamma", "Delta"})
        pages.page().text(60, 100, title, boldLook(14)).paragraph(130, 10);
    EXPECT_EQ(resolvedPages(pages, {entryOf("Alpha", "1"), entryOf("Beta", "2"), entryOf("Delta", "4")}),
              (std::vector<int>{2, 3, 5}));
}

TEST(ResolveEntries, LinksLeadAndTitlesPlace) {
    const MadePages pages = headedPages({"Alpha", "Beta", "Gamma"}, 1);
    PrintedEntry entry = entryOf("Gamma", "1");
    entry.link = ContentsLink{QRectF(), 2, QPointF(0, 90)};
    EXPECT_EQ(resolvedPages(pages, {entry}), std::vector<int>{2});
    entry.link->targetPage = 1;  // a destination above the page break
    EXPECT_EQ(resolvedPages(pages, {entry}), std::vector<int>{2});
    entry.title = "Nowhere to be found";
    EXPECT_EQ(resolvedPages(pages, {entry}), std::vector<int>{1});
}

TEST(ResolveEntries, RowsWithoutNumberAreBetweenTheirNeighbours) {
    const MadePages pages = headedPages({"Alpha", "Middle", "Gamma", "Middle"}, 1);
    EXPECT_EQ(resolvedPages(pages, {entryOf("Alpha", "1"), entryOf("Middle", ""), entryOf("Gamma", "3")}),
              (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(resolvedPages(pages, {entryOf("Alpha", "1"), entryOf("Nowhere", ""), entryOf("Gamma", "3")}),
              (std::vector<int>{0, 2}));
}

std::vector<PrintedEntry> entriesLeadingTo(const std::vector<int> &pages, int located) {
    std::vector<PrintedEntry> entries(pages.size());
    for (size_t i = 0; i < pages.size(); ++i) {
        entries[i].page = pages[i];
        if (static_cast<int>(i) < located) entries[i].heading = {pages[i], 0};
    }
    return entries;
}

TEST(AreContents, PagesRiseAndHalfOfTheHeadingsAreFound) {
    EXPECT_TRUE(areContents(entriesLeadingTo({1, 2, 3, 4, 5, 6}, 3)));
    EXPECT_FALSE(areContents(entriesLeadingTo({1, 2, 3, 4, 5, 6}, 2)));
    EXPECT_FALSE(areContents(entriesLeadingTo({6, 5, 4, 3, 2, 1}, 6)));
    EXPECT_TRUE(areContents(entriesLeadingTo({1, 2, 9, 4, 5, 6}, 6)));
    EXPECT_FALSE(areContents(entriesLeadingTo({1, 2}, 2)));
}

TEST(AreContents, LinksNeedFewerHeadings) {
    std::vector<PrintedEntry> entries = entriesLeadingTo({1, 2, 3, 4, 5, 6}, 2);
    for (PrintedEntry &entry : entries)
        entry.link = ContentsLink();
    EXPECT_TRUE(areContents(entries));
    entries[1].heading = LineRef();
    EXPECT_FALSE(areContents(entries));
}

std::vector<int> levelsOf(std::vector<PrintedEntry> entries) {
    assignPrintedLevels(entries, BodyStyle());
    std::vector<int> levels;
    for (const PrintedEntry &entry : entries)
        levels.push_back(entry.level);
    return levels;
}

TEST(PrintedLevels, AreTheDepthOfDottedNumbers) {
    EXPECT_EQ(levelsOf({entryOf("1 A", "1"), entryOf("1.1 B", "1"), entryOf("1.1.1 C", "2"),
                        entryOf("1.2 D", "2"), entryOf("2 E", "3")}),
              (std::vector<int>{1, 2, 3, 2, 1}));
}

TEST(PrintedLevels, ChaptersWithoutNumberStandAboveTheirSections) {
    EXPECT_EQ(levelsOf({entryOf("Alpha", "1"), entryOf("1.1 B", "1", 75), entryOf("1.2 C", "2", 75),
                        entryOf("Beta", "3"), entryOf("2.1 D", "3", 75)}),
              (std::vector<int>{1, 2, 2, 1, 2}));
}

TEST(PrintedLevels, WithoutNumbersAreThoseOfTheIndent) {
    EXPECT_EQ(levelsOf({entryOf("Alpha", "1"), entryOf("Beta", "1", 75), entryOf("Gamma", "2", 90),
                        entryOf("Delta", "2", 75), entryOf("Epsilon", "3"), entryOf("Zeta", "4", 75),
                        entryOf("Eta", "4", 90)}),
              (std::vector<int>{1, 2, 3, 2, 1, 2, 3}));
}

TEST(PrintedLevels, OfOneIndentAreThoseOfTheStyle) {
    EXPECT_EQ(levelsOf({entryOf("Alpha", "1", 60, boldLook(12)), entryOf("Beta", "1"), entryOf("Gamma", "2"),
                        entryOf("Delta", "2", 60, boldLook(12)), entryOf("Epsilon", "3")}),
              (std::vector<int>{1, 2, 2, 1, 2}));
}

TEST(PrintedLevels, PartsPushTheRestDownButNotTheBackMatter) {
    EXPECT_EQ(levelsOf({entryOf("Preface", "1"), entryOf("Part I Alpha", "2"), entryOf("1 A", "3"),
                        entryOf("1.1 B", "3"), entryOf("1.2 C", "4"), entryOf("Part II Beta", "5"),
                        entryOf("2 D", "6"), entryOf("2.1 E", "6"), entryOf("Index", "9")}),
              (std::vector<int>{1, 1, 2, 3, 3, 1, 2, 3, 1}));
}

TEST(PrintedLevels, RomanNumbersBesideArabicOnesAreParts) {
    EXPECT_EQ(levelsOf({entryOf("I Alpha", "1"), entryOf("1 A", "2"), entryOf("2 B", "3"),
                        entryOf("II Beta", "4"), entryOf("3 C", "5")}),
              (std::vector<int>{1, 2, 2, 1, 2}));
}

TEST(PrintedLevels, AppendicesAreChapters) {
    EXPECT_EQ(levelsOf({entryOf("1 A", "1"), entryOf("1.1 B", "1"), entryOf("1.2 C", "1"),
                        entryOf("Appendix A Tables", "2"), entryOf("A.1 D", "2")}),
              (std::vector<int>{1, 2, 2, 1, 2}));
}

TEST(PrintedLevels, NeverJumpDown) {
    EXPECT_EQ(levelsOf({entryOf("1 A", "1"), entryOf("1.1.1 B", "1"), entryOf("1.1.2 C", "1"),
                        entryOf("2.1.1 D", "2")}),
              (std::vector<int>{1, 2, 2, 2}));
}

}  // namespace
}  // namespace leafwright
