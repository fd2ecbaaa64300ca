#include "pdf/FontName.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

/// "display name|family name|traits", traits as "b", "i", "bi" or nothing
std::string face(const QByteArray &baseFont, FontTraits traits = 0) {
    const FontFace face = fontFaceFromBaseFont(baseFont, traits);
    std::string text = face.displayName.toStdString() + "|" + face.familyName.toStdString() + "|";
    if (face.traits & BoldTrait) text += "b";
    if (face.traits & ItalicTrait) text += "i";
    return text;
}

TEST(FontName, PlainFamily) {
    EXPECT_EQ(face("Helvetica"), "Helvetica|Helvetica|");
}

TEST(FontName, HyphenAndCommaPartFamilyFromStyle) {
    EXPECT_EQ(face("Times-Roman"), "Times Roman|Times|");
    EXPECT_EQ(face("Times-Bold"), "Times Bold|Times|b");
    EXPECT_EQ(face("Arial,BoldItalic"), "Arial BoldItalic|Arial|bi");
    EXPECT_EQ(face("Univers-Condensed-Oblique"), "Univers Condensed Oblique|Univers|i");
}

TEST(FontName, SubsetTagGoes) {
    EXPECT_EQ(face("ABCDEF+Times-Bold"), "Times Bold|Times|b");
    EXPECT_EQ(face("ABCDEF+A"), "A|A|");
    EXPECT_EQ(face("AZZZZA+A"), "A|A|");
}

TEST(FontName, WhatOnlyLooksLikeASubsetTagStays) {
    EXPECT_EQ(face("ABCDE+Times"), "ABCDE+Times|ABCDE+Times|");
    EXPECT_EQ(face("abcdef+Times"), "abcdef+Times|abcdef+Times|");
    EXPECT_EQ(face("ABCDEF+"), "ABCDEF+|ABCDEF+|");
}

TEST(FontName, VendorMarksGo) {
    EXPECT_EQ(face("ArialMT"), "Arial|Arial|");
    EXPECT_EQ(face("Arial-BoldMT"), "Arial Bold|Arial|b");
    EXPECT_EQ(face("TimesNewRomanPSMT"), "TimesNewRoman|TimesNewRoman|");
    EXPECT_EQ(face("TimesNewRomanPS-BoldItalicMT"), "TimesNewRoman BoldItalic|TimesNewRoman|bi");
    EXPECT_EQ(face("Futura-MT"), "Futura|Futura|");
}

TEST(FontName, NamesThatEndLikeAVendorMarkStay) {
    EXPECT_EQ(face("GPS"), "GPS|GPS|");
    EXPECT_EQ(face("MT"), "MT|MT|");
    EXPECT_EQ(face("CMTT10"), "CMTT10|CMTT10|");
}

TEST(FontName, TraitsFromTheStyle) {
    EXPECT_EQ(face("Gill-Black"), "Gill Black|Gill|b");
    EXPECT_EQ(face("Gill-HeavyOblique"), "Gill HeavyOblique|Gill|bi");
    EXPECT_EQ(face("Gill-SemiBold"), "Gill SemiBold|Gill|b");
    EXPECT_EQ(face("Gill-Regular"), "Gill Regular|Gill|");
    EXPECT_EQ(face("Gill-bolditalic"), "Gill bolditalic|Gill|bi");
}

TEST(FontName, FamilySpeaksOfTraitsOnlyWhereThereIsNoStyle) {
    EXPECT_EQ(face("BlackAdder-Regular"), "BlackAdder Regular|BlackAdder|");
    EXPECT_EQ(face("HelveticaBold"), "HelveticaBold|HelveticaBold|b");
}

TEST(FontName, TraitsOfTheFontStay) {
    EXPECT_EQ(face("CMBX10", BoldTrait), "CMBX10|CMBX10|b");
    EXPECT_EQ(face("Times-Italic", BoldTrait), "Times Italic|Times|bi");
}

TEST(FontName, StyleWithoutAFamilyIsTheFamily) {
    EXPECT_EQ(face("-Bold"), "Bold|Bold|b");
    EXPECT_EQ(face(""), "||");
    EXPECT_EQ(face("-"), "||");
}

TEST(FontName, OutsideAscii) {
    EXPECT_EQ(face("\xE5\xAE\x8B\xE4\xBD\x93-Bold"), "宋体 Bold|宋体|b");
}

TEST(Font, EqualByFaceAndExactSize) {
    const FontFace bold{"A Bold", "A", BoldTrait};
    EXPECT_EQ(Font(bold, 12), Font(bold, 12));
    EXPECT_EQ(qHash(Font(bold, 12)), qHash(Font(bold, 12)));
    EXPECT_NE(Font(bold, 12), Font(bold, 12.01));
    EXPECT_NE(Font(bold, 12), Font(FontFace{"A Bold", "A", 0}, 12));
    EXPECT_NE(Font(bold, 12), Font());
    EXPECT_EQ(Font(), Font());
}

TEST(Font, NullFont) {
    EXPECT_TRUE(Font().isNull());
    EXPECT_EQ(Font().displayName(), "");
    EXPECT_EQ(Font().familyName(), "");
    EXPECT_EQ(Font().symbolicTraits(), 0U);
    EXPECT_EQ(Font().pointSize(), 0);
}

}  // namespace
}  // namespace leafwright
