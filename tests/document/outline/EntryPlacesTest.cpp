#include "document/outline/EntryPlaces.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

TEST(EntryPlaces, TheEntryReadIsTheLastThatLeadsHereOrBefore) {
    EntryPlaces places;
    places.add(0, {2, 0});
    places.add(1, {2, 300});
    places.add(3, {5, 0});
    places.sort();
    EXPECT_EQ(places.entryAt({1, 700}), std::nullopt);
    EXPECT_EQ(places.entryAt({2, 0}), 0U);
    EXPECT_EQ(places.entryAt({2, 299}), 0U);
    EXPECT_EQ(places.entryAt({2, 300}), 1U);
    EXPECT_EQ(places.entryAt({4, 0}), 1U);
    EXPECT_EQ(places.entryAt({9, 0}), 3U);
}

TEST(EntryPlaces, EntriesNeedNotStandInTheOrderOfThePages) {
    EntryPlaces places;
    places.add(0, {7, 0});
    places.add(1, {3, 0});
    places.sort();
    EXPECT_EQ(places.entryAt({4, 0}), 1U);
    EXPECT_EQ(places.entryAt({8, 0}), 0U);
}

TEST(EntryPlaces, OfThoseThatLeadToOnePlaceTheLastIsRead) {
    EntryPlaces places;
    places.add(0, {3, 10});
    places.add(1, {3, 10});
    places.sort();
    EXPECT_EQ(places.entryAt({3, 10}), 1U);
}

TEST(EntryPlaces, WithoutEntriesNoneIsRead) {
    EntryPlaces places;
    places.sort();
    EXPECT_EQ(places.entryAt({0, 0}), std::nullopt);
}

}  // namespace
}  // namespace leafwright
