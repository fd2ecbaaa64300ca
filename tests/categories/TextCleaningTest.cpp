#include "categories/TextCleaning.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

QString cleaned(const QString &text) {
    return cleanedRun(text, charactersToTrim());
}

TEST(CleanedRun, EveryNewlineCharacterBecomesOneBlank) {
    EXPECT_EQ(cleaned("Intro-\nduction"), "Intro- duction");
    EXPECT_EQ(cleaned("\r\nA\n\nB\n"), "  A  B ");
    EXPECT_EQ(cleaned(QStringLiteral("a\u000Bb\u000Cc\u0085d\u2028e\u2029f")), "a b c d e f");
}

TEST(CleanedRun, EverythingElseStays) {
    EXPECT_EQ(cleaned("A\tB  1.2 + $"), "A\tB  1.2 + $");
    EXPECT_EQ(cleaned(""), "");
}

TEST(HasLetters, MoreThanAQuarterMustBeLetters) {
    EXPECT_FALSE(hasLetters(u"12"));
    EXPECT_TRUE(hasLetters(u"1.2 Intro"));
    EXPECT_FALSE(hasLetters(u"a 1 2 3"));
    EXPECT_TRUE(hasLetters(u"a"));
}

TEST(HasLetters, AQuarterIsNotEnough) {
    EXPECT_FALSE(hasLetters(u"ab 12345"));  // 2 of 8
    EXPECT_TRUE(hasLetters(u"ab 1234"));    // 2 of 7
    EXPECT_TRUE(hasLetters(u"abc 1234"));   // 3 of 8
    EXPECT_FALSE(hasLetters(u"a123"));
}

TEST(HasLetters, EmptyTextHasNone) {
    EXPECT_FALSE(hasLetters(u""));
    EXPECT_FALSE(hasLetters(QStringView()));
}

TEST(HasLetters, BlanksAndRulesHaveNone) {
    EXPECT_FALSE(hasLetters(u"    "));
    EXPECT_FALSE(hasLetters(u"------"));
    EXPECT_FALSE(hasLetters(u"\n"));
}

TEST(HasLetters, CountsUtf16Units) {
    // One letter and a pictogram of two units are a third.
    EXPECT_TRUE(hasLetters(u"a\U0001F600"));
    EXPECT_FALSE(hasLetters(u"a\U0001F600\U0001F600"));
    // A letter beyond the first plane is two units of which none is a letter.
    EXPECT_FALSE(hasLetters(u"\U0001D400"));
}

TEST(HasLetters, MarksOfLettersCountAsLetters) {
    EXPECT_TRUE(hasLetters(u"e\u0301 1234"));
}

TEST(TrimSpacesString, BlanksShrinkToOneAndGoAtTheEnds) {
    EXPECT_EQ(trimSpacesString("  A   B  "), "A B");
    EXPECT_EQ(trimSpacesString("A B"), "A B");
    EXPECT_EQ(trimSpacesString("\tA \t B\t"), "A B");
    EXPECT_EQ(trimSpacesString(QStringLiteral("A\u00A0\u3000B")), "A B");
}

TEST(TrimSpacesString, NewlinesStay) {
    EXPECT_EQ(trimSpacesString(" A \n B\n"), "A \n B\n");
}

TEST(TrimSpacesString, NothingButBlanksIsEmptyNotAbsent) {
    EXPECT_EQ(trimSpacesString(""), "");
    EXPECT_EQ(trimSpacesString("   "), "");
    EXPECT_FALSE(trimSpacesString("   ").isNull());
}

TEST(TrimmedBlanksAndNewlines, GoAtBothEndsOnly) {
    EXPECT_EQ(trimmedBlanksAndNewlines(QStringLiteral(" \n\tA  \n B\u2029\u00A0 ")), "A  \n B");
    EXPECT_EQ(trimmedBlanksAndNewlines("A"), "A");
    EXPECT_EQ(trimmedBlanksAndNewlines(" \n "), "");
    EXPECT_EQ(trimmedBlanksAndNewlines(""), "");
}

}  // namespace
}  // namespace leafwright
