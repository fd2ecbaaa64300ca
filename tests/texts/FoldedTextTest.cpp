#include "texts/FoldedText.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

QString folded(const QString &text) {
    return FoldedText(text).string();
}

/// What of a text is found for a term; null if nothing is.
QString found(const QString &text, const QString &term) {
    const FoldedText in(text);
    const FoldedText::Range hit = in.find(FoldedText(term), 0);
    if (hit.length == 0) return {};
    const FoldedText::Range range = in.original(hit);
    return text.mid(range.location, range.length);
}

TEST(FoldedText, CapitalsAndSmallLettersAreAlike) {
    EXPECT_EQ(folded("Über STRASSE"), folded("über Straße"));
    EXPECT_EQ(found("The ΟΔΟΣ", "οδος"), "ΟΔΟΣ");
}

TEST(FoldedText, AccentsMakeNoDifference) {
    EXPECT_EQ(folded("Éléphant"), "elephant");
    EXPECT_EQ(folded(u"Ele\u0301phant"_qs), "elephant") << "set behind the letter";
    EXPECT_EQ(folded(u"\u00b4Elephant"_qs), "elephant") << "set beside the letter";
    EXPECT_EQ(folded("Łódź Ærø œuvre ışık"), "lodz aero oeuvre isik");
}

TEST(FoldedText, MarksOfOtherScriptsAreLetters) {
    EXPECT_NE(folded("ガ"), folded("カ"));
    EXPECT_EQ(folded(u"カ\u3099"_qs), folded("ガ"));
    EXPECT_NE(folded("각"), folded("가"));
    EXPECT_EQ(found("각", "가"), QString());
}

TEST(FoldedText, AnyNumberOfMarksKeepsNobodyWaiting) {
    const QString marks = QString(200'000, QChar(0x05b0)) + QString(200'000, QChar(0x0591));
    EXPECT_EQ(folded(u"\u05d0"_qs + marks).size(), 1 + marks.size());
}

TEST(FoldedText, CompatibilityFormsAreWhatTheyStandFor) {
    EXPECT_EQ(found("an e\uFB03cient way", "efficient"), "e\uFB03cient");
    EXPECT_EQ(folded("ＡＢＣ　１２"), "abc 12");
}

TEST(FoldedText, PartOfALigatureIsAllOfIt) {
    EXPECT_EQ(found("o\uFB03ce", "off"), "o\uFB03");
    EXPECT_EQ(found("o\uFB03ce", "ice"), "\uFB03ce");
}

TEST(FoldedText, QuotesAndDashesAreAlike) {
    EXPECT_EQ(folded("“don’t” – 1—2"), "'don't' - 1-2");
    EXPECT_EQ(found("“don’t”", "\"Don't\""), "“don’t”");
}

TEST(FoldedText, BlanksAndLineEndsAreOneBlank) {
    EXPECT_EQ(found("table  of\n contents", "table of contents"), "table  of\n contents");
    EXPECT_EQ(found(u"a\u00a0b"_qs, "a b"), u"a\u00a0b"_qs);
    EXPECT_EQ(found("ab", "a b"), QString());
}

TEST(FoldedText, CharactersWithoutWidthAreLeftOut) {
    EXPECT_EQ(found(u"soft\u00adware and"_qs, "software"), u"soft\u00adware"_qs);
    EXPECT_EQ(found(u"a\u200bb\ufeffc"_qs, "abc"), u"a\u200bb\ufeffc"_qs);
}

TEST(FoldedText, AWordDividedAtALineEndIsFoundWhole) {
    EXPECT_EQ(found("an exam-\nple here", "example"), "exam-\nple");
    EXPECT_EQ(found(u"an exam\u00ad\nple"_qs, "example"), u"exam\u00ad\nple"_qs);
    EXPECT_EQ(found("an exam- \n ple", "example"), "exam- \n ple");
}

TEST(FoldedText, AHyphenThatMayBeOfTheWordIsFoundToo) {
    EXPECT_EQ(found("a well-\nknown fact", "well-known"), "well-\nknown");
    EXPECT_EQ(found("a well-\nknown fact", "wellknown"), "well-\nknown");
    EXPECT_EQ(found("state-of-\nthe-art", "state-of-the-art"), "state-of-\nthe-art");
    EXPECT_EQ(found("a well-known fact", "wellknown"), QString());
    EXPECT_EQ(found("a wellknown exam-\nple", "well-known"), QString());
}

TEST(FoldedText, NumbersAreNotDivided) {
    EXPECT_EQ(found("in 1990-\n2000", "1990-2000"), "1990-\n2000");
    EXPECT_EQ(found("in 1990-\n2000", "19902000"), QString());
}

TEST(FoldedText, ADashAmidBlanksDividesNothing) {
    EXPECT_EQ(folded("one -\ntwo"), "one - two");
    EXPECT_EQ(folded("ends-\n"), "ends- ");
}

TEST(FoldedText, IdeographsGoOnInTheNextLine) {
    EXPECT_EQ(found("第一\n章", "第一章"), "第一\n章");
    EXPECT_EQ(folded("第一\nchapter"), "第一 chapter");
}

TEST(FoldedText, RangesAreThoseOfTheTextBehindWhateverWasFolded) {
    const QString text = u"\uFB01  \U0001F600x\u00adé Target end"_qs;
    EXPECT_EQ(found(text, "target"), "Target");
    EXPECT_EQ(found(text, "end"), "end");
    EXPECT_EQ(found(text, u"\U0001F600"_qs), u"\U0001F600"_qs);
    EXPECT_EQ(found(text, "xe"), u"x\u00adé"_qs);
}

TEST(FoldedText, TheNextPlaceIsBehindTheOneBefore) {
    const FoldedText text("aXaXa");
    const FoldedText term("a");
    EXPECT_EQ(text.find(term, 0), (FoldedText::Range{0, 1}));
    EXPECT_EQ(text.find(term, 1), (FoldedText::Range{2, 1}));
    EXPECT_EQ(text.find(term, 5).length, 0);
}

TEST(FoldedText, NothingIsFoundForNothing) {
    EXPECT_FALSE(FoldedText("text").contains(FoldedText("")));
    EXPECT_FALSE(FoldedText("").contains(FoldedText("text")));
    EXPECT_TRUE(FoldedText("").isEmpty());
    EXPECT_EQ(FoldedText("text").original({}), FoldedText::Range());
}

}  // namespace
}  // namespace leafwright
