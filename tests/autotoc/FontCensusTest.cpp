#include "autotoc/FontCensus.h"
#include "support/FakePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::FakePages;
using test::makeFont;

const Font body = makeFont("Times", 10);
const Font heading = makeFont("Times", 18, BoldTrait);

TEST(FontCensus, CountsUnitsAndRuns) {
    FakePages pages;
    pages.add("1", {{"Chapter 1", heading}, {"Some text", body}});
    EXPECT_EQ(calcFontsInDocument(pages).record(heading), (FontRecord{9, 1}));
    EXPECT_EQ(calcFontsInDocument(pages).record(body), (FontRecord{9, 1}));
}

TEST(FontCensus, RunsOnAllPagesAddToOneRecord) {
    FakePages pages;
    pages.add("1", {{"One", heading}, {"text", body}, {"Two", heading}});
    pages.add("2", {});
    pages.add("3", {{"Three", heading}});
    const FontCensus census = calcFontsInDocument(pages);
    EXPECT_EQ(census.record(heading), (FontRecord{11, 3}));
    EXPECT_EQ(census.entries().size(), 2U);
}

TEST(FontCensus, RunsWithoutLettersDoNotCount) {
    FakePages pages;
    pages.add("1", {{"12", heading}, {"a 1 2 3", body}, {"\n\n", makeFont("Arial", 8)}});
    EXPECT_TRUE(calcFontsInDocument(pages).isEmpty());
}

TEST(FontCensus, ALineBreakCountsAsABlank) {
    FakePages pages;
    pages.add("1", {{"Intro-\nduction", heading}});
    EXPECT_EQ(calcFontsInDocument(pages).record(heading), (FontRecord{14, 1}));
}

TEST(FontCensus, SizesThatRoundAlikeAreCountedApart) {
    FakePages pages;
    pages.add("1", {{"smaller", makeFont("Times", 11.8)}, {"larger", makeFont("Times", 12.2)}});
    const FontCensus census = calcFontsInDocument(pages);
    EXPECT_EQ(census.record(makeFont("Times", 11.8)), (FontRecord{7, 1}));
    EXPECT_EQ(census.record(makeFont("Times", 12.2)), (FontRecord{6, 1}));
}

TEST(FontCensus, EntriesStandInTheOrderInWhichTheyWereMet) {
    FakePages pages;
    pages.add("1", {{"First", heading}, {"text", body}});
    pages.add("2", {{"text", body}, {"Second", makeFont("Arial", 8)}, {"Again", heading}});
    const FontCensus census = calcFontsInDocument(pages);
    ASSERT_EQ(census.entries().size(), 3U);
    EXPECT_EQ(census.entries()[0].font, heading);
    EXPECT_EQ(census.entries()[1].font, body);
    EXPECT_EQ(census.entries()[2].font, makeFont("Arial", 8));
}

TEST(FontCensus, DocumentWithoutTextOrPagesIsEmpty) {
    FakePages pages;
    EXPECT_TRUE(calcFontsInDocument(pages).isEmpty());
    pages.add("1", {});
    EXPECT_TRUE(calcFontsInDocument(pages).isEmpty());
    EXPECT_EQ(calcFontsInDocument(pages).bodyFont(), nullptr);
}

TEST(FontCensus, TheFirstCountedTextOfAFontIsItsSample) {
    FakePages pages;
    pages.add("1", {{"1.2", heading}, {"text", body}, {" The\nfirst  one ", heading}, {"text", body}});
    pages.add("2", {{"Another", heading}});
    const FontCensus census = calcFontsInDocument(pages);
    EXPECT_EQ(census.entries()[0].sample, "text");
    EXPECT_EQ(census.entries()[1].sample, "The first one");
}

TEST(FontCensus, ALongSampleIsCutBetweenCharacters) {
    FontCensus census;
    const QString text = "x" + QString::fromUtf8("\xF0\x9D\x94\xB8").repeated(1000);
    census.count(heading, text.size(), text);
    const QString &sample = census.entries()[0].sample;
    EXPECT_GT(sample.size(), 50);
    EXPECT_LT(sample.size(), 200);
    EXPECT_TRUE(text.startsWith(sample));
    EXPECT_TRUE(sample.isValidUtf16());
}

TEST(FontCensus, AnUnknownFontHasAZeroRecord) {
    EXPECT_EQ(FontCensus().record(body), (FontRecord{0, 0}));
}

TEST(FontCensus, BodyFontHasTheMostCharactersNotTheMostRuns) {
    FontCensus census;
    census.count(heading, 5);
    census.count(heading, 5);
    census.count(body, 11);
    ASSERT_TRUE(census.bodyFont());
    EXPECT_EQ(census.bodyFont()->font, body);
}

TEST(FontCensus, OfFontsWithAsManyCharactersTheFirstMetIsTheBodyFont) {
    FontCensus census;
    census.count(makeFont("Arial", 8), 3);
    census.count(heading, 10);
    census.count(body, 10);
    EXPECT_EQ(census.bodyFont()->font, heading);
}

TEST(FontCensus, EveryCallReadsThePagesAgain) {
    FakePages pages;
    pages.add("1", {{"One", heading}});
    EXPECT_EQ(calcFontsInDocument(pages).record(heading).instances, 1);
    pages.add("2", {{"Two", heading}});
    EXPECT_EQ(calcFontsInDocument(pages).record(heading).instances, 2);
}

}  // namespace
}  // namespace leafwright
