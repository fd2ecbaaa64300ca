#include "document/outline/TitleRewriting.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

TEST(NumberedTitle, PrefixSeparatorNumberSeparatorTitle) {
    EXPECT_EQ(numberedTitle("Intro", {"Ch", " ", ". "}, 1), "Ch 1. Intro");
}

TEST(NumberedTitle, AnEmptyPrefixKeepsTheFirstSeparator) {
    EXPECT_EQ(numberedTitle("Intro", {"", " ", " "}, 1), " 1 Intro");
}

TEST(NumberedTitle, AnAbsentPrefixTakesTheFirstSeparatorWithIt) {
    EXPECT_EQ(numberedTitle("Intro", {QString(), " ", " "}, 1), "1 Intro");
}

TEST(NumberedTitle, NumbersAreNotPaddedAndMayBeNegative) {
    EXPECT_EQ(numberedTitle("x", {"", "", "."}, -5), "-5.x");
    EXPECT_EQ(numberedTitle("x", {"", "", "."}, 100), "100.x");
}

TEST(NumberedTitle, ATitleThatHasANumberGetsASecondOne) {
    EXPECT_EQ(numberedTitle("1. Intro", {"", "", ". "}, 2), "2. 1. Intro");
}

TEST(TitleWithReplacement, ReplacesEveryOccurrenceLeftToRight) {
    EXPECT_EQ(titleWithReplacement("aaaa b aa", "aa", Qt::CaseSensitive, "x"), "xx b x");
}

TEST(TitleWithReplacement, IsExactUnlessCaseIsIgnored) {
    EXPECT_EQ(titleWithReplacement("Part part PART", "part", Qt::CaseSensitive, "Teil"), "Part Teil PART");
    EXPECT_EQ(titleWithReplacement("Part part PART", "part", Qt::CaseInsensitive, "tEIL"), "tEIL tEIL tEIL");
}

TEST(TitleWithReplacement, AnEmptyReplacementDeletes) {
    EXPECT_EQ(titleWithReplacement("1. Intro 1.", "1.", Qt::CaseSensitive, ""), " Intro ");
}

TEST(TitleWithReplacement, TheReplacementIsNotSearchedAgain) {
    EXPECT_EQ(titleWithReplacement("aa", "a", Qt::CaseSensitive, "aa"), "aaaa");
}

TEST(PrefixedTitle, PrefixBlankTitle) {
    EXPECT_EQ(prefixedTitle("Intro", "Ch"), "Ch Intro");
    EXPECT_EQ(prefixedTitle("", "Ch"), "Ch ");
    EXPECT_EQ(prefixedTitle("Intro", ""), " Intro");
}

TEST(CapitalizedString, EveryWordAlike) {
    EXPECT_EQ(capitalizedString("the end of the affair"), "The End Of The Affair");
}

TEST(CapitalizedString, CapitalsAreLoweredButForTheFirst) {
    EXPECT_EQ(capitalizedString("INSTALLING THE HTTP SERVER"), "Installing The Http Server");
}

TEST(CapitalizedString, BlanksAndPunctuationStay) {
    EXPECT_EQ(capitalizedString("  (intro):  second-hand\nlines\t"), "  (Intro):  Second-Hand\nLines\t");
}

TEST(CapitalizedString, AnApostropheDoesNotEndAWord) {
    EXPECT_EQ(capitalizedString("don't o’clock"), "Don't O’clock");
}

TEST(CapitalizedString, OtherScripts) {
    EXPECT_EQ(capitalizedString("résumé ÉTÉ ἀρχή ΛΌΓΟΙ Ǆungla 漢字 😀 smile"),
              "Résumé Été Ἀρχή Λόγοι ǅungla 漢字 😀 Smile");
}

TEST(CapitalizedString, LettersBeyondTheBasicPlane) {
    EXPECT_EQ(capitalizedString("𐐨𐐀 𐐨"), "𐐀𐐨 𐐀");
}

