#include "contents/FindContents.h"
#include "contents/StructureContents.h"
#include "support/MadePages.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;
using testing::HasSubstr;

/// An entry as "level title, number".
QStringList linesOf(const std::vector<PrintedEntry> &entries) {
    QStringList lines;
    for (const PrintedEntry &entry : entries) {
        lines += QString("%1 %2").arg(entry.level).arg(entry.title);
        if (!entry.number.isEmpty()) lines.back() += ", " + entry.number;
    }
    return lines;
}

std::vector<PrintedEntry> entriesOf(const std::vector<StructureItem> &items, const MadePages &pages) {
    return entriesOfItems(items, readAllLines(pages, {}, [](int) {}));
}

MadePages blankPage() {
    return MadePages().page();
}

TEST(EntriesOfItems, EndInPageNumbers) {
    EXPECT_EQ(linesOf(entriesOf({{1, 0, "1 Soil . . . . 2", {}},
                                 {1, 0, "1.1 Sand  3", {}},
                                 {1, 0, "Preface.....iv", {}},
                                 {1, 0, "Chapter 7", {}},
                                 {1, 0, "More", {}}},
                                blankPage())),
              (QStringList{"1 1 Soil, 2", "1 1.1 Sand, 3", "1 Preface, iv", "1 Chapter 7", "1 More"}));
}

TEST(EntriesOfItems, FewNumbersAreThoseOfTitles) {
    EXPECT_EQ(linesOf(entriesOf({{1, 0, "The year 1984", {}}, {1, 0, "Before", {}}, {1, 0, "Since", {}}},
                                blankPage())),
              (QStringList{"1 The year 1984", "1 Before", "1 Since"}));
}

TEST(EntriesOfItems, LevelsThatNoneHasAreNotCounted) {
    EXPECT_EQ(linesOf(entriesOf({{2, 0, "A", {}}, {4, 0, "B", {}}, {3, 0, "C", {}}}, blankPage())),
              (QStringList{"1 A", "3 B", "2 C"}));
}

TEST(EntriesOfItems, ItemsOfNoPageAndTheTitleAreNone) {
    EXPECT_EQ(linesOf(entriesOf({{1, 0, "Contents", {}}, {1, 0, "A", {}}, {1, 1, "B", {}}, {1, -1, "C", {}}},
                                blankPage())),
              QStringList("1 A"));
}

/// The left edges of the rows of each entry.
std::vector<std::vector<double>> rowsOf(const std::vector<PrintedEntry> &entries) {
    std::vector<std::vector<double>> rows;
    for (const PrintedEntry &entry : entries) {
        rows.emplace_back();
        for (const TextLine &row : entry.rows)
            rows.back().push_back(row.left);
    }
    return rows;
}

TEST(EntriesOfItems, KnowTheRowsThatTheyArePrintedIn) {
    MadePages pages;
    pages.page()
        .contentsRow(60, 100, "Soil", "2")
        .text(70, 112, "Sand and what")
        .contentsRow(80, 124, "lives in it", "3", false);
    pages.contentsRow(90, 136, "Soil", "2");
    EXPECT_THAT(
        rowsOf(entriesOf({{1, 0, "Soil . . 2", {}},
                          {1, 0, "Sand and what lives in it 3", {}},
                          {1, 0, "Soil 2", {}},
                          {1, 0, "Nowhere 4", {}}},
                         pages)),
        testing::ElementsAre(testing::ElementsAre(60, testing::_), testing::ElementsAre(70, 80, testing::_),
                             testing::ElementsAre(90, testing::_), testing::ElementsAre(90)))
        << "what is not found is taken to stand where the one before does";
}

