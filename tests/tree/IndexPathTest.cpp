#include "tree/IndexPath.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace leafwright {
namespace {

TEST(IndexPath, IsALongerPathWithAnIndexAddedAndAShorterWithoutItsLast) {
    const IndexPath path{2, 5};
    EXPECT_EQ(path.indexPathByAddingIndex(1), (IndexPath{2, 5, 1}));
    EXPECT_EQ(path.indexPathByRemovingLastIndex(), IndexPath{2});
    EXPECT_EQ(path, (IndexPath{2, 5}));
}

TEST(IndexPath, TheOnlyIndexRemovedLeavesTheEmptyPath) {
    EXPECT_TRUE(IndexPath{3}.indexPathByRemovingLastIndex().isEmpty());
    EXPECT_TRUE(IndexPath().indexPathByRemovingLastIndex().isEmpty());
}

TEST(IndexPath, ComparesInTreeOrder) {
    EXPECT_LT(IndexPath{1}, (IndexPath{1, 0}));
    EXPECT_LT((IndexPath{1, 9}), IndexPath{2});
    EXPECT_LT(IndexPath(), IndexPath{0});
}

TEST(IndexPath, APositionPastTheEndThrows) {
    EXPECT_THROW(IndexPath{1}.indexAtPosition(1), std::out_of_range);
    EXPECT_THROW(IndexPath().lastIndex(), std::out_of_range);
}

}  // namespace
}  // namespace leafwright
