#include "autotoc/FontCalibration.h"
#include "support/FakePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::FakePages;
using test::makeFont;

const FontStringCensus manual{
    {"10.0 Times", 5000}, {"18.0 Times", 40}, {"14.0 Times", 300}, {"12.0 Times", 4}};

/// Levels, "H1 18.0 Times, H2 ...".
QString text(const HeadingLevelMap &map) {
    QStringList rows;
    for (const LevelRecord &record : map) {
        EXPECT_EQ(record.levelName, "H" + QString::number(record.levelNumber));
        EXPECT_FALSE(record.font);
        rows.append(record.levelName + " " + record.fontText);
    }
    return rows.join(", ");
}

TEST(FontStringCensus, SumsUpFontsOfOneFontStringInTheOrderOfTheirFirst) {
    FakePages pages;
    pages.add("1", {{"Twelve", makeFont("Times", 12)}, {"Body text", makeFont("Times", 10)}})
        .add("2", {{"Twelve\nmore", makeFont("Times", 12.2)},
                   {"Bold", makeFont("Times", 12, BoldTrait)},
                   {"1234", makeFont("Courier", 12)}});
    EXPECT_EQ(fontStringCensus(calcFontsInDocument(pages)),
              (FontStringCensus{{"12.0 Times", 6 + 11}, {"10.0 Times", 9}, {"12.5 Times Bold", 4}}))
        << "runs without letters do not count";
}

TEST(FontStringCensus, TakesTwoFontsToCalibrate) {
    EXPECT_FALSE(canCalibrate({}));
    EXPECT_FALSE(canCalibrate({{"10.0 Times", 5000}}));
    EXPECT_TRUE(canCalibrate({{"10.0 Times", 5000}, {"12.0 Times", 1}}));
}

TEST(HeadingFontStrings, WithBothFiltersBodySmallerAndRareFontsAreLeftOut) {
    EXPECT_EQ(headingFontStrings(manual, {}), (QStringList{"14.0 Times", "18.0 Times"}));
    EXPECT_EQ(text(CalibratedLevels(headingFontStrings(manual, {})).records()),
              "H1 18.0 Times, H2 14.0 Times");
}

TEST(HeadingFontStrings, WithoutTheHighFilterBodyAndSmallerFontsTakeTheDeepestLevels) {
    FontStringCensus census = manual;
    census.push_back({"8.0 Times", 200});
    const QStringList fonts = headingFontStrings(census, {.ignoreHighFrequencyFonts = false});
    EXPECT_EQ(fonts, (QStringList{"8.0 Times", "10.0 Times", "14.0 Times"})) << "the threshold is 100";
    EXPECT_EQ(text(CalibratedLevels(fonts).records()), "H1 14.0 Times, H2 10.0 Times, H3 8.0 Times");
}

TEST(HeadingFontStrings, WithoutTheLowFilterRareFontsStay) {
    EXPECT_EQ(headingFontStrings(manual, {.ignoreLowFrequencyFonts = false}),
              (QStringList{"12.0 Times", "14.0 Times", "18.0 Times"}));
}

TEST(HeadingFontStrings, WithoutFiltersAllFontsStay) {
    EXPECT_EQ(headingFontStrings(manual, {false, false}),
              (QStringList{"10.0 Times", "12.0 Times", "14.0 Times", "18.0 Times"}));
}

TEST(HeadingFontStrings, TheThresholdIsTwoPerCentAndNotRounded) {
    EXPECT_EQ(headingFontStrings({{"10.0 Times", 5000}, {"12.0 Times", 5}, {"14.0 Times", 250}}, {}),
              (QStringList{"12.0 Times", "14.0 Times"}));
    EXPECT_EQ(headingFontStrings({{"10.0 Times", 5000}, {"12.0 Times", 5}, {"14.0 Times", 251}}, {}),
              QStringList{"14.0 Times"});
}

TEST(HeadingFontStrings, FontsOfTheBodysSizeOrAsFrequentAreLeftOut) {
    EXPECT_EQ(headingFontStrings({{"10.0 Times", 500},
                                  {"10.0 Courier", 40},
                                  {"12.0 Times", 500},
                                  {"9.9 Times Bold Italic", 40},
                                  {"10.5 Times Bold", 40}},
                                 {}),
              QStringList{"10.5 Times Bold"});
}

TEST(HeadingFontStrings, OfFontsAsFrequentTheFirstMetIsTheBodyFont) {
    EXPECT_EQ(headingFontStrings({{"10.0 Times", 500}, {"12.0 Times", 500}, {"11.0 Times", 40}}, {}),
              QStringList{"11.0 Times"});
    EXPECT_EQ(headingFontStrings({{"12.0 Times", 500}, {"10.0 Times", 500}, {"11.0 Times", 40}}, {}),
              QStringList());
}

TEST(HeadingFontStrings, OfOneSizeTheOneMetLastComesFirst) {
    EXPECT_EQ(
        headingFontStrings({{"14.0 Times", 1}, {"8.0 Times", 1}, {"14.0 Courier", 1}, {"14.0 Symbol", 1}},
                           {false, false}),
        (QStringList{"8.0 Times", "14.0 Symbol", "14.0 Courier", "14.0 Times"}));
}

TEST(HeadingFontStrings, SizesAreComparedAsNumbers) {
    EXPECT_EQ(
        headingFontStrings({{"100.0 Times", 1}, {"9.0 Times", 1}, {"14.5 Times Bold", 1}}, {false, false}),
        (QStringList{"9.0 Times", "14.5 Times Bold", "100.0 Times"}));
}

TEST(HeadingFontStrings, NoneMayRemain) {
    EXPECT_EQ(headingFontStrings({{"10.0 Times", 500}, {"8.0 Times", 40}}, {}), QStringList());
    EXPECT_EQ(headingFontStrings({}, {}), QStringList());
}

TEST(CalibratedLevels, TheSmallestFontHasTheDeepestLevel) {
    const CalibratedLevels levels({"10.0 A", "12.0 A", "14.0 A"});
    EXPECT_EQ(levels.level("10.0 A"), 3);
    EXPECT_EQ(levels.level("12.0 A"), 2);
    EXPECT_EQ(levels.level("14.0 A"), 1);
    EXPECT_EQ(levels.level("16.0 A"), std::nullopt);
    EXPECT_EQ(text(levels.records()), "H1 14.0 A, H2 12.0 A, H3 10.0 A");
}

TEST(CalibratedLevels, SmallerFontsFollowAFontThatIsReranked) {
    CalibratedLevels levels({"8.0 A", "10.0 A", "12.0 A", "14.0 A", "16.0 A"});
    levels.rerank("12.0 A", 1);
    EXPECT_EQ(levels.level("16.0 A"), 1) << "larger fonts keep theirs";
    EXPECT_EQ(levels.level("14.0 A"), 2);
    EXPECT_EQ(levels.level("12.0 A"), 1);
    EXPECT_EQ(levels.level("10.0 A"), 2);
    EXPECT_EQ(levels.level("8.0 A"), 3);
}

TEST(CalibratedLevels, WithoutFontsThereAreNone) {
    const CalibratedLevels levels{QStringList()};
    EXPECT_EQ(levels.level("10.0 A"), std::nullopt);
    EXPECT_TRUE(levels.records().empty());
}

}  // namespace
}  // namespace leafwright
