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

TEST(ItemsInOrder, CountsLevelsFromTheTop) {
    MyOutlineItem root;
    root.appendChild(test::makeItem({"a"})).appendChild(test::makeItem({"b"}));
    root.appendChild(test::makeItem({"c"}));
    QStringList items;
    for (const auto &[item, level] : itemsInOrder(root))
        items.append(item->pageTitle() + QString::number(level));
    EXPECT_EQ(items, (QStringList{"a1", "b2", "c1"}));
}

/// An entry that stands for the item of that number.
ContentsEntry entryOfItem(int number) {
    ContentsEntry made = entry("as it was called before", 0, 1);
    made.id = -1 - number;
    return made;
}

/// The tree "a (b (c)) d" with entries among its items.
QString completedWith(std::vector<ContentsEntry> entries) {
    test::FakePages pages;
    pages.add("i", {}).add("ii", {});
    MyOutlineItem root;
    MyOutlineItem &a = root.appendChild(test::makeItem({"a"}));
    a.appendChild(test::makeItem({"b"})).appendChild(test::makeItem({"c"}));
    root.appendChild(test::makeItem({"d"}));
    FoundContents completed;
    completed.entries = std::move(entries);
    root.setChildren(completedItems(root.takeChildren(), completed, pages));
    QStringList items;
    for (const auto &[item, level] : itemsInOrder(root))
        items.append(item->pageTitle() + QString::number(level));
    return items.join(' ');
}

TEST(CompletedItems, EntriesStandAmongTheItems) {
    EXPECT_EQ(completedWith({entryOfItem(0), entryOfItem(1), entryOfItem(2), entry("new", 1, 2),
                             entryOfItem(3), entry("last", 1, 1)}),
              "a1 b2 c3 new2 d1 last1");
}

TEST(CompletedItems, ItemsThatNoEntryStandsForStayBehindTheOneBefore) {
    EXPECT_EQ(completedWith({entry("new", 1, 1), entryOfItem(0), entry("other", 1, 1), entryOfItem(3)}),
              "new1 a1 b2 c3 other1 d1");
    EXPECT_EQ(completedWith({entry("new", 1, 1), entryOfItem(3)}), "a1 b2 c3 new1 d1");
    EXPECT_EQ(completedWith({}), "a1 b2 c3 d1");
}

TEST(CompletedItems, ItemsAreTheSameOnes) {
    const test::FakePages pages;
    MyOutlineItem root;
    const MyOutlineItem *item = &root.appendChild(test::makeItem({"a"}));
    FoundContents completed;
    completed.entries = {entryOfItem(0)};
    root.setChildren(completedItems(root.takeChildren(), completed, pages));
    EXPECT_EQ(root.children().front().get(), item) << "with all that it came with from the file";
}

}  // namespace
}  // namespace leafwright
