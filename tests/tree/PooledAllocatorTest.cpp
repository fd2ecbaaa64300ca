#include "tree/PooledAllocator.h"

#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace leafwright {

namespace {

std::shared_ptr<int> pooled(const PooledAllocator<int> &pool, int value) {
    return std::allocate_shared<int>(pool, value);
}

}  // namespace

TEST(PooledAllocator, WhatItAllocatedOutlivesIt) {
    std::shared_ptr<int> kept;
    std::weak_ptr<int> gone;
    {
        const PooledAllocator<int> pool;
        kept = pooled(pool, 7);
        gone = pooled(pool, 8);
    }
    EXPECT_EQ(*kept, 7);
    EXPECT_TRUE(gone.expired());
}

TEST(PooledAllocator, CopiesOfAnyTypeShareAPool) {
    const PooledAllocator<int> pool;
    const PooledAllocator<double> copy(pool);
    EXPECT_TRUE(copy == pool);
}

TEST(PooledAllocator, LivesWithVeryManyThatGoInAnotherOrder) {
    const PooledAllocator<int> pool;
    std::vector<std::shared_ptr<int>> all;
    for (int i = 0; i < 10'000; ++i)
        all.push_back(pooled(pool, i));
    for (size_t i = 0; i < all.size(); i += 2)
        all[i] = pooled(pool, -1);
    for (size_t i = 0; i < all.size(); ++i)
        EXPECT_EQ(*all[i], i % 2 == 0 ? -1 : static_cast<int>(i));
}

}  // namespace leafwright
