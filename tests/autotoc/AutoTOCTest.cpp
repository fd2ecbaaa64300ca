#include "autotoc/AutoTOC.h"
#include "categories/SelectionFont.h"
#include "pdf/PDFDocument.h"
#include "support/FakePages.h"
#include "support/PdfBuilder.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::FakePages;
using test::makeFont;
using test::Piece;

/// One page, with a paragraph behind every heading that keeps the next one from continuing it.
class AutoTOC : public testing::Test {
protected:
    void add(const Font &font, const QString &text) {
        pieces_.push_back({text, font});
        pieces_.push_back({" body text that is longer than the window ", body});
    }

    QString run(int maxDepth) const {
        FakePages pages;
        pages.add("7", pieces_);
        return runAutoTOCwithH1H2H3Map(pages, map, maxDepth)->plusDescriptionForLevel(0);
    }

    Font body = makeFont("Times", 10);
    Font a = makeFont("Times", 24);
    Font b = makeFont("Times", 18);
    Font c = makeFont("Times", 14);
    HeadingLevelMap map{levelRecord(1, a), levelRecord(2, b), levelRecord(3, c)};

private:
    std::vector<Piece> pieces_;
};

TEST_F(AutoTOC, NestsSectionsBelowChapters) {
    add(a, "Chapter One");
    add(b, "Section 1.1");
    add(b, "Section 1.2");
    add(a, "Chapter Two");
    EXPECT_EQ(run(3),
              " @7 AutoTOC3\n+ @7 Chapter One\n++ @7 Section 1.1\n++ @7 Section 1.2\n+ @7 Chapter Two\n");
}

TEST_F(AutoTOC, TopItemIsNamedAfterTheDepthAndLeadsToTheFirstPage) {
    FakePages pages;
    pages.add("iv", {}).add("v", {});
    const auto top = runAutoTOCwithH1H2H3Map(pages, map, 12);
    EXPECT_EQ(top->pageTitle(), "AutoTOC12");
    EXPECT_EQ(top->pageLabel(), "iv");
    EXPECT_EQ(top->pointOnPage(), QPointF(0, 0));
    EXPECT_TRUE(top->children().empty());
}

TEST_F(AutoTOC, AHeadingGoesOneDeeperThanTheLastAtMost) {
    add(a, "Level one");
    add(c, "First of three");
    add(c, "Second of three");
    EXPECT_EQ(run(3), " @7 AutoTOC3\n+ @7 Level one\n++ @7 First of three\n+++ @7 Second of three\n");
}

TEST_F(AutoTOC, AtItsOwnDepthAHeadingIsASibling) {
    add(a, "Level one");
    add(c, "First of three");
    add(c, "Second of three");
    add(c, "Third of three");
    EXPECT_EQ(run(3),
              " @7 AutoTOC3\n+ @7 Level one\n++ @7 First of three\n+++ @7 Second of three\n"
              "+++ @7 Third of three\n");
}

TEST_F(AutoTOC, ADeepLevelComesFirstAtTheTop) {
    add(c, "Level three");
    add(b, "Level two");
    add(a, "Level one");
    EXPECT_EQ(run(3), " @7 AutoTOC3\n+ @7 Level three\n++ @7 Level two\n+ @7 Level one\n");
}

TEST_F(AutoTOC, AShallowerHeadingClimbsToItsDepth) {
    add(a, "Level one");
    add(b, "Level two");
    add(c, "Level three");
    add(b, "Two again");
    add(c, "Three again");
    add(a, "One again");
    EXPECT_EQ(run(3),
              " @7 AutoTOC3\n+ @7 Level one\n++ @7 Level two\n+++ @7 Level three\n++ @7 Two again\n"
              "+++ @7 Three again\n+ @7 One again\n");
}

TEST_F(AutoTOC, HeadingsBelowTheDeepestLevelAreDropped) {
    add(a, "Level one");
    add(b, "Level two");
    add(c, "Level three");
    add(a, "One again");
    EXPECT_EQ(run(1), " @7 AutoTOC1\n+ @7 Level one\n+ @7 One again\n");
    EXPECT_EQ(run(2), " @7 AutoTOC2\n+ @7 Level one\n++ @7 Level two\n+ @7 One again\n");
}

TEST_F(AutoTOC, ALevelBeyondTheDepthIsPlacedWhereThereIsRoom) {
    add(c, "Level three");
    add(c, "Three again");
    add(b, "Level two");
    EXPECT_EQ(run(1), " @7 AutoTOC1\n+ @7 Level three\n");
    EXPECT_EQ(run(2), " @7 AutoTOC2\n+ @7 Level three\n++ @7 Three again\n++ @7 Level two\n");
}

TEST_F(AutoTOC, WithoutDepthThereIsOnlyTheTopItem) {
    add(a, "Level one");
    EXPECT_EQ(run(0), " @7 AutoTOC0\n");
}

