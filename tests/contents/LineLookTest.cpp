#include "contents/PageLines.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::MadePages;
using test::TextLook;

/// A line of letters in two looks, one behind the other.
TextLine lineOf(int letters, const TextLook &look, int others, const TextLook &otherLook = {}) {
    MadePages pages;
    pages.page().text(60, 100, QString(letters, u'w'), look);
    pages.text(60 + 0.5 * look.size * letters, 100, QString(others, u'w'), otherLook);
    return readLines(pages.pageEvidence(0), 0).lines.at(0);
}

TEST(LineLook, SizeIsTheLargestThatAFifthOfTheLettersHave) {
    EXPECT_EQ(lineOf(5, {14}, 15).look.size, 14);
    EXPECT_EQ(lineOf(3, {14}, 17).look.size, 10);
}

TEST(LineLook, ItalicAndMonoAreMostOfTheLetters) {
    const TextLook italic{10, false, "Times", 0xff000000, true};
    EXPECT_TRUE(lineOf(13, italic, 7).look.italic);
    EXPECT_FALSE(lineOf(11, italic, 9).look.italic);
    const TextLook mono{10, false, "Courier"};
    EXPECT_TRUE(lineOf(15, mono, 5).look.mono);
    EXPECT_FALSE(lineOf(13, mono, 7).look.mono);
}

TEST(LineLook, CapitalsAreThreeAtLeast) {
    const auto isInCapitals = [](const QString &text) {
        return readLines(MadePages().page().text(60, 100, text).pageEvidence(0), 0).lines.at(0).look.capitals;
    };
    EXPECT_TRUE(isInCapitals("ABC"));
    EXPECT_FALSE(isInCapitals("AB"));
}

TEST(LineLook, TextWithoutLettersHardlyCounts) {
    MadePages pages;
    pages.page().text(60, 100, "ab").text(70, 100, "...");
    EXPECT_DOUBLE_EQ(readLines(pages.pageEvidence(0), 0).lines.at(0).letters, 2.1);
}

TEST(Lines, NeighboursAreLookedForAmongFortyLines) {
    const auto hasNeighbour = [](int between) {
        MadePages pages;
        pages.page().text(60, 100, "above");
        for (int i = 0; i < between; ++i)
            pages.text(300, 105 + 5 * i, "beside", {4});
        pages.text(60, 110 + 5 * between, "below");
        return readLines(pages.pageEvidence(0), 0).lines.back().previous == 0;
    };
    EXPECT_TRUE(hasNeighbour(39));
    EXPECT_FALSE(hasNeighbour(40));
}

}  // namespace
}  // namespace leafwright
