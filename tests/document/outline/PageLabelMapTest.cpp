#include "document/outline/PageLabelMap.h"
#include "support/FakePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

TEST(PageLabelMap, LeadsFromLabelsToPages) {
    test::FakePages pages;
    pages.add("i", {}).add("ii", {}).add("1", {});
    EXPECT_EQ(pageLabelMap(pages), (PageLabelMap{{"i", 0}, {"ii", 1}, {"1", 2}}));
}

TEST(PageLabelMap, OfPagesWithOneLabelTheLastIsInTheMap) {
    test::FakePages pages;
    pages.add("iv", {}).add("1", {}).add("iv", {}).add("2", {});
    EXPECT_EQ(pageLabelMap(pages), (PageLabelMap{{"iv", 2}, {"1", 1}, {"2", 3}}));
}

TEST(PageLabelMap, LabelsDifferInCase) {
    test::FakePages pages;
    pages.add("IV", {}).add("iv", {});
    EXPECT_EQ(pageLabelMap(pages), (PageLabelMap{{"IV", 0}, {"iv", 1}}));
}

TEST(PrintedPageNumber, BeginsWithP) {
    EXPECT_TRUE(isPrintedPageNumber("p12"));
    EXPECT_TRUE(isPrintedPageNumber("P12"));
    EXPECT_TRUE(isPrintedPageNumber("p"));
    EXPECT_TRUE(isPrintedPageNumber("Preface"));
    EXPECT_FALSE(isPrintedPageNumber("12p"));
    EXPECT_FALSE(isPrintedPageNumber(" p12"));
    EXPECT_FALSE(isPrintedPageNumber(""));
    EXPECT_FALSE(isPrintedPageNumber(QString()));
}

TEST(PageLabelKey, OrdinaryLabelsAreTheirOwnKeys) {
    EXPECT_EQ(pageLabelKey("IV", 4), "IV");
    EXPECT_EQ(pageLabelKey("3", 4), "3");
    EXPECT_EQ(pageLabelKey("", 4), "");
}

TEST(PageLabelKey, PrintedNumbersAreMovedByTheOffset) {
    EXPECT_EQ(pageLabelKey("P3", 4), "7");
    EXPECT_EQ(pageLabelKey("p43", 8), "51");
    EXPECT_EQ(pageLabelKey("p43", -42), "1");
    EXPECT_EQ(pageLabelKey("p3", 0), "3");
    EXPECT_EQ(pageLabelKey("p3", -10), "-7");
}

TEST(PageLabelKey, TheNumberIsReadUpToWhatIsNoDigit) {
    EXPECT_EQ(pageLabelKey("p 12", 1), "13");
    EXPECT_EQ(pageLabelKey("p12a", 1), "13");
    EXPECT_EQ(pageLabelKey("p007", 1), "8");
    EXPECT_EQ(pageLabelKey("p-2", 1), "-1");
    EXPECT_EQ(pageLabelKey("Preface", 4), "4");
    EXPECT_EQ(pageLabelKey("p", 4), "4");
}

TEST(PageLabelKey, LargeNumbersDoNotWrapAround) {
    EXPECT_EQ(pageLabelKey("p2147483647", 1), "2147483648");
    EXPECT_EQ(pageLabelKey("p99999999999999999999", 0), "2147483647");
}

TEST(IntegerValue, ReadsTheNumberAtTheStart) {
    EXPECT_EQ(integerValue(u"12"), 12);
    EXPECT_EQ(integerValue(u"  12 34"), 12);
    EXPECT_EQ(integerValue(u"-12"), -12);
    EXPECT_EQ(integerValue(u"+12"), 12);
    EXPECT_EQ(integerValue(u"0012x"), 12);
}

TEST(IntegerValue, IsZeroWithoutANumber) {
    EXPECT_EQ(integerValue(u""), 0);
    EXPECT_EQ(integerValue(u"iv"), 0);
    EXPECT_EQ(integerValue(u"--1"), 0);
    EXPECT_EQ(integerValue(u"\u0663"), 0);
}

TEST(IntegerValue, StopsAtTheBounds) {
    EXPECT_EQ(integerValue(u"2147483647"), INT32_MAX);
    EXPECT_EQ(integerValue(u"2147483648"), INT32_MAX);
    EXPECT_EQ(integerValue(u"-2147483648"), INT32_MIN);
    EXPECT_EQ(integerValue(u"-99999999999999999999999999"), INT32_MIN);
}

}  // namespace
}  // namespace leafwright
