#include "widgets/MixedColor.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

TEST(MixedColor, LiesBetweenTheTwo) {
    EXPECT_EQ(mixed(Qt::black, Qt::white, 0).rgb(), QColor(Qt::black).rgb());
    EXPECT_EQ(mixed(Qt::black, Qt::white, 1).rgb(), QColor(Qt::white).rgb());
    EXPECT_EQ(mixed(QColor(0, 100, 200), QColor(200, 200, 0), 0.25).rgb(), QColor(50, 125, 150).rgb());
}

}  // namespace
}  // namespace leafwright
