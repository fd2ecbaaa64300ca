#include "document/outline/PrintedPageOffset.h"
#include "support/FakePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::FakePages;
using test::makeFont;

/// What the estimate sees of a document: its size and two pages of it.
struct Sample {
    QString textA;          ///< Of the page in the middle.
    QString textB;          ///< Of the second page after it.
    QString labelA = "51";  ///< Of the page in the middle.
    int pageCount = 11;
};

FakePages pagesOf(const Sample &sample) {
    FakePages pages;
    const int pageA = sample.pageCount / 2;
    for (int i = 0; i < sample.pageCount; ++i) {
        const QString text = i == pageA ? sample.textA : i == pageA + 2 ? sample.textB : "nothing of note 99";
        pages.add(i == pageA ? sample.labelA : "label", {{text, makeFont("Times", 10)}});
    }
    return pages;
}

std::optional<qint32> estimate(const Sample &sample) {
    return estimatePrintedPageOffset(pagesOf(sample));
}

QString words(int count) {
    return QString("word ").repeated(count).trimmed();
}

TEST(PrintedPageOffset, IsLabelMinusPrintedNumber) {
    EXPECT_EQ(estimate({"Some text of a page 43", "Some text of a page 45"}), 8);
    EXPECT_EQ(estimate({"43 text at the top", "45 text at the top"}), 8);
    EXPECT_EQ(estimate({"43 text at the top", "text at the bottom 45"}), 8);
}

TEST(PrintedPageOffset, MayBeNegativeOrNone) {
    EXPECT_EQ(estimate({"Some text 43", "Some text 45", "1"}), -42);
    EXPECT_EQ(estimate({"Some text 43", "Some text 45", "43"}), 0);
}

TEST(PrintedPageOffset, LabelWithoutANumberCountsAsZero) {
    EXPECT_EQ(estimate({"Some text 43", "Some text 45", "iv"}), -43);
}

TEST(PrintedPageOffset, TenPagesAreTooFew) {
    EXPECT_FALSE(estimate({"Some text 43", "Some text 45", "51", 10}));
    EXPECT_FALSE(estimatePrintedPageOffset(FakePages()));
}

TEST(PrintedPageOffset, ElevenPagesAreSampledAtFiveAndSeven) {
    FakePages pages;
    for (int i = 0; i < 11; ++i) {
        const QString text = i == 5 ? "printed number 43" : i == 7 ? "printed number 45" : "no number at all";
        pages.add(QString::number(100 + i), {{text, makeFont("Times", 10)}});
    }
    EXPECT_EQ(estimatePrintedPageOffset(pages), 105 - 43);
}

TEST(PrintedPageOffset, TheMiddleIsRoundedDown) {
    EXPECT_EQ(estimate({"Some text 43", "Some text 45", "51", 12}), 8);
    EXPECT_EQ(estimate({"Some text 43", "Some text 45", "51", 101}), 8);
}

TEST(PrintedPageOffset, PagesNeedTenCharacters) {
    EXPECT_EQ(estimate({"12345678 3", "12345678 5"}), 48);
    EXPECT_FALSE(estimate({"1234567 3", "12345678 5"}));
    EXPECT_FALSE(estimate({"12345678 3", "1234567 5"}));
    EXPECT_FALSE(estimate({"", ""}));
}

TEST(PrintedPageOffset, WithoutAPairThereIsNone) {
    EXPECT_FALSE(estimate({"Some text 43", "Some text 44"}));
    EXPECT_FALSE(estimate({"Some text here", "Some text there"}));
}

TEST(PrintedPageOffset, NumbersLoseWhatIsNoDigitAtTheirEnds) {
    EXPECT_EQ(estimate({"Some text -43-", "Some text [p.45]"}), 8);
    EXPECT_EQ(estimate({"Some text\n43\nFooter", "Some text\n45\nFooter"}), 8);
}

TEST(PrintedPageOffset, LineBreaksDoNotPartWords) {
    EXPECT_FALSE(estimate({"Some text 12\n43", "Some text 45"}));
    EXPECT_EQ(estimate({"Some text 12 43", "Some text 45"}), 8);
}

TEST(PrintedPageOffset, NumbersWithLeadingZerosOnTheFirstPageNeverMatch) {
    EXPECT_FALSE(estimate({"Some text 043", "Some text 45"}));
    EXPECT_EQ(estimate({"Some text 43", "Some text 045"}), 8);
}

TEST(PrintedPageOffset, NumbersWithOtherCharactersInsideNeverMatchOnTheFirstPage) {
    EXPECT_FALSE(estimate({"Some text 4-3", "Some text 6-3"}));
    EXPECT_FALSE(estimate({"Some text 3-43", "Some text 3-45"}));
}

TEST(PrintedPageOffset, NumbersMustBeAboveZero) {
    EXPECT_FALSE(estimate({"Some text 0", "Some text 2"}));
    EXPECT_EQ(estimate({"Some text 1", "Some text 3"}), 50);
}

TEST(PrintedPageOffset, OfSeveralPairsTheLastCounts) {
    EXPECT_EQ(estimate({"12 is an example 43", "14 is an example 45"}), 8);
    EXPECT_EQ(estimate({"12 is an example 43", "45 is an example 14"}), 51 - 12);
}

TEST(PrintedPageOffset, TheLastWordsComeBehindTheFirst) {
    // 20 words: the sixth from either end is among the first 15 and among the last 15.
    const QString textA = "12 43 " + words(18);
    EXPECT_EQ(estimate({textA, words(5) + " 14 " + words(13) + " 45"}), 8);
    // 14 stands late among the first words, and is met once more among the last; 45 only among the first.
    EXPECT_EQ(estimate({textA, "45 " + words(13) + " 14 " + words(5)}), 51 - 12);
}

TEST(PrintedPageOffset, OnlyFifteenWordsAtEachEndAreLookedAt) {
    const QString inTheMiddle = words(15) + " 43 " + words(15);
    EXPECT_FALSE(estimate({inTheMiddle, words(30) + " 45"}));
    EXPECT_FALSE(estimate({words(30) + " 43", words(15) + " 45 " + words(15)}));
    EXPECT_EQ(estimate({words(14) + " 43 " + words(16), words(30) + " 45"}), 8);
    EXPECT_EQ(estimate({words(16) + " 43 " + words(14), words(30) + " 45"}), 8);
}

TEST(PrintedPageOffset, ThePageWithFewerWordsSaysHowMany) {
    EXPECT_FALSE(estimate({"word word 43 word word", "prolonged 45"}));
    EXPECT_EQ(estimate({"word word word 43 word", "prolonged 45"}), 8);
}

TEST(PrintedPageOffset, RepeatedBlanksMakeEmptyWords) {
    EXPECT_EQ(estimate({QString(14, ' ') + "43" + QString(16, ' '), words(30) + " 45"}), 8);
    EXPECT_FALSE(estimate({QString(15, ' ') + "43" + QString(15, ' '), words(30) + " 45"}));
}

TEST(PrintedPageOffset, HugeNumbersDoNotOverflow) {
    EXPECT_EQ(estimate({"Some text 2147483645", "Some text 99999999999", "-2147483648"}), 3);
}

}  // namespace
}  // namespace leafwright
