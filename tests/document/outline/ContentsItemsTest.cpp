#include "document/outline/ContentsItems.h"
#include "support/FakePages.h"
#include "support/OutlineItems.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

ContentsEntry entry(const QString &title, int page, int level) {
    ContentsEntry made;
    made.title = title;
    made.pageIndex = page;
    made.point = {72, 700};
    made.level = level;
    return made;
}

/// The items made of the entries, on pages labelled i, ii and 1.
QString itemsOf(std::vector<ContentsEntry> entries) {
    test::FakePages pages;
    pages.add("i", {}).add("ii", {}).add("1", {});
    FoundContents found;
    found.entries = std::move(entries);
    MyOutlineItem root;
    root.setChildren(itemsOfContents(found, pages));
    return test::treeText(root);
}

TEST(ContentsItems, EntriesStandBelowTheLastOneOfALowerLevel) {
    EXPECT_EQ(itemsOf({entry("One", 0, 1), entry("Two", 1, 2), entry("Three", 1, 3), entry("Two more", 2, 2),
                       entry("One more", 2, 1)}),
              "+ [i] One (72,700)\n"
              "++ [ii] Two (72,700)\n"
              "+++ [ii] Three (72,700)\n"
              "++ [1] Two more (72,700)\n"
              "+ [1] One more (72,700)\n");
}

TEST(ContentsItems, LevelsThatAreLeftOutLeaveNoGap) {
    EXPECT_EQ(itemsOf({entry("Deep", 0, 3), entry("Less", 0, 2), entry("Deeper", 0, 5)}),
              "+ [i] Deep (72,700)\n"
              "+ [i] Less (72,700)\n"
              "++ [i] Deeper (72,700)\n");
}

TEST(ContentsItems, NoneOfNothing) {
    EXPECT_EQ(itemsOf({}), "");
}

}  // namespace
}  // namespace leafwright
