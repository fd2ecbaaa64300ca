#include "contents/RomanNumbers.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

TEST(RomanNumbers, LettersInEitherCase) {
    EXPECT_TRUE(isRomanNumber(u"xiv"));
    EXPECT_TRUE(isRomanNumber(u"MCMXC"));
    EXPECT_FALSE(isRomanNumber(u""));
    EXPECT_FALSE(isRomanNumber(u"vi3"));
    EXPECT_FALSE(isRomanNumber(u"via"));
}

TEST(RomanNumbers, LessBeforeMoreIsTakenOff) {
    EXPECT_EQ(romanValue(u"iii"), 3);
    EXPECT_EQ(romanValue(u"xiv"), 14);
    EXPECT_EQ(romanValue(u"XLIX"), 49);
    EXPECT_EQ(romanValue(u"MCMXC"), 1990);
}

TEST(RomanNumbers, EachLetterHasItsValue) {
    EXPECT_EQ(romanValue(u"MDCLXVI"), 1666);
}

}  // namespace
}  // namespace leafwright
