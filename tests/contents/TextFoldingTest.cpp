#include "contents/TextFolding.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

TEST(FoldedTitle, CaseAndBlanksDontCount) {
    EXPECT_EQ(foldedTitle("The  First\tChapter"), "thefirstchapter");
    EXPECT_EQ(foldedTitle("ÜBER"), foldedTitle("über"));
}

TEST(FoldedTitle, CompatibilityFormsAreResolved) {
    EXPECT_EQ(foldedTitle(QString("\ufb01nd")), "find");
    EXPECT_EQ(foldedTitle(QString("\uff21")), "a");
}

TEST(FoldedTitle, AccentsAreLeftOutComposedOrLoose) {
    EXPECT_EQ(foldedTitle(QString("caf\u00e9")), "cafe");
    EXPECT_EQ(foldedTitle(QString("cafe\u00b4")), "cafe");
    EXPECT_EQ(foldedTitle(QString("\u0131\u0301")), "i");
}

TEST(FoldedTitle, QuotesDashesAndUnderscores) {
    EXPECT_EQ(foldedTitle(QString("\u201cA\u201d \u2013 b--c")), "a-b-c");
    EXPECT_EQ(foldedTitle("read_file"), "readfile");
}

TEST(FoldedTitle, StopsAtTheEndsGo) {
    EXPECT_EQ(foldedTitle("Title:"), "title");
    EXPECT_EQ(foldedTitle("1.2."), "1.2");
    EXPECT_EQ(foldedTitle("..."), "");
}

struct NumberedTitle {
    const char *title;
    const char *rest;
};

class TitleForms : public testing::TestWithParam<NumberedTitle> {};

TEST_P(TitleForms, HaveTheTitleWithoutItsNumber) {
    EXPECT_TRUE(titleForms(QString(GetParam().title)).contains(QString(GetParam().rest)))
        << QString(GetParam().title).toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, TitleForms,
    testing::Values(NumberedTitle{"1.2 Words", "words"}, NumberedTitle{"1.2Words", "words"},
                    NumberedTitle{"Chapter 3. Words", "words"}, NumberedTitle{"Appendix A: Words", "words"},
                    NumberedTitle{"Part One Words", "words"}, NumberedTitle{"A. Words", "words"},
                    NumberedTitle{"IV. Words", "words"}, NumberedTitle{"b) Words", "words"},
                    NumberedTitle{"§ 3 Words", "words"}, NumberedTitle{"第3章 文字", "文字"},
                    NumberedTitle{"1.2文字", "文字"}));

TEST(TitleForms, WordsAreNoNumbers) {
    EXPECT_EQ(titleForms("Verses and lines"), QStringList{"versesandlines"});
    EXPECT_EQ(titleForms(""), QStringList());
}

TEST(TitleForms, NumbersOfLettersAreToldFromWords) {
    EXPECT_EQ(titleForms("Chapter Two Words"), (QStringList{"chaptertwowords", "words"}));
    EXPECT_EQ(titleForms("II Words"), (QStringList{"iiwords", "words"}));
    EXPECT_EQ(titleForms("XL. Words"), (QStringList{"xl.words", "words"}));
    EXPECT_EQ(titleForms("CD. Words"), QStringList{"cd.words"}) << "numbers are below 400";
    EXPECT_EQ(titleForms("A.1 Words"), (QStringList{"a.1words", "words"}));
    EXPECT_EQ(titleForms("It. Words"), QStringList{"it.words"});
    EXPECT_EQ(titleForms("§ab Words"), QStringList{"§abwords"});
}

TEST(StartsWithWord, TwoLettersThatAreNoRomanNumber) {
    for (const char *word : {"Words", "It", "aI", "Ma", "cv"})
        EXPECT_TRUE(startsWithWord(QString(word))) << word;
    for (const char *other : {"", "A", "A.1", "1a", "a)", "IV", "XIth", "LXX", "CC", "Été", "文字", "§ab"})
        EXPECT_FALSE(startsWithWord(QString(other))) << other;
}

TEST(SearchForms, OneCharacterIsTooLittle) {
    EXPECT_EQ(searchForms("1.2 X"), QStringList{"1.2x"});
    EXPECT_EQ(searchForms("X"), QStringList{"x"});
}

TEST(Ideographs, MeetWithoutBlank) {
    EXPECT_TRUE(meetWithoutBlank(u"文", u"word"));
    EXPECT_TRUE(meetWithoutBlank(u"word", u"字"));
    EXPECT_FALSE(meetWithoutBlank(u"word", u"word"));
    EXPECT_FALSE(meetWithoutBlank(u"", u"字"));
}

TEST(DecimalValue, DigitsOfAnyScript) {
    EXPECT_TRUE(isDecimalNumber(QString("\u06f4\u06f2")));
    EXPECT_EQ(decimalValue(QString("\u06f4\u06f2")), 42);
    EXPECT_FALSE(isDecimalNumber(u"4a"));
    EXPECT_FALSE(isDecimalNumber(u""));
}

TEST(FoldedTitle, SignsOfOtherKindsAreFoldedToo) {
    EXPECT_EQ(foldedTitle(QString("a\u2212b")), "a-b") << "a minus sign";
    EXPECT_EQ(foldedTitle(QString("a\u00a8")), "a") << "an accent beside its letter";
    for (const char16_t invisible : {u'\x01', u'\x1f', u'\u200b', u'\u200f', u'\ufeff', u'\ufffd'})
        EXPECT_EQ(foldedTitle(u'a' + QString(QChar(invisible)) + u'b'), "ab") << static_cast<int>(invisible);
    EXPECT_EQ(foldedTitle("a!(b)"), "a!(b)");
}

TEST(SingleBlanks, StandForBlanksOfAllKinds) {
    for (const char16_t blank : {u' ', u'\t', u'\x01', u'\u00a0', u'\u200b', u'\ufeff'})
        EXPECT_EQ(withSingleBlanks(" a" + QString(QChar(blank)) + " b "), "a b") << static_cast<int>(blank);
}

TEST(Ideographs, OfAllScripts) {
    for (const char16_t character :
         {u'\u2e80', u'\u3042', u'\u9fff', u'\uac00', u'\ud7af', u'\uf900', u'\ufaff'})
        EXPECT_TRUE(isIdeographic(QChar(character))) << static_cast<int>(character);
    for (const char16_t character : {u'a', u'\u0628', u'\ufb01'})
        EXPECT_FALSE(isIdeographic(QChar(character))) << static_cast<int>(character);
}

TEST(DecimalValue, IsThatOfNineDigitsAtMost) {
    EXPECT_EQ(decimalValue(u"123456789"), 123456789);
    EXPECT_EQ(decimalValue(u"1234567891"), 123456789);
}

}  // namespace
}  // namespace leafwright
