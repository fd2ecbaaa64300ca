#include "autotoc/FontUses.h"
#include "categories/FontIdentity.h"
#include "support/FakePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::FakePages;
using test::makeFont;

const Font heading = makeFont("Times", 18, BoldTrait);

TEST(FontUses, CountsRunsAndKeepsTheFirst) {
    FakePages pages;
    pages.add("1", {{"One", heading}, {"text", makeFont("Times", 10)}, {"Two", heading}});
    const FontUses uses = fontUses(calcFontsInDocument(pages));
    EXPECT_EQ(uses.size(), 2);
    EXPECT_EQ(uses.value(fontIDString(heading)), (FontUse{2, "One"}));
}

TEST(FontUses, SizesThatPrintAlikeAreOneFont) {
    const Font smaller = makeFont("Times", 17.99, BoldTrait);
    ASSERT_EQ(fontIDString(smaller), fontIDString(heading));
    FakePages pages;
    pages.add("1", {{"Smaller", smaller}, {"Larger", heading}});
    EXPECT_EQ(fontUses(calcFontsInDocument(pages)).value(fontIDString(heading)), (FontUse{2, "Smaller"}));
}

TEST(FontUses, AFontThatIsNotThereIsUsedNowhere) {
    EXPECT_EQ(fontUses(FontCensus()).value(fontIDString(heading)), (FontUse{0, {}}));
}

}  // namespace
}  // namespace leafwright
