#include "contents/FindContents.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;

/// A tagged book: a printed contents of linked chapters if wanted, then three chapters, each with two
/// sections that are tagged and a remark that is not.
class TaggedBook {
public:
    explicit TaggedBook(bool isPrinted = false) {
        if (isPrinted) addContents();
        for (int i = 1; i <= 3; ++i) {
            const QChar letter(u'a' + i);
            pages.page();
            heading(1, 80, QString("Chapter about %1").arg(letter), boldLook(18));
            heading(2, 250, QString("First of the %1").arg(letter), boldLook(14));
            heading(2, 420, QString("Second of the %1").arg(letter), boldLook(14));
            pages.text(60, 590, QString("Remark on the %1").arg(letter), boldLook(12)).paragraph(614, 6);
            pages.text(300, 780, QString::number(i));
        }
    }

    MadePages pages;

private:
    void addContents() {
        pages.page().text(60, 80, "Contents", boldLook(18));
        for (int i = 1; i <= 3; ++i) {
            const double y = 96 + 14 * i;
            pages.contentsRow(60, y, QString("Chapter about %1").arg(QChar(u'a' + i)), QString::number(i));
            pages.link(60, 540, y, i, 60);
        }
    }
    void heading(int level, double y, const QString &title, const test::TextLook &look) {
        pages.text(60, y, title, look).paragraph(y + 24, 8);
        pages.document.headings.push_back({level, pages.pageCount() - 1, title});
    }
};

QStringList titlesOf(const FoundContents &found) {
    QStringList titles;
    for (const ContentsEntry &entry : found.entries)
        titles += QString("%1 %2").arg(entry.level).arg(entry.title);
    return titles;
}

const QStringList tagged = {"1 Chapter about b", "2 First of the b", "2 Second of the b",
                            "1 Chapter about c", "2 First of the c", "2 Second of the c",
                            "1 Chapter about d", "2 First of the d", "2 Second of the d"};

TEST(StructureOutline, EntriesKnowTheirStyles) {
    const auto analysis = analyseContents(TaggedBook().pages);
    const FoundContents found = analysis->choose({});
    ASSERT_EQ(titlesOf(found), tagged);
    EXPECT_GE(found.entries[0].style, 0);
    EXPECT_EQ(found.entries[3].style, found.entries[0].style);
    EXPECT_GE(found.entries[1].style, 0);
    EXPECT_NE(found.entries[1].style, found.entries[0].style);
    ASSERT_EQ(found.styles.size(), 3U);
    EXPECT_EQ(found.styles[0].sample, "Chapter about b");
    EXPECT_TRUE(found.styles[0].accepted);
    EXPECT_EQ(found.styles[1].level, 2);
    EXPECT_EQ(found.styles[1].count, 6);
    EXPECT_FALSE(found.styles[2].accepted) << "remarks are no headings of the structure";
}

TEST(StructureOutline, StylesAreSwitchedAndMoved) {
    const auto analysis = analyseContents(TaggedBook().pages);
    const FoundContents found = analysis->choose({});
    ASSERT_EQ(found.styles.size(), 3U);
    ContentsChoices off;
    off.styles[found.styles[1].id].accepted = false;
    EXPECT_EQ(titlesOf(analysis->choose({}, off)),
              (QStringList{"1 Chapter about b", "1 Chapter about c", "1 Chapter about d"}));
    ContentsChoices on;
    on.styles[found.styles[0].id].accepted = true;
    EXPECT_EQ(titlesOf(analysis->choose({}, on)), tagged) << "all of them are there already";
    on.styles[found.styles[2].id].accepted = true;
    const QStringList more = titlesOf(analysis->choose({}, on));
    EXPECT_EQ(more.size(), 12);
    EXPECT_EQ(more.value(3), "3 Remark on the b");
    ContentsChoices moved;
    moved.styles[found.styles[1].id].level = 1;
    EXPECT_EQ(titlesOf(analysis->choose({}, moved)).value(1), "1 First of the b");
}

TEST(StructureOutline, EvidenceNamesWhatAgrees) {
    TaggedBook book(true);
    const auto sourcesOf = [&book](size_t index) {
        const FoundContents found = findContents(book.pages, {});
        return index < found.entries.size() ? found.entries[index].sources : 0U;
    };
    EXPECT_EQ(sourcesOf(0), StructureSource | StyleSource | PrintedSource | LinkSource);
    EXPECT_EQ(sourcesOf(1), StructureSource | StyleSource);
    for (int i = 0; i < 3; ++i) {
        for (int k = 0; k < 2; ++k)
            book.pages.document.namedPlaces.push_back(
                {QString("section.%1.%2").arg(i + 1).arg(k + 1), i + 1, QPointF(60, 238 + 170 * k)});
    }
    EXPECT_EQ(sourcesOf(1), StructureSource | StyleSource | NameSource);
}

TEST(StructureOutline, TheWholeHeadingIsMarkedOnItsPage) {
    TaggedBook book;
    book.pages.page().text(60, 80, "A heading so long that it", boldLook(18));
    book.pages.text(60, 102, "goes on below", boldLook(18)).paragraph(126, 10);
    book.pages.document.headings.push_back({1, 3, "A heading so long that it goes on below"});
    const FoundContents found = findContents(book.pages, {});
    ASSERT_EQ(found.entries.size(), 10U);
    EXPECT_GT(found.entries[9].box.height(), 30);
}

}  // namespace
}  // namespace leafwright
