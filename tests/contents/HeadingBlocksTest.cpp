#include "contents/HeadingModel.h"
#include "contents/NamedHeadings.h"
#include "contents/RunningHeads.h"
#include "contents/StyleLevels.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;
using test::TextLook;

/// Pages with blocks and candidates.
struct Headings {
    explicit Headings(const MadePages &made)
        : pages(readAllLines(made, {}, [](int) {})), body(findBodyStyle(pages)) {
        markRunningHeads(pages);
        blocks = makeBlocks(pages, body);
        found = findHeadingCandidates(blocks, pages, body);
        scoreHeadings(found, body);
    }

    QStringList blockTexts() const {
        QStringList texts;
        for (const TextBlock &block : blocks)
            texts += block.text;
        return texts;
    }
    const HeadingCandidate *candidate(const QString &text) const {
        for (const HeadingCandidate &one : found.candidates) {
            if (one.block.text == text) return &one;
        }
        return nullptr;
    }
    double feature(const QString &text, HeadingFeature which) const {
        const HeadingCandidate *one = candidate(text);
        return one ? one->features[which] : -1;
    }

    std::vector<PageLines> pages;
    BodyStyle body;
    std::vector<TextBlock> blocks;
    HeadingCandidates found;
};

QStringList blocksOf(const MadePages &pages) {
    return Headings(pages).blockTexts();
}

TEST(HeadingBlocks, TitlesWrappedOverLinesAreOne) {
    MadePages pages;
    pages.page().text(60, 100, "A long title that is too wide for a line", boldLook(18));
    pages.text(60, 122, "of this page", boldLook(18)).paragraph(160, 10);
    EXPECT_EQ(blocksOf(pages).first(), "A long title that is too wide for a line of this page");
}

TEST(HeadingBlocks, ANumberBeginsANewOne) {
    MadePages pages;
    pages.page().text(60, 100, "1 The first title of all of the titles", boldLook(14));
    pages.text(60, 117, "1.1 The second title", boldLook(14)).paragraph(160, 10);
    EXPECT_EQ(blocksOf(pages).mid(0, 2),
              (QStringList{"1 The first title of all of the titles", "1.1 The second title"}));
}

TEST(HeadingBlocks, AShortLineEndsOne) {
    MadePages pages;
    pages.page()
        .text(60, 100, "Short one", boldLook(12))
        .text(60, 114, "Another title", boldLook(12))
        .paragraph(160, 10);
    EXPECT_EQ(blocksOf(pages).mid(0, 2), (QStringList{"Short one", "Another title"}));
}

TEST(HeadingBlocks, WhatStandsApartIsAnother) {
    MadePages pages;
    pages.page().text(60, 100, "A long title that is too wide for a line", boldLook(18));
    pages.text(60, 130, "Quite another long title of the page", boldLook(18)).paragraph(160, 10);
    EXPECT_EQ(blocksOf(pages).size(), 2 + 2);
}

TEST(HeadingBlocks, OtherLooksAreOthers) {
    MadePages pages;
    pages.page().text(60, 100, "A long title that is too wide for a line", boldLook(14));
    pages.text(60, 116, "and something in smaller letters beside it", boldLook(12)).paragraph(160, 10);
    EXPECT_EQ(blocksOf(pages).first(), "A long title that is too wide for a line");
}

TEST(HeadingBlocks, HyphensAtLineEndsGo) {
    MadePages pages;
    pages.page()
        .text(60, 100, "A title with hyphen-", boldLook(18))
        .text(60, 122, "ation", boldLook(18))
        .paragraph(160, 10);
    EXPECT_EQ(blocksOf(pages).first(), "A title with hyphenation");
}

TEST(HeadingBlocks, AChapterLabelJoinsTheTitleBelow) {
    MadePages pages;
    pages.page()
        .text(60, 100, "Chapter 3", boldLook(14))
        .text(60, 140, "The Title", boldLook(20))
        .paragraph(180, 10);
    EXPECT_EQ(blocksOf(pages).first(), "Chapter 3 The Title");
}

TEST(HeadingBlocks, ALargeNumberJoinsTheTitleBelow) {
    MadePages pages;
    pages.page().text(60, 100, "3", boldLook(40)).text(60, 140, "The Title", boldLook(20)).paragraph(180, 10);
    EXPECT_EQ(blocksOf(pages).first(), "3 The Title");
    MadePages small;
    small.page().text(60, 100, "3", boldLook(10)).text(60, 140, "The Title", boldLook(20)).paragraph(180, 10);
    EXPECT_EQ(blocksOf(small).mid(0, 2), (QStringList{"3", "The Title"}));
}

/// Ten lines of text in each of two columns.
void addColumns(MadePages &pages, double y) {
    for (int i = 0; i < 10; ++i) {
        pages.text(60, y + 12 * i, "some words of the column on the left of it")
            .text(320, y + 12 * i, "some words of the column on the right");
    }
}

