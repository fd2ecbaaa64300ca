#include "autotoc/HeadingMapText.h"
#include "categories/FontIdentity.h"
#include "support/FakePages.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::makeFont;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr FontTraits boldItalic = BoldTrait | ItalicTrait;

std::optional<LevelRecord> parse(const QString &line) {
    DocumentFonts none;
    return savedH1H2H3StringToFontLevelInfo(line, none);
}

QStringList rowsOf(const HeadingLevelMap &map) {
    QStringList rows;
    for (const LevelRecord &record : map)
        rows.append(record.levelName + " " + fontIDString(record.font.value()));
    return rows;
}

TEST(HeadingMapText, WritesALineARecord) {
    const HeadingLevelMap map{levelRecord(1, makeFont("Times", 18, BoldTrait)),
                              levelRecord(2, makeFont("Times", 14, boldItalic)),
                              levelRecord(3, makeFont("Helvetica", 12.25)),
                              levelRecord(3, makeFont("Helvetica", 11.96, ItalicTrait))};
    EXPECT_EQ(stringToSaveListH1H2H3(map),
              "H1/18.0/\"Times\" +B\n"
              "H2/14.0/\"Times\" +BI\n"
              "H3/12.2/\"Helvetica\"\n"
              "H3/12.0/\"Helvetica\" +I\n");
}

TEST(HeadingMapText, AnEmptyMapIsAnEmptyText) {
    EXPECT_EQ(stringToSaveListH1H2H3({}), "");
}

TEST(HeadingMapText, KeepsTheOrderOfTheMap) {
    const HeadingLevelMap map{levelRecord(2, makeFont("A", 9)), levelRecord(1, makeFont("B", 9))};
    EXPECT_EQ(stringToSaveListH1H2H3(map), "H2/9.0/\"A\"\nH1/9.0/\"B\"\n");
}

TEST(HeadingMapText, ARecordWithoutAFontIsLeftOut) {
    HeadingLevelMap map{levelRecord(1, makeFont("Times", 18)), levelRecord(2, makeFont("Times", 14))};
    map[0].font.reset();
    EXPECT_EQ(stringToSaveListH1H2H3(map), "H2/14.0/\"Times\"\n");
}

TEST(HeadingMapText, ReadsALine) {
    const auto record = parse("H12/14.5/\"Times New Roman\" +BI");
    ASSERT_TRUE(record);
    EXPECT_EQ(record->levelNumber, 12);
    EXPECT_EQ(record->levelName, "H12");
    EXPECT_EQ(record->fontText, "14.5 pt Times New Roman Bold Italic");
    EXPECT_EQ(record->font->familyName(), "Times New Roman");
    EXPECT_EQ(record->font->symbolicTraits(), boldItalic);
    EXPECT_EQ(record->font->pointSize(), 14.5);
}

TEST(HeadingMapText, SizesAreReadInSinglePrecision) {
    EXPECT_EQ(parse("H1/14.1/\"Times\"")->font->pointSize(), double{14.1F});
    EXPECT_EQ(parse("H1/14/\"Times\"")->font->pointSize(), 14);
}

TEST(HeadingMapText, TheLastWordTellsTheTraits) {
    const auto traits = [](const QString &line) { return parse(line)->font->symbolicTraits(); };
    EXPECT_EQ(traits("H1/14.0/\"Times\""), 0U);
    EXPECT_EQ(traits("H1/14.0/\"Times\" +B"), BoldTrait);
    EXPECT_EQ(traits("H1/14.0/\"Times\" +I"), ItalicTrait);
    EXPECT_EQ(traits("H1/14.0/\"Times\" +BI"), boldItalic);
    EXPECT_EQ(traits("H1/14.0/\"Times\" +IB"), 0U);
    EXPECT_EQ(traits("H1/14.0/\"Times\" +B +I"), ItalicTrait);
    EXPECT_EQ(traits("H1/14.0/\"Times\" bold"), 0U);
    EXPECT_EQ(traits("H1/14.0/\"Times +B\""), 0U);
}

TEST(HeadingMapText, NumbersEndWhereTheirDigitsDo) {
    const auto record = parse("H2 (sections)/ 18.5pt /\"Times\" +B  ");
    ASSERT_TRUE(record);
    EXPECT_EQ(record->levelNumber, 2);
    EXPECT_EQ(record->font->pointSize(), 18.5);
    EXPECT_EQ(record->font->symbolicTraits(), BoldTrait);
}

