#include "autotoc/MiniTOC.h"
#include "categories/SelectionFont.h"
#include "support/FakePages.h"
#include "support/OpenPdf.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::FakePages;
using test::makeFont;
using test::Piece;

const Font body = makeFont("Times", 10);
const Font a = makeFont("Times", 24);
const Font b = makeFont("Helvetica", 18, BoldTrait);

AttributedString textOf(const std::vector<Piece> &pieces) {
    AttributedString text;
    for (const Piece &piece : pieces)
        text.append(piece.text, piece.font);
    return text;
}

QString found(const TextPages &pages, const QStringList &pattern) {
    const QStringList lines = runMiniTOC(pages, pattern)->plusDescriptionForLevel(0).split('\n');
    return lines.mid(1).join('\n');
}

QString found(const std::vector<Piece> &pieces, const QStringList &pattern) {
    FakePages pages;
    pages.add("7", pieces);
    return found(pages, pattern);
}

const QStringList onlyA{"24.0 Times"};
const QStringList ab{"24.0 Times", "18.5 Helvetica Bold"};

TEST(FontPattern, HasTheFontStringOfEveryRunInOrder) {
    EXPECT_EQ(fontPattern(textOf({{"Chapter", a}, {"3", b}})), ab);
    EXPECT_EQ(fontPattern(textOf({{"A", a}, {"B", b}, {"C", a}})),
              (QStringList{"24.0 Times", "18.5 Helvetica Bold", "24.0 Times"}));
    EXPECT_EQ(fontPattern({}), QStringList());
}

TEST(FontPattern, RunsOfBlanksAndPunctuationCount) {
    EXPECT_EQ(fontPattern(textOf({{"Chapter", a}, {" \n", body}, {"3", b}, {".", body}})),
              (QStringList{"24.0 Times", "10.0 Times", "18.5 Helvetica Bold", "10.0 Times"}));
}

TEST(MiniTOC, TopItemLeadsToTheFirstPage) {
    FakePages pages;
    pages.add("iv", {}).add("v", {{"Chapter", a}});
    EXPECT_EQ(runMiniTOC(pages, onlyA)->plusDescriptionForLevel(0), " @iv MiniTOC\n+ @v Chapter\n");
    EXPECT_EQ(runMiniTOC(pages, onlyA)->pointOnPage(), QPointF(0, 0));
}

TEST(MiniTOC, WithoutPagesTheTopItemLeadsNowhere) {
    const auto top = runMiniTOC(FakePages(), onlyA);
    EXPECT_EQ(top->pageTitle(), "MiniTOC");
    EXPECT_TRUE(top->pageLabel().isNull());
    EXPECT_TRUE(top->children().empty());
}

TEST(MiniTOC, FindsEveryRunOfOneFontFollowedByOneOfAnother) {
    EXPECT_EQ(found({{"Chapter ", a},
                     {"3\n", b},
                     {"text ", body},
                     {"Chapter ", a},
                     {"text ", body},
                     {"3 ", b},
                     {"text ", body},
                     {"Section\n", a},
                     {" 4", b}},
                    ab),
              "+ @7 Chapter3\n+ @7 Section4\n");
}

TEST(MiniTOC, ASampleOfOneFontFindsEveryRunInIt) {
    EXPECT_EQ(found({{"Chapter 3", a}, {"body text", body}, {"Chapter 4", a}}, onlyA),
              "+ @7 Chapter 3\n+ @7 Chapter 4\n");
    EXPECT_EQ(found({{"Chapter 3", a}, {"12", body}, {"Chapter 4", a}, {"body text", body}}, {"10.0 Times"}),
              "+ @7 12\n+ @7 body text\n");
}

TEST(MiniTOC, ABlankRunOfTheSampleMustBeInTheHeadingsToo) {
    const QStringList pattern = fontPattern(textOf({{"Chapter", a}, {" \n", body}, {"3", b}}));
    EXPECT_EQ(found({{"Chapter", a}, {"3", b}, {"Chapter", a}, {" ", body}, {"4", b}}, pattern),
              "+ @7 Chapter4\n");
    EXPECT_EQ(found({{"Chapter", a}, {" ", body}, {"4", b}}, ab), "");
}

TEST(MiniTOC, WithoutAnotherOccurrenceTheSampleIsTheOnlyChild) {
    EXPECT_EQ(found({{"text", body}, {"Chapter", a}, {"3", b}, {"text", body}}, ab), "+ @7 Chapter3\n");
}