TEST(EntriesOfItems, LeadWhereALinkOnTheirRowsDoes) {
    MadePages pages;
    pages.page()
        .text(60, 100, "Soil")
        .link(60, 90, 100, 7, 80)
        .text(60, 112, "Sand")
        .link(60, 90, 112, 8, 80);
    pages.text(60, 124, "Clay");
    const ContentsLink tagged{{}, 9, {}};
    const auto entries = entriesOf({{1, 0, "Soil", {}}, {1, 0, "Sand", tagged}, {1, 0, "Clay", {}}}, pages);
    ASSERT_EQ(entries.size(), 3U);
    ASSERT_TRUE(entries[0].link);
    EXPECT_EQ(entries[0].link->targetPage, 7);
    EXPECT_EQ(entries[1].link->targetPage, 9);
    EXPECT_FALSE(entries[2].link);
}

TEST(EntriesOfItems, RowsOfAnItemAreMoreThanItsBeginning) {
    MadePages pages;
    pages.page().text(60, 100, "S").text(60, 112, "What is said");
    EXPECT_THAT(rowsOf(entriesOf({{1, 0, "Soil", {}}, {1, 0, "What is said here", {}}}, pages)),
                testing::ElementsAre(testing::ElementsAre(0), testing::ElementsAre(60)));
}

/// A book whose contents are printed in one size at one margin without numbers before the titles, so that
/// only the structure tells their levels: two parts of two chapters each, one a page.
class TaggedContents {
public:
    TaggedContents() {
        pages.page().text(60, 80, "Contents", boldLook(18));
        std::vector<StructureItem> items;
        double y = 110;
        for (size_t i = 0; i < titles.size(); ++i, y += 14) {
            const QString number = QString::number(i + 1);
            pages.contentsRow(60, y, titles[i], number);
            items.push_back({i % 3 == 0 ? 1 : 2, 0, titles[i] + " . . . . " + number, {}});
        }
        pages.document.contents = {items};
        for (size_t i = 0; i < titles.size(); ++i) {
            pages.page().text(60, 100, titles[i], boldLook(14)).paragraph(130, 30);
            pages.text(300, 780, QString::number(i + 1));
        }
    }
    /// "level title @page by evidence"
    QStringList outline(const ContentsOptions &options = {}) const {
        QStringList lines;
        for (const ContentsEntry &entry : findContents(pages, options).entries) {
            lines += QString("%1 %2 @%3").arg(entry.level).arg(entry.title).arg(entry.pageIndex);
            sources |= entry.sources;
        }
        return lines;
    }
    QStringList nested() const { return lines({1, 2, 2, 1, 2, 2}); }
    QStringList flat() const { return lines({1, 1, 1, 1, 1, 1}); }

    const std::vector<QString> titles = {"Earth below us",  "Grains of sand", "Waters of clay",
                                         "Skies above all", "Winds at night", "Clouds by day"};
    MadePages pages;
    mutable ContentsSources sources = 0;  ///< Of any entry of the outlines that were asked for.

private:
    QStringList lines(const std::vector<int> &levels) const {
        QStringList all;
        for (size_t i = 0; i < titles.size(); ++i)
            all += QString("%1 %2 @%3").arg(levels[i]).arg(titles[i]).arg(i + 1);
        return all;
    }
};

TEST(StructureContents, TellLevelsThatThePrintDoesNot) {
    TaggedContents book;
    EXPECT_EQ(book.outline(), book.nested());
    EXPECT_EQ(book.sources, PrintedSource | StyleSource | StructureSource);
}

TEST(StructureContents, AreIgnoredByTextAlone) {
    TaggedContents book;
    ContentsOptions options;
    options.textOnly = true;
    EXPECT_EQ(book.outline(options), book.flat());
    EXPECT_EQ(book.sources, PrintedSource | StyleSource);
}

TEST(StructureContents, AreFoundWhereTheRowsDoNotLookLikeIt) {
    TaggedContents book;
    MadePages pages;
    pages.page();
    pages.document = book.pages.document;
    std::vector<StructureItem> &items = pages.document.contents.front();
    for (size_t i = 0; i < items.size(); ++i) {
        pages.text(60 + 7 * static_cast<double>(i), 110 + 30 * static_cast<double>(i), book.titles[i]);
        items[i].text = book.titles[i];
        items[i].link = ContentsLink{{}, static_cast<int>(i) + 1, QPointF(60, 90)};
    }
    for (const QString &title : book.titles)
        pages.page().text(60, 100, title, boldLook(14)).paragraph(130, 30);
    book.pages = std::move(pages);
    EXPECT_EQ(book.outline(), book.nested());
    EXPECT_TRUE(book.sources & LinkSource);
}