TEST(HeadingMapText, TheLevelHasNoExponentAndTheSizeMayHaveASign) {
    const auto record = parse("H1e1/+18.0/\"Times\"");
    ASSERT_TRUE(record);
    EXPECT_EQ(record->levelNumber, 1);
    EXPECT_EQ(record->font->pointSize(), 18);
    EXPECT_EQ(parse("H+2/1e1/\"Times\"")->levelNumber, 2);
    EXPECT_EQ(parse("H2.9/1e1/\"Times\"")->levelNumber, 2);
    EXPECT_FALSE(parse("H1/+-18.0/\"Times\""));
}

TEST(HeadingMapText, TheLevelStringStaysAsWritten) {
    const auto record = parse("H02/14.0/\"Times\"");
    ASSERT_TRUE(record);
    EXPECT_EQ(record->levelNumber, 2);
    EXPECT_EQ(record->levelName, "H02");
}

TEST(HeadingMapText, TheFamilyMayHoldASlash) {
    EXPECT_EQ(parse("H1/14.0/\"Times/New\"")->font->familyName(), "Times/New");
}

TEST(HeadingMapText, TheFamilyEndsAtTheNextQuote) {
    EXPECT_EQ(parse("H1/14.0/\"Times\" \"New\"")->font->familyName(), "Times");
}

TEST(HeadingMapText, LinesOfAnotherFormAreNoRecords) {
    for (const char *line :
         {"H1", "H1/14.0", "H1/14.0/Times", "H1/14.0/\"Times", "H1 14.0 \"Times\"", "/14.0/\"Times\"",
          "H/14.0/\"Times\"", "Hx/14.0/\"Times\"", "Heading/one/\"two\"", "H1/large/\"Times\"", ""}) {
        EXPECT_FALSE(parse(line)) << line;
    }
}

TEST(HeadingMapText, LevelAndSizeMustBePositive) {
    for (const char *line : {"H0/14.0/\"Times\"", "H-1/14.0/\"Times\"", "H1/0/\"Times\"", "H1/-14/\"Times\"",
                             "H1/nan/\"Times\"", "H99999999999/14.0/\"Times\""}) {
        EXPECT_FALSE(parse(line)) << line;
    }
}

TEST(HeadingMapText, AbsurdSizesDoNoHarm) {
    const auto record = parse("H1/1e30/\"Times\"");
    ASSERT_TRUE(record);
    EXPECT_TRUE(fontIDString(*record->font).endsWith(" Times"));
}

TEST(HeadingMapText, WrittenLinesAreReadAgain) {
    for (const FontTraits traits : {0U, 1U, 2U, 3U}) {
        const Font font = makeFont("Helvetica", 14, traits);
        const QString line = stringToSaveListH1H2H3({levelRecord(2, font)}).chopped(1);
        EXPECT_EQ(parse(line), levelRecord(2, font)) << line.toStdString();
    }
}

TEST(LoadHeadingMap, OtherLinesAreComments) {
    const LoadedMap loaded = loadHeadingMap("; note\nH1/18.0/\"Times\" +B\n\n h2/9/\"Times\"\n", {});
    EXPECT_THAT(rowsOf(loaded.map), ElementsAre("H1 18.5 Times Bold"));
    EXPECT_THAT(loaded.unreadableLines, IsEmpty());
}

TEST(LoadHeadingMap, SortsByLevelAndKeepsTheOrderWithinOne) {
    const LoadedMap loaded = loadHeadingMap("H10/9/\"A\"\nH2/9/\"B\"\nH1/9/\"C\"\nH2/9/\"D\"", {});
    EXPECT_THAT(rowsOf(loaded.map), ElementsAre("H1 9.0 C", "H2 9.0 B", "H2 9.0 D", "H10 9.0 A"));
}

TEST(LoadHeadingMap, CarriageReturnsAtLineEndsGo) {
    const LoadedMap loaded = loadHeadingMap("H1/18.0/\"Times\" +B\r\nH2/14.0/\"Times\" +I\r\n", {});
    EXPECT_THAT(rowsOf(loaded.map), ElementsAre("H1 18.5 Times Bold", "H2 14.4 Times Italic"));
}

TEST(LoadHeadingMap, TellsWhichLinesItCouldNotRead) {
    const LoadedMap loaded = loadHeadingMap("; note\nHello\nH1/18.0/\"Times\"\nH2/x/\"Times\"\n", {});
    EXPECT_THAT(rowsOf(loaded.map), ElementsAre("H1 18.0 Times"));
    EXPECT_THAT(loaded.unreadableLines, ElementsAre(2, 4));
}