TEST(MiniTOC, ARunThatBreaksAMatchStartsNone) {
    EXPECT_EQ(found({{"A", a}, {"A", makeFont("Times", 23.8)}, {"B", b}}, ab), "") << "A, A, B";
    EXPECT_EQ(found({{"A", a}, {"x", body}, {"A", a}, {"B", b}}, ab), "+ @7 AB\n");
}

TEST(MiniTOC, AMatchMayFollowAnotherAtOnce) {
    EXPECT_EQ(found({{"A", a}, {"B", b}, {"C", a}, {"D", b}}, ab), "+ @7 AB\n+ @7 CD\n");
}

TEST(MiniTOC, APatternMayHoldAFontTwice) {
    const QStringList aba{"24.0 Times", "18.5 Helvetica Bold", "24.0 Times"};
    EXPECT_EQ(found({{"A", a}, {"B", b}, {"C", a}, {"D", b}, {"E", a}}, aba), "+ @7 ABC\n")
        << "C ends a match and starts none";
}

TEST(MiniTOC, SizesAreComparedRounded) {
    EXPECT_EQ(
        found({{"Chapter", makeFont("Times", 24.4)}, {"3", makeFont("Helvetica", 17.6, BoldTrait)}}, ab),
        "+ @7 Chapter3\n");
    EXPECT_EQ(found({{"Chapter", makeFont("Times", 24.5)}, {"3", b}}, ab), "");
    EXPECT_EQ(found({{"Chapter", a}, {"3", makeFont("Helvetica", 18)}}, ab), "") << "bold must be";
    EXPECT_EQ(found({{"Chapter", makeFont("Courier", 24)}, {"3", b}}, ab), "");
}

TEST(MiniTOC, TextsAreTrimmedButNotSqueezed) {
    EXPECT_EQ(found({{"\n The   first\npart \n", a}, {" 3\t", b}}, ab), "+ @7 The   first part3\n");
}

TEST(MiniTOC, LengthAndLettersDoNotMatter) {
    EXPECT_EQ(found({{"1", a}, {"text", body}, {QString(70, 'x'), a}, {"text", body}, {" ", a}}, onlyA),
              "+ @7 1\n+ @7 " + QString(70, 'x') + "\n+ @7 \n");
}

TEST(MiniTOC, AMatchGoesOnFromPageToPage) {
    FakePages pages;
    pages.add("1", {{"text", body}, {"Chapter", a}}).add("2", {}).add("3", {{"3", b}, {"text", body}});
    const auto top = runMiniTOC(pages, ab);
    ASSERT_EQ(top->children().size(), 1U);
    EXPECT_EQ(top->children()[0]->pageTitle(), "Chapter3");
    EXPECT_EQ(top->children()[0]->pageLabel(), "3") << "where it ends";
    EXPECT_EQ(top->children()[0]->pointOnPage(), QPointF(20, 220)) << "where it begins";
}

TEST(MiniTOC, ItemsLeadToTheFirstRunsOfTheirMatches) {
    FakePages pages;
    pages.add("1", {{"text", body}, {"Chapter", a}, {"3", b}, {"Chapter", a}, {"4", b}});
    const auto top = runMiniTOC(pages, ab);
    ASSERT_EQ(top->children().size(), 2U);
    EXPECT_EQ(top->children()[0]->pointOnPage(), QPointF(20, 220));
    EXPECT_EQ(top->children()[1]->pointOnPage(), QPointF(40, 420));
}

TEST(MiniTOC, AnEmptyPatternMatchesNothing) {
    EXPECT_EQ(found({{"Chapter", a}}, {}), "");
}

TEST(MiniTOC, FindsHeadingsOfAPdfByASelectionFromIt) {
    using test::PdfBuilder;
    PdfBuilder pdf;
    for (const char *number : {"1", "2"}) {
        pdf.addPage(PdfBuilder::showText("F2", 24, 72, 700, "Chapter") +
                    PdfBuilder::showText("F3", 24, 72, 660, number) +
                    PdfBuilder::showText("F1", 10, 72, 620, "Body text"));
    }
    const auto document = test::openPdf(pdf);
    const auto sample = document->page(1)->selectionForRange({0, 9});
    ASSERT_EQ(sample.string(), "Chapter\n2");

    const auto top = runMiniTOC(*document, fontPattern(sample.attributedString()));
    ASSERT_EQ(top->plusDescriptionForLevel(0), " @1 MiniTOC\n+ @1 Chapter1\n+ @2 Chapter2\n");
    EXPECT_EQ(top->children()[1]->pointOnPage(), topLeftPoint(document->page(1)->selectionForRange({0, 8})));
}

}  // namespace
}  // namespace leafwright