TEST_F(AutoTOC, TitlesHaveFourToSixtyUnits) {
    add(a, "1.2");
    add(a, "abc");
    add(a, "Ch 1");
    add(a, QString(60, 'x'));
    add(a, QString(61, 'y'));
    EXPECT_EQ(run(3), " @7 AutoTOC3\n+ @7 Ch 1\n+ @7 " + QString(60, 'x') + "\n");
}

TEST_F(AutoTOC, BlanksAndNewlinesAtTheEndsDoNotCount) {
    add(a, "\n abc \n");
    add(a, "\n Ch 1 \n");
    add(a, "\t" + QString(60, 'x') + "  \n");
    EXPECT_EQ(run(3), " @7 AutoTOC3\n+ @7 Ch 1\n+ @7 " + QString(60, 'x') + "\n");
}

TEST_F(AutoTOC, PictogramsCountAsTwoUnits) {
    add(a, QStringLiteral("a\U0001F600"));
    add(a, QStringLiteral("ab\U0001F600"));
    EXPECT_EQ(run(3), QStringLiteral(" @7 AutoTOC3\n+ @7 ab\U0001F600\n"));
}

TEST_F(AutoTOC, RunsWithoutLettersAreNoHeadings) {
    add(a, "1234 a");
    add(a, "------");
    EXPECT_EQ(run(3), " @7 AutoTOC3\n");
}

TEST_F(AutoTOC, RunsOfBlanksInATitleShrinkToOne) {
    add(a, "Chapter\n  One \t of  Two");
    EXPECT_EQ(run(3), " @7 AutoTOC3\n+ @7 Chapter One of Two\n");
}

TEST_F(AutoTOC, OnlyExactlyTheMappedFontMatches) {
    add(makeFont("Times", 24.2), "Nearly as large");
    add(makeFont("Times", 24, BoldTrait), "Bolder");
    add(a, "Exactly");
    EXPECT_EQ(run(3), " @7 AutoTOC3\n+ @7 Exactly\n");
}

TEST_F(AutoTOC, TheLastRecordOfAFontCounts) {
    map = {levelRecord(1, a), levelRecord(2, b), levelRecord(1, b)};
    add(a, "Chapter One");
    add(b, "Chapter Two");
    EXPECT_EQ(run(3), " @7 AutoTOC3\n+ @7 Chapter One\n+ @7 Chapter Two\n");
}

TEST_F(AutoTOC, RecordsWithoutAFontMatchNothing) {
    map[0].font.reset();
    add(a, "Chapter One");
    add(b, "Section 1.1");
    EXPECT_EQ(run(3), " @7 AutoTOC3\n+ @7 Section 1.1\n");
}

TEST_F(AutoTOC, AnEmptyMapGivesOnlyTheTopItem) {
    map.clear();
    add(a, "Chapter One");
    EXPECT_EQ(run(3), " @7 AutoTOC3\n");
}

TEST_F(AutoTOC, ItemsLeadToTheirPagesAndSpots) {
    FakePages pages;
    pages.add("i", {{"Preface", a}}).add("ii", {}).add("1", {{"Some text ", body}, {"Chapter", a}});
    const auto top = runAutoTOCwithH1H2H3Map(pages, map, 3);
    ASSERT_EQ(top->children().size(), 2U);
    EXPECT_EQ(top->children()[0]->pageLabel(), "i");
    EXPECT_EQ(top->children()[0]->pointOnPage(), QPointF(10, 120));
    EXPECT_EQ(top->children()[1]->pageLabel(), "1");
    EXPECT_EQ(top->children()[1]->pointOnPage(), QPointF(20, 220));
}

TEST_F(AutoTOC, ItemsPointToTheTopLeftOfTheSelectedRun) {
    using test::PdfBuilder;
    PdfBuilder pdf;
    pdf.addPage(PdfBuilder::showText("F1", 10, 72, 700, "Some body text") +
                PdfBuilder::showText("F2", 24, 90, 600, "Chapter One"));
    const test::TempDir dir;
    pdf.save(dir.path("a.pdf"));
    const auto document = std::get<0>(PDFDocument::open(dir.path("a.pdf")));
    const FontRun run = document->pageText(0)->attributedString.runs.at(1);

    const auto top = runAutoTOCwithH1H2H3Map(*document, {levelRecord(1, run.font)}, 3);
    ASSERT_EQ(top->children().size(), 1U);
    const QPointF point = top->children()[0]->pointOnPage();
    EXPECT_EQ(point, topLeftPoint(document->page(0)->selectionForRange(run.range)));
    EXPECT_NEAR(point.x(), 90, 3);
    EXPECT_GT(point.y(), 600);
}

TEST_F(AutoTOC, EveryRunMakesANewTree) {
    add(a, "Chapter One");
    EXPECT_EQ(run(3), run(3));
}

}  // namespace
}  // namespace leafwright
