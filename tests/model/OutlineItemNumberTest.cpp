#include "model/MyOutlineItem.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

qint32 attachPointOf(const QString &levelstr) {
    MyOutlineItem item;
    item.setLevelstr(levelstr);
    return item.attachPoint();
}

QString wantedParentOf(const QString &levelstr, quint64 levelnum) {
    MyOutlineItem item;
    item.setLevelstr(levelstr);
    item.setLevelnum(levelnum);
    return item.wantedParent();
}

TEST(OutlineItemNumber, AttachPointIsTheLastComponent) {
    EXPECT_EQ(attachPointOf("12"), 12);
    EXPECT_EQ(attachPointOf("3.10"), 10);
    EXPECT_EQ(attachPointOf("0"), 0);
    EXPECT_EQ(attachPointOf("4.0.2147483647"), 2147483647);
}

TEST(OutlineItemNumber, AttachPointIsZeroWithoutANumber) {
    EXPECT_EQ(attachPointOf(QString()), 0);
    EXPECT_EQ(attachPointOf(""), 0);
    EXPECT_EQ(attachPointOf("7."), 0);
    EXPECT_EQ(attachPointOf("7.x"), 0);
}

TEST(OutlineItemNumber, AttachPointTakesLeadingDigitsOnly) {
    EXPECT_EQ(attachPointOf("7.42nd"), 42);
}

TEST(OutlineItemNumber, AttachPointBeyondTheRangeStopsAtItsEnd) {
    EXPECT_EQ(attachPointOf("0.99999999999999999999999"), INT32_MAX);
}

TEST(OutlineItemNumber, WantedParentOfATopLevelItemIsTheRoot) {
    EXPECT_EQ(wantedParentOf("3", 1), "Root");
    EXPECT_EQ(wantedParentOf("2.4.1", 1), "Root");
    EXPECT_EQ(wantedParentOf(QString(), 1), "Root");
}

TEST(OutlineItemNumber, WantedParentIsTheNumberWithoutItsLastComponent) {
    EXPECT_EQ(wantedParentOf("2.4.1", 3), "2.4");
    EXPECT_EQ(wantedParentOf("3.1.4", 3), "3.1");
    EXPECT_EQ(wantedParentOf("3.1", 2), "3");
    EXPECT_EQ(wantedParentOf("10.20.30.40", 4), "10.20.30");
}

TEST(OutlineItemNumber, ASingleComponentBelowTheTopNamesItself) {
    EXPECT_EQ(wantedParentOf("3", 2), "3");
}

TEST(OutlineItemNumber, AnItemThatWasNeverNumberedWantsNoParent) {
    EXPECT_TRUE(MyOutlineItem().wantedParent().isEmpty());
}

}  // namespace
}  // namespace leafwright
