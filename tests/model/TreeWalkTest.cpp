#include "model/TreeWalk.h"
#include "pdf/PDFOutline.h"
#include "support/OutlineItems.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

/// a (b (c) d) e
std::unique_ptr<MyOutlineItem> fiveItems() {
    return test::makeItem({"root", {}, {}, {{"a", "1", {}, {{"b", "1", {}, {{"c"}}}, {"d"}}}, {"e"}}});
}

TEST(TreeWalk, EntersParentsFirstAndLeavesThemLast) {
    const auto root = fiveItems();
    QString way;
    walkBelow(
        *root,
        [&](const MyOutlineItem &item, size_t depth) { way += item.pageTitle() + QString::number(depth); },
        [&](const MyOutlineItem &item) { way += item.pageTitle().toUpper(); });
    EXPECT_EQ(way, "a0b1c2CBd1DAe0E");
}

TEST(TreeWalk, VisitsTheTopToo) {
    QString way;
    walkTree(*fiveItems(), [&](const MyOutlineItem &item, size_t depth) {
        way += item.pageTitle() + QString::number(depth);
    });
    EXPECT_EQ(way, "root0a1b2c3d2e1");
}

TEST(TreeWalk, PassesByWhatIsBelowIfTheVisitSaysSo) {
    const auto root = fiveItems();
    QString way;
    const auto unlessB = [&](const MyOutlineItem &item, size_t /*depth*/) {
        way += item.pageTitle();
        return item.pageTitle() != "b";
    };
    walkBelow(*root, unlessB, [&](const MyOutlineItem &item) { way += item.pageTitle().toUpper(); });
    EXPECT_EQ(way, "abBdDAeE");
    way.clear();
    walkTree(*root->children()[0], unlessB);
    EXPECT_EQ(way, "abd");
    way.clear();
    walkTree(*root->children()[0]->children()[0], unlessB);
    EXPECT_EQ(way, "b");
}

TEST(TreeWalk, TakesAFilesEntriesHoweverDeep) {
    constexpr size_t levels = 200'000;
    PDFOutline root;
    PDFOutline *last = &root;
    for (size_t i = 0; i < levels; ++i)
        last = &last->insertChildAtIndex(std::make_unique<PDFOutline>(), 0);
    size_t deepest = 0;
    walkBelow(root, [&](const PDFOutline & /*entry*/, size_t depth) { deepest = depth; });
    EXPECT_EQ(deepest, levels - 1);
}

}  // namespace
}  // namespace leafwright
