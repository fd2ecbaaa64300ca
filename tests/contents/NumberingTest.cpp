#include "contents/Numbering.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

Numbering dotted(const QStringList &components) {
    return {NumberKind::Dotted, static_cast<int>(components.size()), components};
}

TEST(Numbering, DottedNumbersHaveTheirDepth) {
    EXPECT_EQ(numberingOf("1.2 Title"), dotted({"1", "2"}));
    EXPECT_EQ(numberingOf("1.2.3. Title"), dotted({"1", "2", "3"}));
    EXPECT_EQ(numberingOf("A.1 Title"), dotted({"A", "1"}));
    EXPECT_EQ(numberingOf("3-12 Title"), dotted({"3", "12"}));
    EXPECT_EQ(numberingOf("1.2Title"), dotted({"1", "2"}));
}

TEST(Numbering, SingleNumbersLettersAndRomans) {
    for (const QString number : {"3", "B", "IV"}) {
        EXPECT_EQ(numberingOf(number + " Title").kind, NumberKind::Single) << number.toStdString();
        EXPECT_EQ(numberingOf(number + ". Title").components, QStringList{number});
    }
}

TEST(Numbering, AParagraphSignMayStandBefore) {
    EXPECT_EQ(numberingOf("§ 3 Title").kind, NumberKind::Single);
    EXPECT_EQ(numberingOf("§3.1 Title").kind, NumberKind::Dotted);
}

TEST(Numbering, AnArticleOrPronounMayBeNone) {
    EXPECT_EQ(numberingOf("A title").kind, NumberKind::PerhapsSingle);
    EXPECT_EQ(numberingOf("I think").kind, NumberKind::PerhapsSingle);
    EXPECT_EQ(numberingOf("A. Title").kind, NumberKind::Single);
}

TEST(Numbering, ChaptersAndParts) {
    EXPECT_EQ(numberingOf("Chapter 3 Title"), (Numbering{NumberKind::Chapter, 1, {"3"}}));
    EXPECT_EQ(numberingOf("Anhang b: Titel").components, QStringList{"B"});
    EXPECT_EQ(numberingOf(QString("第3章 文字")).kind, NumberKind::Chapter);
    EXPECT_EQ(numberingOf("Part II Title").kind, NumberKind::Part);
    EXPECT_EQ(numberingOf("Part of it").kind, NumberKind::None);
}

TEST(Numbering, OtherTextHasNone) {
    EXPECT_EQ(numberingOf("Title"), Numbering());
    EXPECT_EQ(numberingOf(""), Numbering());
    EXPECT_EQ(numberingOf("1999").kind, NumberKind::None);
    EXPECT_EQ(numberingOf("1234 Title").kind, NumberKind::None);
}

TEST(NumberLabel, IsANumberAndNothingElse) {
    for (const QString label : {"1.2", "Chapter 3", "A.", "IV", "3)"})
        EXPECT_TRUE(isNumberLabel(label)) << label.toStdString();
    EXPECT_FALSE(isNumberLabel("1.2 Title"));
    EXPECT_FALSE(isNumberLabel("Title"));
}

TEST(ChapterLabel, IsAWordAndItsNumber) {
    EXPECT_TRUE(isChapterLabel("Chapter 12"));
    EXPECT_TRUE(isChapterLabel("PART IV:"));
    EXPECT_TRUE(isChapterLabel(QString("第3章")));
    EXPECT_FALSE(isChapterLabel("12"));
    EXPECT_FALSE(isChapterLabel("Chapter 12 begins"));
}

TEST(BareNumber, IsADigitLetterRomanOrWord) {
    for (const QString number : {"7", "B", "XIV", "twenty-one", "Seventeen"})
        EXPECT_TRUE(isBareNumber(number)) << number.toStdString();
    EXPECT_FALSE(isBareNumber("123"));
    EXPECT_FALSE(isBareNumber("many"));
}

TEST(Ordinal, OfDigitsRomansAndLetters) {
    EXPECT_EQ(ordinalOf("12"), 12);
    EXPECT_EQ(ordinalOf("IV"), 4);
    EXPECT_EQ(ordinalOf("C"), 3);
    EXPECT_EQ(ordinalOf(""), 0);
}

}  // namespace
}  // namespace leafwright
