#include "contents/FindContents.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;
using test::TextLook;

struct MadeEntry {
    int level;
    QString title;
    int page;  ///< From 1, counted without the pages of contents.
    bool isPrinted = true;
};

const TextLook looks[] = {{}, boldLook(18), boldLook(14), boldLook(12)};

/// A document with these headings, and a printed contents before it if any is printed.
MadePages documentOf(const std::vector<MadeEntry> &entries) {
    MadePages pages;
    double y = 110;
    for (const MadeEntry &entry : entries) {
        if (!entry.isPrinted) continue;
        if (y == 110) pages.page().text(60, 80, "Contents", boldLook(18));
        pages.contentsRow(45 + 15 * entry.level, y, entry.title, QString::number(entry.page));
        y += 14;
    }
    int page = 0;
    for (const MadeEntry &entry : entries) {
        for (; page < entry.page; y = 100)
            pages.page().text(300, 780, QString::number(++page));
        pages.text(60, y, entry.title, looks[entry.level]).paragraph(y + 24, 8);
        y += 160;
    }
    return pages;
}

QStringList titlesIn(const FoundContents &found) {
    QStringList titles;
    for (const ContentsEntry &entry : found.entries)
        titles += QString("%1 %2").arg(entry.level).arg(entry.title);
    return titles;
}

QStringList titlesIn(const ContentsPages &pages, const ContentsOptions &options = {}) {
    return titlesIn(findContents(pages, options));
}

/// Three chapters with sections and, not printed, subsections.
std::vector<MadeEntry> deepBook() {
    std::vector<MadeEntry> entries;
    for (int i = 1; i <= 3; ++i) {
        entries.push_back({1, QString("%1 Chapter %2").arg(i).arg(QChar(u'a' + i)), 2 * i - 1});
        entries.push_back({2, QString("%1.1 Section of %2").arg(i).arg(QChar(u'a' + i)), 2 * i - 1});
        entries.push_back({3, QString("%1.1.1 Detail of %2").arg(i).arg(QChar(u'a' + i)), 2 * i - 1, false});
        entries.push_back({2, QString("%1.2 Other of %2").arg(i).arg(QChar(u'a' + i)), 2 * i});
        entries.push_back({3, QString("%1.2.1 Point of %2").arg(i).arg(QChar(u'a' + i)), 2 * i, false});
    }
    return entries;
}

QStringList titlesOf(const std::vector<MadeEntry> &entries, bool printedOnly = false) {
    QStringList titles;
    for (const MadeEntry &entry : entries) {
        if (entry.isPrinted || !printedOnly) titles += QString("%1 %2").arg(entry.level).arg(entry.title);
    }
    return titles;
}

TEST(Combining, NumberedHeadingsBelowBriefContentsAreAdded) {
    EXPECT_EQ(titlesIn(documentOf(deepBook())), titlesOf(deepBook()));
}

TEST(Combining, AsPrintedLeavesThemOut) {
    ContentsOptions options;
    options.depth = ContentsDepth::AsPrinted;
    EXPECT_EQ(titlesIn(documentOf(deepBook()), options), titlesOf(deepBook(), true));
}

TEST(Combining, ARowThatWasLostIsAdded) {
    std::vector<MadeEntry> entries = deepBook();
    std::erase_if(entries, [](const MadeEntry &entry) { return entry.level == 3; });
    entries[5].isPrinted = false;
    ASSERT_EQ(entries[5].title, "2.2 Other of c");
    ContentsOptions options;
    options.depth = ContentsDepth::AsPrinted;
    EXPECT_EQ(titlesIn(documentOf(entries), options), titlesOf(entries));
}

TEST(Combining, UnnumberedHeadingsBelowTheContentsAreAddedOnlyWhenAskedFor) {
    std::vector<MadeEntry> entries = deepBook();
    for (MadeEntry &entry : entries) {
        if (entry.level == 3) entry.title = entry.title.mid(6);
    }
    const MadePages pages = documentOf(entries);
    EXPECT_EQ(titlesIn(pages), titlesOf(entries, true));
    ContentsOptions options;
    options.depth = ContentsDepth::Deeper;
    EXPECT_EQ(titlesIn(pages, options), titlesOf(entries));
}

