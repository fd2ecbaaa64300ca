#include "categories/FontIdentity.h"
#include "support/FakePages.h"

#include <gtest/gtest.h>
#include <limits>

namespace leafwright {
namespace {

constexpr FontTraits boldItalic = BoldTrait | ItalicTrait;

Font named(const QString &displayName, double size, FontTraits traits = 0) {
    return {FontFace{displayName, displayName, traits}, size};
}

TEST(FontIdentity, TraitsAreReadFromTheirBits) {
    EXPECT_FALSE(isBold(named("Name", 12)));
    EXPECT_FALSE(isItalic(named("Name", 12)));
    EXPECT_TRUE(isBold(named("Name", 12, 2)));
    EXPECT_FALSE(isItalic(named("Name", 12, 2)));
    EXPECT_FALSE(isBold(named("Name", 12, 1)));
    EXPECT_TRUE(isItalic(named("Name", 12, 1)));
    EXPECT_TRUE(isBold(named("Name", 12, 0xFFFFFFFF)));
    EXPECT_FALSE(isBold(named("Name", 12, 0xFFFFFFFC)));
}

TEST(FontIdentity, SizesAreRoundedHalfUp) {
    EXPECT_EQ(adjustedPointSize(named("Name", 11.5)), 12);
    EXPECT_EQ(adjustedPointSize(named("Name", 11.49)), 11);
    EXPECT_EQ(adjustedPointSize(named("Name", 10.5)), 11);
    EXPECT_EQ(adjustedPointSize(named("Name", 0.4)), 0);
}

TEST(FontIdentity, TraitMarksAreAddedInSinglePrecision) {
    EXPECT_EQ(adjustedPointSize(named("Name", 12, BoldTrait)), 12.5);
    EXPECT_EQ(adjustedPointSize(named("Name", 8, ItalicTrait)), double{8.4F});
    EXPECT_EQ(adjustedPointSize(named("Name", 8, boldItalic)), double{8.5F + 0.4F});
    EXPECT_NE(adjustedPointSize(named("Name", 8, ItalicTrait)), 8.4);
}

TEST(FontIdentity, FirstDecimalTellsTheTraits) {
    EXPECT_EQ(fontIDString(named("Name", 8)), "8.0 Name");
    EXPECT_EQ(fontIDString(named("Name", 8, BoldTrait)), "8.5 Name");
    EXPECT_EQ(fontIDString(named("Name", 8, ItalicTrait)), "8.4 Name");
    EXPECT_EQ(fontIDString(named("Name", 8, boldItalic)), "8.9 Name");
}

TEST(FontIdentity, IdentityHasTheRoundedSizeAndTheDisplayName) {
    EXPECT_EQ(fontIDString(test::makeFont("Times", 12.3, BoldTrait)), "12.5 Times Bold");
    EXPECT_EQ(fontIDString(named("Helvetica", 9.6)), "10.0 Helvetica");
    EXPECT_EQ(fontIDString(named("Name", 10.5)), "11.0 Name");
    EXPECT_EQ(fontIDString(named("Name", 11.96)), "12.0 Name");
}

TEST(FontIdentity, TheMarkComesFromTheTraitsNotTheName) {
    EXPECT_EQ(fontIDString(named("Times Bold", 12)), "12.0 Times Bold");
}

TEST(FontIdentity, SizesPrintWithAsManyDigitsAsTheyNeed) {
    EXPECT_EQ(fontIDString(named("Name", 0)), "0.0 Name");
    EXPECT_EQ(fontIDString(named("Name", 100)), "100.0 Name");
    EXPECT_EQ(fontIDString(named("Name", 1234, boldItalic)), "1234.9 Name");
}

TEST(FontIdentity, FontStringIsTheSameText) {
    for (const FontTraits traits : {0U, 1U, 2U, 3U}) {
        const Font font = test::makeFont("Times", 11.7, traits);
        EXPECT_EQ(fontString(font), fontIDString(font));
    }
}

TEST(FontIdentity, TextForDisplayHasTheRawSize) {
    EXPECT_EQ(customFontIDString(test::makeFont("Times", 12.3, BoldTrait)), "12.3 pt Times Bold");
    EXPECT_EQ(customFontIDString(named("Name", 11.96)), "12.0 pt Name");
    EXPECT_EQ(customFontIDString(named("Name", 12.25)), "12.2 pt Name");
    EXPECT_EQ(customFontIDString(named("Name", 0)), "0.0 pt Name");
}

TEST(FontIdentity, FontsThatRoundAlikeAreTheSameHeadingFont) {
    EXPECT_TRUE(isEffectivelyEqual(named("Name", 12.2), named("Name", 11.7)));
    EXPECT_TRUE(isEffectivelyEqual(named("Name", 11.6), named("Name", 12.4)));
    EXPECT_FALSE(isEffectivelyEqual(named("Name", 12.4), named("Name", 12.5)));
}

TEST(FontIdentity, TraitsAndNamesTellHeadingFontsApart) {
    EXPECT_FALSE(isEffectivelyEqual(named("Name", 12, BoldTrait), named("Name", 12)));
    EXPECT_FALSE(isEffectivelyEqual(named("Name", 12), named("name", 12)));
    EXPECT_FALSE(isEffectivelyEqual(named("Name", 12), named("Other", 12)));
}

TEST(FontIdentity, FamilyDoesNotTellHeadingFontsApart) {
    const Font a{FontFace{"Name", "Family A", 0}, 12};
    const Font b{FontFace{"Name", "Family B", 0}, 12};
    EXPECT_TRUE(isEffectivelyEqual(a, b));
    EXPECT_FALSE(a == b);
}

TEST(FontIdentity, AbsurdSizesStopAtTheBounds) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(adjustedPointSize(named("Name", 1e30)), double{static_cast<float>(INT32_MAX)});
    EXPECT_EQ(adjustedPointSize(named("Name", infinity)), double{static_cast<float>(INT32_MAX)});
    EXPECT_EQ(adjustedPointSize(named("Name", -1e30)), double{static_cast<float>(INT32_MIN)});
    EXPECT_EQ(adjustedPointSize(named("Name", std::numeric_limits<double>::quiet_NaN())), 0);
}

}  // namespace
}  // namespace leafwright
