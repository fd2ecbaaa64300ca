#include "contents/SequenceRatio.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

TEST(SequenceRatio, OfEqualAndOfDifferentTexts) {
    EXPECT_EQ(sequenceRatio(u"abcd", u"abcd"), 1);
    EXPECT_EQ(sequenceRatio(u"abcd", u"efgh"), 0);
    EXPECT_EQ(sequenceRatio(u"", u""), 1);
}

TEST(SequenceRatio, CountsCommonBlocksInOrder) {
    EXPECT_DOUBLE_EQ(sequenceRatio(u"abcd", u"bcde"), 0.75);
    EXPECT_DOUBLE_EQ(sequenceRatio(u"private thread", u"private volatile thread"), 2.0 * 14 / 37);
    EXPECT_DOUBLE_EQ(sequenceRatio(u"ab", u"ba"), 0.5);
}

TEST(SequenceRatio, BelowTheLeastNothingIsWorkedOut) {
    EXPECT_EQ(sequenceRatio(u"abcd", u"bcde", 0.8), 0);
    EXPECT_EQ(sequenceRatio(u"ab", u"abcdefgh", 0.8), 0);
    EXPECT_DOUBLE_EQ(sequenceRatio(u"abcdefghi", u"abcdefghx", 0.8), 16.0 / 18);
}

}  // namespace
}  // namespace leafwright
