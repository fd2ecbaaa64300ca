#include "model/FixedDecimals.h"

#include <QLocale>

#include <gtest/gtest.h>
#include <limits>

namespace leafwright {
namespace {

TEST(FixedDecimals, AlwaysPrintsTheDecimals) {
    EXPECT_EQ(fixedDecimals(12, 1), "12.0");
    EXPECT_EQ(fixedDecimals(0, 1), "0.0");
    EXPECT_EQ(fixedDecimals(12.34, 0), "12");
    EXPECT_EQ(fixedDecimals(11.96, 1), "12.0");
}

TEST(FixedDecimals, TiesGoToTheEvenDigit) {
    EXPECT_EQ(fixedDecimals(12.25, 1), "12.2");
    EXPECT_EQ(fixedDecimals(12.75, 1), "12.8");
    EXPECT_EQ(fixedDecimals(0.5, 0), "0");
    EXPECT_EQ(fixedDecimals(1.5, 0), "2");
    EXPECT_EQ(fixedDecimals(2.5, 0), "2");
}

TEST(FixedDecimals, WhatLooksLikeATieIsRoundedByItsExactValue) {
    EXPECT_EQ(fixedDecimals(12.35, 1), "12.3");  // a little below
    EXPECT_EQ(fixedDecimals(0.15, 1), "0.1");    // a little below
    EXPECT_EQ(fixedDecimals(0.45, 1), "0.5");    // a little above
}

TEST(FixedDecimals, KeepsTheSignOfWhatRoundsToZero) {
    EXPECT_EQ(fixedDecimals(-0.25, 0), "-0");
}

TEST(FixedDecimals, HasAFullStopInEveryLocale) {
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    const QString text = fixedDecimals(1234.5, 1);
    QLocale::setDefault(before);
    EXPECT_EQ(text, "1234.5");
}

TEST(FixedDecimals, PrintsTheLargestNumber) {
    const QString text = fixedDecimals(-std::numeric_limits<double>::max(), 6);
    EXPECT_TRUE(text.startsWith("-179769313486231570"));
    EXPECT_EQ(text.size(), 1 + 309 + 1 + 6);
}

}  // namespace
}  // namespace leafwright
