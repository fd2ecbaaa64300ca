#include "contents/HeadingFeatures.h"
#include "support/MadePages.h"

#include <cmath>
#include <gtest/gtest.h>

namespace leafwright {
namespace {

using enum HeadingFeature;
using test::boldLook;
using test::MadePages;
using test::TextLook;

HeadingCandidates candidatesOf(const MadePages &pages) {
    std::vector<PageLines> lines = readAllLines(pages, {}, [](int) {});
    const BodyStyle body = findBodyStyle(lines);
    std::vector<TextBlock> blocks = makeBlocks(lines, body);
    return findHeadingCandidates(std::move(blocks), lines, body);
}

/// The features of a bold line above running text, whose margin is at 60; none where it is no candidate.
std::optional<HeadingFeatures> featuresOf(double x, const QString &text, const TextLook &look = boldLook(10),
                                          double y = 70) {
    const HeadingCandidates all =
        candidatesOf(MadePages().page().paragraph(20, 2).text(x, y, text, look).paragraph(110, 30));
    for (const HeadingCandidate &candidate : all.candidates) {
        if (candidate.block.text == text) return candidate.features;
    }
    return std::nullopt;
}

bool has(HeadingFeature feature, double x, const TextLook &look = boldLook(10),
         const QString &text = "Some title") {
    return featuresOf(x, text, look).value()[feature] != 0;
}

TEST(HeadingFeatures, WhereALineBegins) {
    EXPECT_TRUE(has(AtMargin, 62.5));
    EXPECT_FALSE(has(AtMargin, 63.5));
    EXPECT_TRUE(has(Indented, 69));
    EXPECT_FALSE(has(Indented, 67));
    EXPECT_TRUE(has(Outdented, 53));
    EXPECT_FALSE(has(Outdented, 55));
}

TEST(HeadingFeatures, CentredInThePageAndNotByChance) {
    EXPECT_TRUE(has(Centred, 282)) << "50 points wide, 7 right of the middle";
    EXPECT_FALSE(has(Centred, 284));
    const QString wide(86, u'w');  // 430 points
    EXPECT_TRUE(has(Centred, 82, boldLook(10), wide));
    EXPECT_FALSE(has(Centred, 78, boldLook(10), QString(88, u'w'))) << "at the margin, nearly";
}

TEST(HeadingFeatures, SizesBesideOthers) {
    EXPECT_TRUE(has(Smaller, 60, boldLook(9.25)));
    EXPECT_FALSE(has(Smaller, 60, boldLook(9.5)));
    EXPECT_TRUE(has(SmallerBelow, 60, boldLook(10.5)));
    EXPECT_FALSE(has(SmallerBelow, 60, boldLook(10.25)));
    EXPECT_TRUE(has(Bigger, 60, boldLook(10.75)));
    EXPECT_FALSE(has(Bigger, 60, boldLook(10.25)));
}

TEST(HeadingFeatures, GapsAreMeasuredInLeadings) {
    const auto gap = [](double y) { return featuresOf(60, "Some title", boldLook(10), y).value()[GapAbove]; };
    EXPECT_DOUBLE_EQ(gap(32 + 24), 1);
    EXPECT_DOUBLE_EQ(gap(32 + 60), 3) << "at most";
    EXPECT_DOUBLE_EQ(featuresOf(60, "Some title", boldLook(10), 105).value()[GapBelow], -0.5) << "at least";
}

TEST(HeadingFeatures, LengthIsThatOfTheWords) {
    const auto length = [](int words) {
        return featuresOf(60, QString("ab ").repeated(words).trimmed()).value()[Length];
    };
    EXPECT_DOUBLE_EQ(length(10), 1);
    EXPECT_DOUBLE_EQ(length(40), 3) << "at most";
    EXPECT_DOUBLE_EQ(featuresOf(60, QString(u'目').repeated(22)).value()[Length], 1)
        << "of 2.2 ideographs a word";
}

TEST(HeadingCandidates, AreNotLongerThanHeadings) {
    EXPECT_TRUE(featuresOf(0, QString(220, u'w'), boldLook(5 * 1.75)));
    EXPECT_FALSE(featuresOf(0, QString(221, u'w'), boldLook(5 * 1.75)));
    const auto hasCandidate = [](int lines) {
        MadePages pages = MadePages().page().paragraph(300, 30);
        for (int i = 0; i < lines; ++i)
            pages.text(60, 60 + 12 * i, QString(40, u'w'), boldLook(10));
        return !candidatesOf(pages).candidates.empty();
    };
    EXPECT_TRUE(hasCandidate(4));
    EXPECT_FALSE(hasCandidate(5));
}

TEST(HeadingCandidates, WithoutOtherSizeOrWeightTheyStandApart) {
    const auto isOne = [](double gap, const TextLook &look) {
        MadePages pages = MadePages().page().paragraph(60, 5).text(60, 108 + gap, "Some title", look);
        pages.paragraph(108 + gap + 30, 20);
        return !candidatesOf(pages).candidates.empty();
    };
    const TextLook family{10, false, "Gothic"};
    const TextLook italic{10, false, "Times", 0xff000000, true};
    EXPECT_TRUE(isOne(15.5, family));
    EXPECT_FALSE(isOne(14.5, family));
    EXPECT_TRUE(isOne(15.5, italic));
    EXPECT_FALSE(isOne(13, italic));
}

/// The features of a style that has a heading on each of the first pages, and lines that are none.
HeadingFeatures styleOf(int headings, int pages) {
    MadePages made;
    for (int i = 0; i < pages; ++i) {
        made.page().paragraph(300, 30);
        if (i < headings) made.text(60, 100, QString("Title %1").arg(QChar(u'a' + i)), boldLook(14));
    }
    return candidatesOf(made).candidates.at(0).features;
}

TEST(HeadingFeatures, StylesAreRareOrSpreadOverThePages) {
    EXPECT_EQ(styleOf(3, 10)[StyleFew], 1);
    EXPECT_EQ(styleOf(4, 10)[StyleFew], 0);
    EXPECT_EQ(styleOf(1, 10)[StyleSingle], 1);
    EXPECT_EQ(styleOf(2, 10)[StyleSingle], 0);
    EXPECT_DOUBLE_EQ(styleOf(2, 40)[StyleSpread], 0.5) << "of a tenth of the pages";
    EXPECT_DOUBLE_EQ(styleOf(8, 40)[StyleSpread], 1) << "at most";
    EXPECT_DOUBLE_EQ(styleOf(2, 2)[StyleSpread], 1);
    EXPECT_DOUBLE_EQ(styleOf(4, 4)[StyleShare], 1);
    EXPECT_DOUBLE_EQ(styleOf(10, 10)[StyleFrequency], 2 * std::log(2.0));
}

TEST(HeadingFeatures, CrowdedStylesCountNoMoreThanThat) {
    const auto style = [](int count) {
        MadePages pages = MadePages().page().paragraph(30, 20);
        for (int i = 0; i < count; ++i)
            pages.text(60 + 130 * (i % 4), 300 + 16 * (i / 4), QString("Ti%1").arg(i), boldLook(10));
        return candidatesOf(pages).candidates.at(0).features;
    };
    EXPECT_DOUBLE_EQ(style(4)[StyleCrowding], std::log(4.0));
    EXPECT_DOUBLE_EQ(style(80)[StyleCrowding], 3);
    EXPECT_DOUBLE_EQ(style(80)[StyleFrequency], 3);
}

constexpr quint32 black = 0xff000000;
const TextLook italicLook{10, false, "Times", black, true};
const TextLook monoLook{10, false, "Courier"};

TEST(HeadingFeatures, WhatTheTextLooksLike) {
    EXPECT_TRUE(has(Coloured, 60, {12, true, "Times-Bold", 0xff0000c0}));
    EXPECT_FALSE(has(Coloured, 60, {12, true, "Times-Bold", black}));
    EXPECT_TRUE(has(OtherFamily, 60, {12, false, "Gothic"}));
    EXPECT_FALSE(has(OtherFamily, 60, {12, true, "Times-Bold"}));
    EXPECT_TRUE(has(Mono, 60, {12, false, "Courier"}));
    EXPECT_FALSE(has(Mono, 60, {12, false, "Gothic"}));
    EXPECT_TRUE(has(HeadingFeature::Italic, 60, italicLook));
    EXPECT_FALSE(has(HeadingFeature::Italic, 60));
    EXPECT_TRUE(has(Bold, 60));
    EXPECT_FALSE(has(Bold, 60, {12}));
    EXPECT_TRUE(has(Capitals, 60, {}, "SOME TITLE"));
    EXPECT_FALSE(has(Capitals, 60));
}

bool hasText(HeadingFeature feature, const QString &text) {
    return has(feature, 60, boldLook(10), text);
}

TEST(HeadingFeatures, WhatTheTextEndsIn) {
    for (const QString end : {".", ";", ","})
        EXPECT_TRUE(hasText(EndsInStop, "Some title" + end)) << end.toStdString();
    EXPECT_FALSE(hasText(EndsInStop, "Some title:"));
    EXPECT_TRUE(hasText(EndsInColon, "Some title:"));
    EXPECT_FALSE(hasText(EndsInColon, "Some: title"));
}

TEST(HeadingFeatures, SignsOfCodeAndFormulas) {
    for (const QString text :
         {"x = 1 here", "a < b", "some {title}", "a | b", "a; b", "call()", "std::title", "a -> b", "a \\ b"})
        EXPECT_TRUE(hasText(Symbols, text)) << text.toStdString();
    for (const QString text : {"Some title", "Some (title)", "Some - title", "Some: title"})
        EXPECT_FALSE(hasText(Symbols, text)) << text.toStdString();
}

TEST(HeadingFeatures, KindsOfNumbers) {
    EXPECT_TRUE(hasText(SingleNumber, "3 Some title"));
    EXPECT_FALSE(hasText(SingleNumber, "3.1 Some title"));
    EXPECT_FALSE(hasText(SingleNumber, "Some title"));
    EXPECT_TRUE(hasText(HeadingFeature::Dotted, "3.1 Some title"));
    EXPECT_FALSE(hasText(HeadingFeature::Dotted, "3 Some title"));
    EXPECT_TRUE(hasText(HeadingFeature::Chapter, "Chapter 3 Some title"));
    EXPECT_TRUE(hasText(HeadingFeature::Chapter, "Part II Some title"));
    EXPECT_FALSE(hasText(HeadingFeature::Chapter, "3 Some title"));
}

HeadingFeatures lastFeaturesOf(const MadePages &pages) {
    return candidatesOf(pages).candidates.back().features;
}

TEST(HeadingFeatures, WhatStandsBelow) {
    const auto title = [] {
        return MadePages().page().paragraph(20, 10).text(60, 300, "Title", boldLook(10));
    };
    EXPECT_EQ(lastFeaturesOf(title())[NothingBelow], 1);
    EXPECT_EQ(lastFeaturesOf(title())[BodyBelow], 0);
    EXPECT_EQ(lastFeaturesOf(title().paragraph(320, 5))[NothingBelow], 0);
    EXPECT_EQ(lastFeaturesOf(title().paragraph(320, 5))[BodyBelow], 1);
    EXPECT_EQ(lastFeaturesOf(title().text(60, 320, "no body", {8}))[BodyBelow], 0);
}

TEST(HeadingFeatures, ARowMateStandsInTheSameColumn) {
    const auto title = [] {
        return MadePages().page().paragraph(20, 10).text(60, 300, "Title", boldLook(10));
    };
    EXPECT_EQ(lastFeaturesOf(title().text(300, 300, "beside"))[HasRowMate], 1);
    EXPECT_EQ(lastFeaturesOf(title().text(300, 312, "below"))[HasRowMate], 0);
    MadePages columns = MadePages().page();
    for (int i = 0; i < 12; ++i) {
        columns.text(60, 100 + 12 * i, "text in the left column of the page");
        columns.text(320, 100 + 12 * i, "text in the right column of the page");
    }
    columns.text(60, 280, "Title", boldLook(10)).text(320, 280, "text in the right column of the page");
    EXPECT_EQ(lastFeaturesOf(columns)[HasRowMate], 0) << "text of the other column is far away";
}

TEST(HeadingCandidates, MonospacedLinesNeedSizeOrWeight) {
    EXPECT_FALSE(featuresOf(60, "1.1 Some title", monoLook)) << "whatever else speaks for them";
    EXPECT_TRUE(featuresOf(60, "1.1 Some title", {10, true, "Courier-Bold"}));
    EXPECT_TRUE(featuresOf(60, "1.1 Some title", {12, false, "Courier"}));
    EXPECT_TRUE(featuresOf(60, "1.1 Some title", {10, false, "Gothic"})) << "as other fonts do not";
    EXPECT_FALSE(featuresOf(60, "Some title", monoLook)) << "that it is another font is no sign of its own";
}

TEST(HeadingCandidates, OneSignIsEnough) {
    EXPECT_FALSE(featuresOf(60, "Some title", {}));
    EXPECT_TRUE(featuresOf(60, "SOME TITLE", {})) << "capitals";
    EXPECT_TRUE(featuresOf(60, "3 Some title", {})) << "a number";
    EXPECT_FALSE(featuresOf(60, "A title", {})) << "which may be a word";
    EXPECT_TRUE(featuresOf(60, "Some title", italicLook));
    EXPECT_TRUE(featuresOf(60, "Some title", {10, false, "Gothic"}));
    EXPECT_TRUE(featuresOf(60, "Some title", {11}));
    EXPECT_TRUE(featuresOf(60, "Some title", boldLook(10)));
}

}  // namespace
}  // namespace leafwright