TEST(CapitalizedString, LettersWhoseCapitalIsSeveral) {
    EXPECT_EQ(capitalizedString("ßen ﬁnal ﬄ ŉa ǰ և ΐ"), "Ssen Final Ffl ʼNa J\u030C Եւ \u0399\u0308\u0301");
}

TEST(CapitalizedString, LettersWithoutACapitalAtTheBeginningStay) {
    EXPECT_EQ(capitalizedString("ქართული ᾳ ᾲ"), "ქართული ᾼ \u1FBA\u0345");
}

TEST(CapitalizedString, ASigmaAtTheEndOfAWordIsTheFinalOne) {
    EXPECT_EQ(capitalizedString("ΛΌΓΟΣ ΣΟΦΊΑΣ, ΣΣ"), "Λόγος Σοφίας, Σς");
    EXPECT_EQ(lowercaseString("ΑΣ'Α ΑΣ' Α'Σ Σ"), "ασ'α ας' α'ς σ") << "an apostrophe belongs to the word";
}

/// By Unicode's Final_Sigma.
TEST(LowercaseString, WhatCountsForNothingAroundASigma) {
    for (const char *ignored :
         {"'", ".", ":", "\u00B7", "\u0387", "\u055F", "\u05F4", "\u2018", "\u2019", "\u2024", "\u2027",
          "\u0301", "\u20DD", "\u00AD", "\u02B0", "\u02B8", "^", "''"}) {
        const QString between = QString::fromUtf8(ignored);
        const QString small = between.toLower();
        EXPECT_EQ(lowercaseString("Α" + between + "Σ"), "α" + small + "ς") << ignored;
        EXPECT_EQ(lowercaseString("ΑΣ" + between), "ας" + small) << ignored;
        EXPECT_EQ(lowercaseString("ΑΣ" + between + "Α"), "ασ" + small + "α") << ignored;
        EXPECT_EQ(lowercaseString(between + "Σ"), small + "σ") << ignored;
    }
}

TEST(LowercaseString, WhatEndsAWordAroundASigma) {
    for (const char *apart :
         {" ", "-", ",", "1", "漢", "\u05D0", "\U0001002E", "\uFFFF", "\u2028", "/", ";"}) {
        const QString between = QString::fromUtf8(apart);
        EXPECT_EQ(lowercaseString("ΑΣ" + between + "Α"), "ας" + between + "α") << apart;
        EXPECT_EQ(lowercaseString("Α" + between + "Σ"), "α" + between + "σ") << apart;
    }
}

TEST(LowercaseString, WhatHasCaseAroundASigma) {
    for (const char *letter : {"a", "A", "ǅ", "\u00AA", "\u00BA", "\U00010428", "\U00010400"}) {
        const QString cased = QString::fromUtf8(letter);
        EXPECT_EQ(lowercaseString(cased + "Σ"), cased.toLower() + "ς") << letter;
        EXPECT_EQ(lowercaseString("ΑΣ" + cased), "ασ" + cased.toLower()) << letter;
        EXPECT_EQ(lowercaseString(cased + "Σ" + cased + "Σ"), cased.toLower() + "σ" + cased.toLower() + "ς");
    }
}

TEST(CapitalizedString, HalvesOfPairs) {
    const QString high = QChar(0xD801);
    const QString low = QChar(0xDC28);
    EXPECT_EQ(capitalizedString("a " + high), "A " + high);
    EXPECT_EQ(capitalizedString("a" + high), "A" + high);
    EXPECT_EQ(capitalizedString(low), low);
    EXPECT_EQ(capitalizedString(high + low), QString::fromUtf8("𐐀"));
    EXPECT_EQ(capitalizedString("1" + high + low), "1" + QString::fromUtf8("𐐀"));
}

TEST(CapitalizedString, NothingStaysNothing) {
    EXPECT_EQ(capitalizedString(""), "");
}

}  // namespace
}  // namespace leafwright
