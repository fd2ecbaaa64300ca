#include "model/LevelNumber.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using Number = std::shared_ptr<const LevelNumber>;

TEST(LevelNumber, TextHasThePositionsFromTheOutermost) {
    const Number fourth = std::make_shared<LevelNumber>(nullptr, 3);
    EXPECT_EQ(fourth->text(), "3");
    const Number second = std::make_shared<LevelNumber>(fourth, 1);
    EXPECT_EQ(LevelNumber(second, 10).text(), "3.1.10");
    EXPECT_EQ(LevelNumber(second, 0).text(), "3.1.0");
}

TEST(LevelNumber, ParentsLiveAsLongAsTheirChildren) {
    auto parent = std::make_shared<const LevelNumber>(nullptr, 2);
    const std::weak_ptr<const LevelNumber> kept = parent;
    auto first = std::make_unique<LevelNumber>(parent, 0);
    const LevelNumber second(std::move(parent), 1);
    first.reset();
    EXPECT_EQ(second.text(), "2.1");
    EXPECT_EQ(kept.use_count(), 1);
}

TEST(LevelNumber, DeepOnesEndWithoutRecursion) {
    constexpr int levels = 1'000'000;
    Number number;
    for (int i = 0; i < levels; ++i)
        number = std::make_shared<LevelNumber>(std::move(number), 0);
    EXPECT_EQ(number->text().size(), 2 * levels - 1);
}

}  // namespace
}  // namespace leafwright
