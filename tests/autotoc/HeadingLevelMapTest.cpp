#include "autotoc/HeadingLevelMap.h"
#include "categories/FontIdentity.h"
#include "support/FakePages.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::makeFont;
using testing::ElementsAre;
using testing::IsEmpty;

void count(FontCensus &census, const Font &font, int runs, qint64 charactersEach = 10) {
    for (int i = 0; i < runs; ++i)
        census.count(font, charactersEach);
}

QStringList rowsOf(const HeadingLevelMap &map) {
    QStringList rows;
    for (const LevelRecord &record : map)
        rows.append(record.levelName + " " + record.fontText);
    return rows;
}

TEST(LevelRecord, HasWhatTheTableShows) {
    const LevelRecord record = levelRecord(12, makeFont("Times", 18.25, BoldTrait));
    EXPECT_EQ(record.levelNumber, 12);
    EXPECT_EQ(record.levelName, "H12");
    EXPECT_EQ(record.fontText, "18.2 pt Times Bold");
    EXPECT_EQ(record.font, makeFont("Times", 18.25, BoldTrait));
}

TEST(HeadingsFromFonts, AFontOfASingleRunUsesUpNoLevel) {
    FontCensus census;
    count(census, makeFont("Times", 10), 1000);
    count(census, makeFont("Times", 14), 20);
    count(census, makeFont("Times", 18), 1);
    count(census, makeFont("Times", 12), 50);
    EXPECT_THAT(rowsOf(headingsfromFonts(census)),
                ElementsAre("H1 18.0 pt Times", "H1 14.0 pt Times", "H2 12.0 pt Times"));
}

TEST(HeadingsFromFonts, RecordsHoldTheCensusFonts) {
    FontCensus census;
    count(census, makeFont("Times", 10), 100);
    count(census, makeFont("Times", 14.37, BoldTrait), 2);
    const HeadingLevelMap map = headingsfromFonts(census);
    ASSERT_EQ(map.size(), 1U);
    EXPECT_EQ(map.front(), levelRecord(1, makeFont("Times", 14.37, BoldTrait)));
}

TEST(HeadingsFromFonts, EveryFontOfASingleRunSharesTheLevelOfTheNext) {
    FontCensus census;
    count(census, makeFont("Times", 10), 100);
    count(census, makeFont("Times", 30), 1);
    count(census, makeFont("Times", 20), 1);
    count(census, makeFont("Times", 15), 2);
    count(census, makeFont("Times", 12), 1);
    EXPECT_THAT(rowsOf(headingsfromFonts(census)),
                ElementsAre("H1 30.0 pt Times", "H1 20.0 pt Times", "H1 15.0 pt Times", "H2 12.0 pt Times"));
}

TEST(HeadingsFromFonts, BoldComesBeforeRegularOfTheSameRoundedSize) {
    FontCensus census;
    count(census, makeFont("Times", 10), 100);
    count(census, makeFont("Times", 12.4), 5);
    count(census, makeFont("Times", 11.6, BoldTrait), 5);
    count(census, makeFont("Times", 12, ItalicTrait), 5);
    EXPECT_THAT(rowsOf(headingsfromFonts(census)),
                ElementsAre("H1 11.6 pt Times Bold", "H2 12.0 pt Times Italic", "H3 12.4 pt Times"));
}

TEST(HeadingsFromFonts, FontsOfEqualAdjustedSizeKeepTheOrderInWhichTheyWereMet) {
    FontCensus census;
    count(census, makeFont("Times", 10), 100);
    count(census, makeFont("Zapf", 11.7), 2);
    count(census, makeFont("Arial", 12.3), 2);
    count(census, makeFont("Menlo", 12), 2);
    EXPECT_THAT(rowsOf(headingsfromFonts(census)),
                ElementsAre("H1 11.7 pt Zapf", "H2 12.3 pt Arial", "H3 12.0 pt Menlo"));
}

TEST(HeadingsFromFonts, OnlyFontsLargerThanTheBodyFontAreHeadings) {
    FontCensus census;
    count(census, makeFont("Times", 10), 100);
    count(census, makeFont("Times", 10, BoldTrait), 50);
    count(census, makeFont("Times", 9), 99);
    count(census, makeFont("Times", 10.01), 2);
    EXPECT_THAT(rowsOf(headingsfromFonts(census)), ElementsAre("H1 10.0 pt Times"));
}

TEST(HeadingsFromFonts, RawSizesAreComparedWithTheBodyFont) {
    FontCensus census;
    count(census, makeFont("Times", 10.4), 100);
    count(census, makeFont("Times", 10.3, BoldTrait), 10);  // adjusted it would be larger
    EXPECT_THAT(headingsfromFonts(census), IsEmpty());
}

TEST(HeadingsFromFonts, NoFontIsDroppedForItsDepth) {
    FontCensus census;
    count(census, makeFont("Times", 10), 1000);
    for (int size = 11; size < 31; ++size)
        count(census, makeFont("Times", size), 2);
    const HeadingLevelMap map = headingsfromFonts(census);
    ASSERT_EQ(map.size(), 20U);
    EXPECT_EQ(map.back().levelName, "H20");
}

TEST(HeadingsFromFonts, AnEmptyCensusGivesAnEmptyMap) {
    EXPECT_THAT(headingsfromFonts(FontCensus()), IsEmpty());
}

TEST(HeadingsFromFonts, WithoutABodyFontEveryFontIsAHeading) {
    FontCensus census;
    count(census, makeFont("Times", 10), 2, 0);
    EXPECT_THAT(rowsOf(headingsfromFonts(census)), ElementsAre("H1 10.0 pt Times"));
}

TEST(SortByLevel, KeepsTheOrderWithinALevel) {
    HeadingLevelMap map{levelRecord(2, makeFont("A", 1)), levelRecord(10, makeFont("B", 1)),
                        levelRecord(1, makeFont("C", 1)), levelRecord(2, makeFont("D", 1))};
    sortByLevel(map);
    EXPECT_THAT(rowsOf(map), ElementsAre("H1 1.0 pt C", "H2 1.0 pt A", "H2 1.0 pt D", "H10 1.0 pt B"));
}

TEST(WithFontsOf, RecordsWithoutAFontMeanThoseOfTheirFontString) {
    FontCensus census;
    const Font exact = makeFont("Times", 12);
    const Font alike = makeFont("Times", 12.04);  // prints as the same size
    const Font other = makeFont("Courier", 12);
    for (const Font &font : {exact, alike, other})
        count(census, font, 3);
    const LevelRecord meant{2, "H2", fontString(exact), {}};
    const LevelRecord unknown{3, "H3", "9.0 Helvetica", {}};
    const LevelRecord known = levelRecord(1, other);
    ASSERT_EQ(fontString(exact), fontString(alike));
    EXPECT_EQ(withFontsOf(census, {known, meant, unknown}),
              (HeadingLevelMap{known, levelRecord(2, exact), levelRecord(2, alike), unknown}));
    EXPECT_EQ(withFontsOf(FontCensus(), {meant}), HeadingLevelMap{meant});
}

}  // namespace
}  // namespace leafwright
