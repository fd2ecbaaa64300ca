#include "autotoc/DocumentFonts.h"
#include "categories/FontIdentity.h"
#include "support/FakePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::makeFont;

/// The fonts of a document whose body text is the first of these.
DocumentFonts documentWith(const std::vector<Font> &fonts) {
    FontCensus census;
    for (const Font &font : fonts)
        census.count(font, census.isEmpty() ? 1000 : 10);
    return DocumentFonts(census);
}

const Font body = makeFont("Times", 10);

TEST(DocumentFonts, FindsByFamilyTraitsAndPrintedSize) {
    const Font heading = makeFont("Times", 14.02, BoldTrait);
    DocumentFonts fonts = documentWith({body, makeFont("Times", 14), heading});
    EXPECT_EQ(fonts.find({"Times", BoldTrait, 14}), heading);
}

TEST(DocumentFonts, EveryPartOfTheDescriptionMustFit) {
    DocumentFonts fonts = documentWith({body, makeFont("Times", 14, BoldTrait)});
    EXPECT_FALSE(fonts.find({"Times", 0, 14}));
    EXPECT_FALSE(fonts.find({"Times", BoldTrait | ItalicTrait, 14}));
    EXPECT_FALSE(fonts.find({"times", BoldTrait, 14}));
    EXPECT_FALSE(fonts.find({"Times", BoldTrait, 14.1}));
    EXPECT_FALSE(DocumentFonts().find({"Times", BoldTrait, 14}));
}

TEST(DocumentFonts, SizesAreComparedAsTheyPrint) {
    const Font tie = makeFont("Times", 12.25);
    DocumentFonts fonts = documentWith({body, tie});
    EXPECT_FALSE(fonts.find({"Times", 0, 12.3}));
    EXPECT_EQ(fonts.find({"Times", 0, double{12.2F}}), tie);
}

TEST(DocumentFonts, DisplayNameFitsWhereNoFamilyDoes) {
    const Font heading = makeFont("Times", 14, BoldTrait);
    DocumentFonts fonts = documentWith({body, heading});
    EXPECT_EQ(fonts.find({"Times Bold", BoldTrait, 14}), heading);
}

TEST(DocumentFonts, FamilyComesBeforeDisplayName) {
    const Font byName{FontFace{"Times", "Other", 0}, 14};
    const Font byFamily{FontFace{"Times Roman", "Times", 0}, 14};
    DocumentFonts fonts = documentWith({body, byName, byFamily});
    EXPECT_EQ(fonts.find({"Times", 0, 14}), byFamily);
}

TEST(DocumentFonts, TheExactSizeComesBeforeOnesThatPrintTheSame) {
    const Font larger = makeFont("Times", 12.04);
    const Font exact = makeFont("Times", 12);
    const Font uneven = makeFont("Times", 14.3);
    DocumentFonts fonts = documentWith({body, larger, exact, makeFont("Times", 14.34), uneven});
    EXPECT_EQ(fonts.find({"Times", 0, 12}), exact);
    EXPECT_EQ(fonts.find({"Times", 0, 12}), larger) << "asked for once more";
    EXPECT_EQ(fonts.find({"Times", 0, double{14.3F}}), uneven);
}

TEST(DocumentFonts, FontsThatFitAlikeAreGivenOneAfterTheOther) {
    const Font roman{FontFace{"Times Roman", "Times", 0}, 14.01};
    const Font caption{FontFace{"Times Caption", "Times", 0}, 13.99};
    DocumentFonts fonts = documentWith({body, roman, caption});
    EXPECT_EQ(fonts.find({"Times", 0, 14}), roman);
    EXPECT_EQ(fonts.find({"Times", 0, 14}), caption);
    EXPECT_EQ(fonts.find({"Times", 0, 14}), caption);
}

TEST(DocumentFonts, FontsLargerThanTheBodyTextAreGivenFirst) {
    const Font alike = makeFont("Times", 10);
    const Font larger = makeFont("Times", 10.02);
    const Font smaller = makeFont("Times", 9.98);
    DocumentFonts fonts = documentWith({alike, smaller, larger});
    for (int i = 0; i < 3; ++i)
        fonts.expect({"Times", 0, 10});
    EXPECT_EQ(fonts.find({"Times", 0, 10}), larger);
    EXPECT_EQ(fonts.find({"Times", 0, 10}), alike);
    EXPECT_EQ(fonts.find({"Times", 0, 10}), smaller);
}

TEST(FontMatching, PrefersTheDocumentsFont) {
    const Font heading{FontFace{"Times Heading", "Times", ItalicTrait}, 14};
    DocumentFonts fonts = documentWith({body, heading});
    EXPECT_EQ(fontMatching({"Times", ItalicTrait, 14}, fonts), heading);
}

TEST(FontMatching, AMadeUpFontReportsTheTraitsAskedFor) {
    DocumentFonts fonts;
    for (const FontTraits traits : {0U, 1U, 2U, 3U}) {
        const Font font = fontMatching({"Nowhere", traits, 14.5}, fonts);
        EXPECT_EQ(font.symbolicTraits(), traits);
        EXPECT_EQ(font.familyName(), "Nowhere");
        EXPECT_EQ(font.pointSize(), 14.5);
    }
    EXPECT_EQ(fontIDString(fontMatching({"Nowhere", BoldTrait | ItalicTrait, 14}, fonts)),
              "14.9 Nowhere Bold Italic");
    EXPECT_EQ(fontIDString(fontMatching({"Nowhere", 0, 14}, fonts)), "14.0 Nowhere");
}

}  // namespace
}  // namespace leafwright
