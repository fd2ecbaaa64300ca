#include "model/MyOutlineItem.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

/// The page that an item leads to; fails if it leads to none.
PageTarget pageOf(const MyOutlineItem &item) {
    const Target target = item.target();
    const auto *page = std::get_if<PageTarget>(&target);
    if (!page) ADD_FAILURE() << "leads to no page";
    return page ? *page : PageTarget();
}

TEST(Target, ANewItemLeadsToNoParticularSpotOfAPage) {
    const PageTarget page = pageOf(MyOutlineItem());
    EXPECT_EQ(page.label, "1");
    EXPECT_FALSE(page.point);
    EXPECT_FALSE(page.importedPage);
}

TEST(Target, TheZeroPointIsNoParticularSpotAndWhatIsBesideItIsOne) {
    EXPECT_FALSE(pageOf(MyOutlineItem("A", {"iv", QPointF(0, 0)})).point);
    EXPECT_EQ(pageOf(MyOutlineItem("A", {"iv", QPointF(0, 1e-300)})).point, QPointF(0, 1e-300));
}

TEST(Target, TheEmptyLabelIsAPagesAndTheAbsentOneNobodys) {
    EXPECT_EQ(pageOf(MyOutlineItem("A", {""})).label, "");
    EXPECT_TRUE(std::holds_alternative<std::monostate>(MyOutlineItem("A", {QString()}).target()));
}

TEST(Target, ThePageThatAnEntryCameWithGoesWithItsLabel) {
    MyOutlineItem item("A", {"iv", {}, 3});
    EXPECT_EQ(pageOf(item).importedPage, 3);
    item.setPageLabel("v");
    EXPECT_FALSE(pageOf(item).importedPage);
}

TEST(Target, WithoutAPageItIsWhatTheFileHadOrAnAction) {
    MyOutlineItem ofTheFile("A", {QString()});
    ofTheFile.setEntry({.number = 7});
    EXPECT_TRUE(std::holds_alternative<EntryTarget>(ofTheFile.target()));
    MyOutlineItem link("A", {QString()});
    link.setEntry({.action = OutlineEntry::Action{"URI", "https://example.org"}});
    EXPECT_TRUE(std::holds_alternative<EntryTarget>(link.target()));
    link.setPageLabel("2");
    EXPECT_EQ(pageOf(link).label, "2");
}

}  // namespace
}  // namespace leafwright