TEST(HeadingBlocks, ColumnsAreReadOneAfterTheOther) {
    MadePages pages;
    pages.page().text(60, 100, "Left title", boldLook(12)).text(320, 100, "Right title", boldLook(12));
    addColumns(pages, 130);
    const QStringList blocks = blocksOf(pages);
    EXPECT_EQ(blocks.first(), "Left title");
    EXPECT_GT(blocks.indexOf("Right title"), 1);
}

TEST(HeadingCandidates, StandOutFromTheText) {
    MadePages pages;
    pages.page()
        .text(60, 100, "Bigger", {12})
        .paragraph(130, 8)
        .text(60, 250, "Bold", boldLook(10))
        .paragraph(270, 8);
    pages.text(60, 390, "Plain words").paragraph(420, 8).text(60, 540, "1.2 Numbered").paragraph(570, 8);
    const Headings headings(pages);
    EXPECT_TRUE(headings.candidate("Bigger"));
    EXPECT_TRUE(headings.candidate("Bold"));
    EXPECT_FALSE(headings.candidate("Plain words"));
    EXPECT_TRUE(headings.candidate("1.2 Numbered"));
}

TEST(HeadingCandidates, NoiseInSizesDoesNotStandOut) {
    MadePages pages;
    pages.page()
        .text(60, 100, "Hardly bigger", {10.3})
        .paragraph(130, 10)
        .text(60, 300, "Bigger", {11})
        .paragraph(330, 10);
    const Headings headings(pages);
    EXPECT_FALSE(headings.candidate("Hardly bigger"));
    EXPECT_TRUE(headings.candidate("Bigger"));
}

TEST(HeadingCandidates, LongTextAndReferencesAreNone) {
    MadePages pages;
    pages.page().text(60, 100, "[The Book 1999]", boldLook(10)).paragraph(130, 10);
    for (int i = 0; i < 5; ++i)
        pages.text(60, 300 + 14 * i, "words of a long text in large letters that goes on and on",
                   boldLook(12));
    const Headings headings(pages);
    EXPECT_TRUE(headings.found.candidates.empty());
}

TEST(HeadingCandidates, TextInACapitalsOrNumbersNeedsRoom) {
    MadePages pages;
    pages.page()
        .paragraph(80, 5)
        .text(60, 142, "1.2 in a paragraph")
        .paragraph(154, 10)
        .text(60, 300, "1.3 apart")
        .paragraph(320, 5);
    const Headings headings(pages);
    EXPECT_FALSE(headings.candidate("1.2 in a paragraph"));
    EXPECT_TRUE(headings.candidate("1.3 apart"));
}

TEST(HeadingFeatures, TellWhatSpeaksForAHeading) {
    using enum HeadingFeature;
    MadePages pages;
    pages.page().paragraph(80, 10).text(60, 230, "1.1 A title", boldLook(14)).paragraph(254, 10);
    pages.text(200, 400, "Figure 3: A caption.", boldLook(10))
        .text(50, 440, "out", boldLook(14))
        .paragraph(460, 5);
    const Headings headings(pages);
    EXPECT_EQ(headings.feature("1.1 A title", HeadingFeature::Dotted), 1);
    EXPECT_EQ(headings.feature("1.1 A title", Bigger), 1);
    EXPECT_EQ(headings.feature("1.1 A title", Bold), 1);
    EXPECT_EQ(headings.feature("1.1 A title", AtMargin), 1);
    EXPECT_EQ(headings.feature("1.1 A title", BodyBelow), 1);
    EXPECT_EQ(headings.feature("1.1 A title", FirstPage), 1);
    EXPECT_EQ(headings.feature("1.1 A title", InSequence), 1);
    EXPECT_EQ(headings.feature("1.1 A title", SmallerBelow), 1);
    EXPECT_NEAR(headings.feature("1.1 A title", GapAbove), 42 / 12.0 - 1, 1e-9);
    EXPECT_NEAR(headings.feature("1.1 A title", Length), 0.3, 1e-9);
    EXPECT_EQ(headings.feature("Figure 3: A caption.", Caption), 1);
    EXPECT_EQ(headings.feature("Figure 3: A caption.", EndsInStop), 1);
    EXPECT_EQ(headings.feature("Figure 3: A caption.", Indented), 1);
    EXPECT_EQ(headings.feature("out", Outdented), 1);
    EXPECT_EQ(headings.feature("out", HeadingFeature::StartsLowercase), 1);
}

TEST(HeadingModel, NumberedTitlesAreHeadingsAndBoldWordsInTextAreNot) {
    MadePages pages;
    for (int i = 1; i <= 6; ++i) {
        pages.page()
            .paragraph(80, 10)
            .text(60, 230, QString("%1.1 A title").arg(i), boldLook(14))
            .paragraph(254, 10);
        pages.text(72, 390, "note:", boldLook(10)).paragraph(404, 4);
    }
    const Headings headings(pages);
    EXPECT_GT(headings.candidate("3.1 A title")->probability, 0.9);
    EXPECT_LT(headings.candidate("note:")->probability, 0.1);
}

