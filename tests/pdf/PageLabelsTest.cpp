#include "pdf/PageLabels.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using testing::ElementsAre;

TEST(PageLabels, PagesWithoutRangesHaveTheirNumbers) {
    EXPECT_THAT(pageLabels({}, 3), ElementsAre("1", "2", "3"));
}

TEST(PageLabels, PagesBeforeTheFirstRangeHaveTheirNumbers) {
    EXPECT_THAT(pageLabels({{2, PageLabelStyle::LowerRoman, "", 1}}, 4), ElementsAre("1", "2", "i", "ii"));
}

TEST(PageLabels, EveryStyle) {
    EXPECT_EQ(pageNumberInStyle(14, PageLabelStyle::Decimal), "14");
    EXPECT_EQ(pageNumberInStyle(1994, PageLabelStyle::UpperRoman), "MCMXCIV");
    EXPECT_EQ(pageNumberInStyle(4, PageLabelStyle::LowerRoman), "iv");
    EXPECT_EQ(pageNumberInStyle(26, PageLabelStyle::UpperLetters), "Z");
    EXPECT_EQ(pageNumberInStyle(27, PageLabelStyle::UpperLetters), "AA");
    EXPECT_EQ(pageNumberInStyle(53, PageLabelStyle::LowerLetters), "aaa");
    EXPECT_EQ(pageNumberInStyle(7, PageLabelStyle::None), "");
    EXPECT_FALSE(pageNumberInStyle(7, PageLabelStyle::None).isNull());
}

TEST(PageLabels, PrefixAndStart) {
    EXPECT_THAT(pageLabels({{0, PageLabelStyle::Decimal, "A-", 7}}, 2), ElementsAre("A-7", "A-8"));
    EXPECT_THAT(pageLabels({{0, PageLabelStyle::None, "Cover", 1}}, 2), ElementsAre("Cover", "Cover"));
}

TEST(PageLabels, RangesMayComeInAnyOrder) {
    EXPECT_THAT(pageLabels({{2, PageLabelStyle::Decimal, "", 1}, {0, PageLabelStyle::LowerRoman, "", 1}}, 4),
                ElementsAre("i", "ii", "1", "2"));
}

TEST(PageLabels, HugeNumbersDoNotFillTheMemory) {
    EXPECT_EQ(pageNumberInStyle(2'000'000'000, PageLabelStyle::UpperRoman), "2000000000");
    EXPECT_EQ(pageNumberInStyle(2'000'000'000, PageLabelStyle::LowerLetters), "2000000000");
    EXPECT_THAT(pageLabels({{0, PageLabelStyle::Decimal, "", INT_MAX}}, 2),
                ElementsAre("2147483647", "2147483647"));
}

}  // namespace
}  // namespace leafwright
