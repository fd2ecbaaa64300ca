#include "document/outline/EntriesElsewhere.h"
#include "support/OutlineItems.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

/// Two pages labelled "1", then two labelled "2".
std::optional<int> pageOf(const QString &label) {
    return label == "1" ? std::optional(1) : label == "2" ? std::optional(3) : std::nullopt;
}

class Elsewhere : public testing::Test {
protected:
    void add(const QString &title, const QString &label, std::optional<int> page) {
        MyOutlineItem &item = root.appendChild(std::make_unique<MyOutlineItem>());
        item.setPageTitle(title);
        item.setPageLabel(label);
        item.setImportedPage(page);
    }

    MyOutlineItem root;
};

TEST_F(Elsewhere, AreImportedEntriesWhoseLabelStandsForAnotherPage) {
    add("Stays", "1", 1);
    add("Moves", "2", 2);
    add("Web", QString(), std::nullopt);
    add("Made here", "1", std::nullopt);
    const EntriesElsewhere found = entriesElsewhere(root, pageOf);
    const EntriesOfOneReason &moved = found.byRepeatedLabels;
    ASSERT_EQ(moved.count, 1U);
    EXPECT_EQ(moved.first[0].title, "Moves");
    EXPECT_EQ(moved.first[0].before, 2);
    EXPECT_EQ(moved.first[0].now, 3);
    EXPECT_EQ(moved.list(), "“Moves” (page 3, now 4)");
    EXPECT_EQ(found.byPrintedNumbers.count, 0U);
    EXPECT_FALSE(found.isEmpty());
}

TEST_F(Elsewhere, AreFoundAtAnyDepthAndNamedInTheOrderOfTheTree) {
    add("A", "1", 0);
    MyOutlineItem &below = root.children()[0]->appendChild(std::make_unique<MyOutlineItem>());
    below.setPageTitle("B %1");
    below.setPageLabel("1");
    below.setImportedPage(0);
    add("C", "2", 2);
    EXPECT_EQ(entriesElsewhere(root, pageOf).byRepeatedLabels.list(),
              "“A” (page 1, now 2), “B %1” (page 1, now 2), “C” (page 3, now 4)");
    add("D", "2", 2);
    add("E", "2", 2);
    EXPECT_EQ(entriesElsewhere(root, pageOf).byRepeatedLabels.count, 5U);
    EXPECT_EQ(entriesElsewhere(root, pageOf).byRepeatedLabels.list(),
              "“A” (page 1, now 2), “B %1” (page 1, now 2), “C” (page 3, now 4) and 2 more");
}

TEST_F(Elsewhere, IsTheFirstPageForALabelThatNoPageIsKnownFor) {
    add("Unknown", "3", 2);
    EXPECT_EQ(entriesElsewhere(root, pageOf).byRepeatedLabels.list(), "“Unknown” (page 3, now 1)");
}

TEST_F(Elsewhere, HasAReasonOfItsOwnForLabelsThatArePrintedPageNumbers) {
    add("One", "P-2", 2);
    add("Other", "p2", 2);
    add("Repeated", "2", 2);
    const EntriesElsewhere found = entriesElsewhere(root, pageOf);
    EXPECT_EQ(found.byPrintedNumbers.list(), "“One” (page 3, now 1), “Other” (page 3, now 1)");
    EXPECT_EQ(found.byRepeatedLabels.list(), "“Repeated” (page 3, now 4)");
}

}  // namespace
}  // namespace leafwright
