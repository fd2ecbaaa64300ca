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

TEST(CapitalizedString, NothingStaysNothing) {
    EXPECT_EQ(capitalizedString(""), "");
}

}  // namespace
}  // namespace leafwright