TEST(HeadingModel, AFontForHeadingsAloneMakesHeadings) {
    const auto probability = [](const QString &font) {
        MadePages pages;
        for (int i = 1; i <= 6; ++i) {
            pages.page().paragraph(80, 10);
            pages.text(60, 230, QString("%1.1 A title").arg(i), {14, true, "Helvetica-Bold"})
                .paragraph(254, 10);
        }
        pages.page().paragraph(80, 10).text(60, 222, "Subtitle", {10, true, font}).paragraph(240, 10);
        return Headings(pages).candidate("Subtitle")->probability;
    };
    EXPECT_GT(probability("Helvetica-Bold"), probability("Palatino-Bold") + 0.05);
}

std::vector<int> levelsOf(const MadePages &pages) {
    const Headings headings(pages);
    std::vector<size_t> all;
    for (size_t i = 0; i < headings.found.candidates.size(); ++i)
        all.push_back(i);
    return styleLevels(headings.found, all, headings.body);
}

/// Titles in sizes, with text between them.
MadePages titledPages(const std::vector<std::pair<QString, double>> &titles) {
    MadePages pages;
    for (const auto &[title, size] : titles)
        pages.page().paragraph(80, 5).text(60, 200, title, boldLook(size)).paragraph(240, 20);
    return pages;
}

TEST(StyleLevels, AreTheRankOfTheSize) {
    EXPECT_EQ(levelsOf(titledPages({{"Alpha", 20}, {"Beta", 14}, {"Gamma", 12}, {"Delta", 14}})),
              (std::vector<int>{1, 2, 3, 2}));
}

TEST(StyleLevels, SizesHardlyApartAreOneLevel) {
    EXPECT_EQ(levelsOf(titledPages({{"Alpha", 20}, {"Beta", 20.5}, {"Gamma", 14}})),
              (std::vector<int>{1, 1, 2}));
    EXPECT_EQ(levelsOf(titledPages({{"Alpha", 20}, {"Beta", 21}, {"Gamma", 14}})),
              (std::vector<int>{2, 1, 3}));
}

TEST(StyleLevels, AreTheDepthOfNumbers) {
    EXPECT_EQ(levelsOf(titledPages({{"1 Alpha", 20},
                                    {"1.1 Beta", 14},
                                    {"1.2 Gamma", 14},
                                    {"1.2.1 Delta", 14},
                                    {"Epsilon", 12},
                                    {"Preface", 20}})),
              (std::vector<int>{1, 2, 2, 3, 3, 1}));
}

TEST(NamedHeadings, DestinationsNameThem) {
    MadePages pages =
        titledPages({{"Alpha", 20}, {"Beta", 14}, {"Gamma", 14}, {"Delta", 20}, {"Epsilon", 14}});
    const QStringList names{"chapter.1", "section.1.1", "section.1.2", "chapter.2", "section.2.1"};
    for (int i = 0; i < names.size(); ++i)
        pages.document.namedPlaces.push_back({names[i], i, QPointF(60, 184)});
    const Headings headings(pages);
    const auto named =
        findNamedHeadings(pages.document.namedPlaces, headings.pages, headings.found, headings.body);
    ASSERT_EQ(named.size(), 5);
    const auto outline = outlineByNames(headings.found, named, headings.body);
    ASSERT_TRUE(outline);
    EXPECT_EQ(outline->levels, (std::vector<int>{1, 2, 2, 1, 2}));
}

TEST(NamedHeadings, FourAreTooFew) {
    MadePages pages = titledPages({{"Alpha", 20}, {"Beta", 14}, {"Gamma", 14}, {"Delta", 20}});
    for (int i = 0; i < 4; ++i)
        pages.document.namedPlaces.push_back({QString("section.%1").arg(i + 1), i, QPointF(60, 184)});
    const Headings headings(pages);
    EXPECT_TRUE(findNamedHeadings(pages.document.namedPlaces, headings.pages, headings.found, headings.body)
                    .isEmpty());
}

TEST(NamedHeadings, TheLineIsJustBelowTheDestination) {
    MadePages pages =
        titledPages({{"Alpha", 14}, {"Beta", 14}, {"Gamma", 14}, {"Delta", 14}, {"Epsilon", 14}});
    for (int i = 0; i < 5; ++i)
        pages.document.namedPlaces.push_back(
            {QString("section.%1").arg(i + 1), i, QPointF(60, i == 0 ? 145 : 184)});
    const Headings headings(pages);
    EXPECT_EQ(
        findNamedHeadings(pages.document.namedPlaces, headings.pages, headings.found, headings.body).size(),
        4);
}

}  // namespace
}  // namespace leafwright