TEST(Combining, ContentsOfOneLevelAreBrief) {
    std::vector<MadeEntry> entries = deepBook();
    std::erase_if(entries, [](const MadeEntry &entry) { return entry.level == 3; });
    for (MadeEntry &entry : entries)
        entry.isPrinted = entry.level == 1;
    EXPECT_EQ(titlesIn(documentOf(entries)), titlesOf(entries));
}

/// Chapters behind the contents of an older edition, and what the outline of the chapters is.
std::pair<MadePages, QStringList> chaptersBehindStaleContents(const TextLook &rowLook = {}) {
    MadePages pages;
    pages.page().text(60, 80, "Contents", boldLook(18));
    for (int i = 0; i < 8; ++i)
        pages.contentsRow(60, 110 + 14 * i, QString("Title of an older edition %1").arg(QChar(u'a' + i)),
                          QString::number(i + 1), true, rowLook);
    QStringList expected;
    for (int i = 1; i <= 8; ++i) {
        const QString title = QString("%1 Chapter %2").arg(i).arg(QChar(u'a' + i));
        pages.page().text(60, 100, title, boldLook(18)).paragraph(130, 20).text(300, 780, QString::number(i));
        expected += "1 " + title;
    }
    return {pages, expected};
}

TEST(Combining, ContentsThatDoNotAgreeWithThePagesAreNotTrusted) {
    const auto [pages, expected] = chaptersBehindStaleContents();
    EXPECT_EQ(titlesIn(pages), expected);
}

TEST(Combining, ContentsPagesAreNotAmongTheEntries) {
    EXPECT_EQ(titlesIn(documentOf(deepBook())), titlesOf(deepBook()));
    const auto [pages, expected] = chaptersBehindStaleContents(boldLook(18));
    EXPECT_EQ(titlesIn(pages), expected) << "although all of them look like its chapters";
}

TEST(Combining, StructureIsAskedFirst) {
    MadePages pages = documentOf(deepBook());
    pages.document.headings = {{1, 1, "1 Chapter b"},    {2, 1, "1.1 Section of b"}, {1, 3, "2 Chapter c"},
                               {1, 5, "3 Chapter d"},    {2, 5, "3.1 Section of d"}, {2, 6, "3.2 Other of d"},
                               {2, 2, "1.2 Other of b"}, {3, 1, "1.1.1 Detail of b"}};
    const FoundContents found = findContents(pages, {});
    ASSERT_EQ(found.entries.size(), 8U);
    EXPECT_EQ(found.entries[0].sources, static_cast<ContentsSources>(StructureSource));
    EXPECT_EQ(found.entries[7].level, 3);
    ContentsOptions textOnly;
    textOnly.textOnly = true;
    EXPECT_EQ(titlesIn(pages, textOnly), titlesOf(deepBook()));
}

TEST(Combining, StructureThatIsNotOnThePagesIsNotTrusted) {
    MadePages pages = documentOf(deepBook());
    for (int i = 0; i < 10; ++i)
        pages.document.headings.push_back({1, 1, QString("Something else %1").arg(i)});
    EXPECT_EQ(titlesIn(pages), titlesOf(deepBook()));
}

TEST(Combining, RunningHeadsAreNoEntries) {
    MadePages pages;
    QStringList expected;
    for (int i = 1; i <= 6; ++i) {
        const QString title = QString("%1 Chapter %2").arg(i).arg(QChar(u'a' + i));
        pages.page().text(60, 100, title, boldLook(18)).paragraph(130, 30);
        pages.page().text(60, 40, title.toUpper(), boldLook(12)).paragraph(80, 30);
        pages.page().text(60, 40, title.toUpper(), boldLook(12)).paragraph(80, 30);
        pages.page().text(60, 40, title.toUpper(), boldLook(12)).paragraph(80, 30);
        expected += "1 " + title;
    }
    EXPECT_EQ(titlesIn(pages), expected);
}

}  // namespace
}  // namespace leafwright