TEST(StructureContents, OfOneLevelHaveThatOfTheirRows) {
    TaggedContents book;
    book.pages = MadePages();
    book.pages.page().text(60, 80, "Contents", boldLook(18));
    std::vector<StructureItem> items;
    for (size_t i = 0; i < book.titles.size(); ++i) {
        const QString number = QString::number(i + 1);
        book.pages.contentsRow(i % 3 == 0 ? 60 : 80, 110 + 14 * static_cast<double>(i), book.titles[i],
                               number);
        items.push_back({1, 0, book.titles[i] + " . . . . " + number, {}});
    }
    for (const QString &title : book.titles)
        book.pages.page().text(60, 100, title, boldLook(14)).paragraph(130, 30);
    book.pages.document.contents = {items};
    EXPECT_EQ(book.outline(), book.nested());
    EXPECT_TRUE(book.sources & StructureSource);
}

TEST(StructureContents, HeadingsOfTheStructureLeadUnlessTheyAreFewer) {
    TaggedContents book;
    for (int i = 0; i < 5; ++i)
        book.pages.document.headings.push_back({1, i + 1, book.titles[static_cast<size_t>(i)]});
    EXPECT_EQ(book.outline(), book.flat().first(5)) << "five of six are enough";
    EXPECT_TRUE(book.sources & PrintedSource);
    book.pages.document.headings.pop_back();
    EXPECT_EQ(book.outline(), book.nested()) << "four of six are not";
}

TEST(StructureContents, ListsOfFiguresAreNoContents) {
    TaggedContents book;
    std::vector<StructureItem> figures;
    for (int i = 0; i < 12; ++i) {
        const QString title =
            QString("Figure %1 Something about %2").arg(i + 1).arg(QString(5, QChar(u'a' + i)));
        book.pages.page().text(60, 100, title).paragraph(130, 30).text(300, 780, QString::number(i + 7));
        figures.push_back({1, 0, title + " . . . " + QString::number(i + 7), {}});
    }
    book.pages.document.contents.insert(book.pages.document.contents.begin(), figures);
    EXPECT_EQ(book.outline(), book.nested());
    EXPECT_THAT(analyseContents(book.pages)->explanation().toStdString(),
                HasSubstr("Pages 1 to 1, by the structure: refused: a list of figures or the like\n"));
}

TEST(StructureContents, GiveWayToPrintedOnesThatLeadToMoreHeadings) {
    TaggedContents book;
    std::vector<StructureItem> &items = book.pages.document.contents.front();
    items.pop_back();
    EXPECT_EQ(book.outline().size(), 5) << "five of six are enough";
    items.pop_back();
    EXPECT_EQ(book.outline(), book.flat());
}

TEST(StructureContents, OfSeveralThatWithMostHeadingsCounts) {
    TaggedContents book;
    std::vector<StructureItem> brief = book.pages.document.contents.front();
    brief.resize(3);
    for (StructureItem &item : brief)
        item.level = 1;
    book.pages.document.contents = {brief, book.pages.document.contents.front(), brief};
    EXPECT_EQ(book.outline(), book.nested());
}

TEST(StructureContents, AreExplained) {
    const std::string text = analyseContents(TaggedContents().pages)->explanation().toStdString();
    for (const char *part :
         {"Pages 1 to 1, by the structure: taken\n", "  entry row on page 1, number \"2\": Grains of sand\n",
          "Pages 1 to 1: refused: another has more of its headings on the pages, or about as many\n",
          "Printed contents: pages 1 to 1, by the structure, 6 entries, 100 % found on their pages\n",
          " by printed style structure: Grains of sand\n"})
        EXPECT_THAT(text, HasSubstr(part));
}

}  // namespace
}  // namespace leafwright
