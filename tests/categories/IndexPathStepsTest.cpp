#include "categories/IndexPathSteps.h"
#include "categories/Uncalled.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

TEST(IndexPathSteps, NextSiblingIsThePositionRightAfter) {
    EXPECT_EQ(nextsibling({3}), (IndexPath{4}));
    EXPECT_EQ(nextsibling({1, 0}), (IndexPath{1, 1}));
    EXPECT_EQ(nextsibling({}), std::nullopt);
}

TEST(IndexPathSteps, NextAuntIsThePositionRightAfterTheParent) {
    EXPECT_EQ(nextaunt({0}), std::nullopt);
    EXPECT_EQ(nextaunt({0, 4}), (IndexPath{1}));
    EXPECT_EQ(nextaunt({1, 2, 3}), (IndexPath{1, 3}));
    EXPECT_EQ(nextaunt({}), std::nullopt);
}

TEST(IndexPathSteps, NextChildIsTheFirstChildPosition) {
    EXPECT_EQ(nextchild({2, 5}), (IndexPath{2, 5, 0}));
    EXPECT_EQ(nextchild({}), std::nullopt);
}

TEST(IndexPathSteps, NextOfLevelIsRightAfterTheAncestorAtThatLevel) {
    EXPECT_EQ(nextOfLevel({2, 5, 1}, 1), (IndexPath{2, 6}));
    EXPECT_EQ(nextOfLevel({2, 5, 1}, 2), (IndexPath{2, 5, 2}));
}

TEST(IndexPathSteps, NextOfLevelZeroHasTwoIndexes) {
    EXPECT_EQ(nextOfLevel({2, 5, 1}, 0), (IndexPath{2, 3}));
    EXPECT_EQ(nextOfLevel({7}, 0), (IndexPath{7, 8}));
}

TEST(IndexPathSteps, NextOfADeeperLevelIsTheFirstChild) {
    EXPECT_EQ(nextOfLevel({2, 5, 1}, 3), (IndexPath{2, 5, 1, 0}));
    EXPECT_EQ(nextOfLevel({2, 5, 1}, 9), (IndexPath{2, 5, 1, 0}));
    EXPECT_EQ(nextOfLevel({}, 0), (IndexPath{0}));
}

TEST(IndexPathSteps, ANegativeLevelHasNoNext) {
    EXPECT_EQ(nextOfLevel({2, 5, 1}, -1), std::nullopt);
    EXPECT_EQ(nextOfLevel({}, -1), std::nullopt);
}

}  // namespace
}  // namespace leafwright