/// Saved again, it would be another line.
TEST(LoadHeadingMap, ALineWithAQuoteInItsLevelIsNoRecord) {
    const LoadedMap loaded = loadHeadingMap("H1\" +B/18.0/\"Times\"\n", {});
    EXPECT_THAT(loaded.map, IsEmpty());
    EXPECT_THAT(loaded.unreadableLines, ElementsAre(1));
}

TEST(LoadHeadingMap, ASizeThatWouldBeSavedAsNothingIsNoRecord) {
    const LoadedMap loaded = loadHeadingMap("H1/.018/\"Times\"\nH2/9/\"Times\"\n", {});
    EXPECT_THAT(rowsOf(loaded.map), ElementsAre("H2 9.0 Times"));
    EXPECT_THAT(loaded.unreadableLines, ElementsAre(1));
}

TEST(LoadHeadingMap, ASizeBeyondSinglePrecisionIsNoRecord) {
    const LoadedMap loaded = loadHeadingMap("H1/1e90/\"Times\"\nH2/9/\"Times\"\n", {});
    EXPECT_THAT(rowsOf(loaded.map), ElementsAre("H2 9.0 Times"));
    EXPECT_THAT(loaded.unreadableLines, ElementsAre(1));
}

TEST(LoadHeadingMap, ATextWithoutRecordsGivesAnEmptyMap) {
    EXPECT_THAT(loadHeadingMap("", {}).map, IsEmpty());
    EXPECT_THAT(loadHeadingMap("; nothing\n", {}).map, IsEmpty());
}

class LoadHeadingMapInADocument : public testing::Test {
protected:
    static FontCensus censusOf(const std::vector<Font> &headings) {
        FontCensus census;
        census.count(makeFont("Times", 10), 10'000);
        for (const Font &font : headings) {
            census.count(font, 10);
            census.count(font, 10);
        }
        return census;
    }
};

TEST_F(LoadHeadingMapInADocument, FindsItsFontsAgain) {
    const Font heading{FontFace{"Times Heading", "Times", BoldTrait}, 18.03};
    const LoadedMap loaded = loadHeadingMap("H1/18.0/\"Times\" +B\n", DocumentFonts(censusOf({heading})));
    ASSERT_EQ(loaded.map.size(), 1U);
    EXPECT_EQ(loaded.map.front(), levelRecord(1, heading));
}

TEST_F(LoadHeadingMapInADocument, ASavedMapComesBackWhole) {
    const FontCensus census = censusOf({{FontFace{"Times Display", "Times", 0}, 18.01},
                                        {FontFace{"Times Caption", "Times", 0}, 17.99},
                                        makeFont("Times", 14.36, boldItalic),
                                        makeFont("Helvetica", 12.25)});
    const HeadingLevelMap map = headingsfromFonts(census);
    ASSERT_EQ(map.size(), 4U);
    EXPECT_EQ(loadHeadingMap(stringToSaveListH1H2H3(map), DocumentFonts(census)).map, map);
}

TEST_F(LoadHeadingMapInADocument, OfFontsThatPrintAlikeTheLevelsStay) {
    const Font larger{FontFace{"Times Display", "Times", 0}, 12.04};
    const Font smaller{FontFace{"Times Caption", "Times", 0}, 12};
    const FontCensus census = censusOf({larger, smaller});
    const HeadingLevelMap both{levelRecord(1, larger), levelRecord(2, smaller)};
    EXPECT_EQ(loadHeadingMap(stringToSaveListH1H2H3(both), DocumentFonts(census)).map, both);
    const HeadingLevelMap one{levelRecord(1, smaller)};
    EXPECT_EQ(loadHeadingMap(stringToSaveListH1H2H3(one), DocumentFonts(census)).map, one);
}

TEST_F(LoadHeadingMapInADocument, ALineWrittenTwiceMeansTheSameFont) {
    const Font heading = makeFont("Times", 18);
    const LoadedMap loaded =
        loadHeadingMap("H1/18.0/\"Times\"\nH2/18.0/\"Times\"\n", DocumentFonts(censusOf({heading})));
    EXPECT_EQ(loaded.map, (HeadingLevelMap{levelRecord(1, heading), levelRecord(2, heading)}));
}

}  // namespace
}  // namespace leafwright
