#include "pageview/TextSelector.h"
#include "support/OpenPdf.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A selector for lines of text whose characters are 10 wide and 12 high: the first line stands at y 100,
/// each further one 20 below.
TextSelector selectorFor(const QString &text) {
    std::vector<Rect> boxes;
    double x = 0;
    double y = 100;
    for (const QChar character : text) {
        if (character == u'\n') {
            boxes.push_back({});
            x = 0;
            y -= 20;
        } else {
            boxes.push_back({x, y, 10, 12});
            x += 10;
        }
    }
    return {text, boxes};
}

TEST(TextSelector, WithoutTextThereIsNothing) {
    const TextSelector none;
    EXPECT_EQ(none.caretNear({5, 5}), 0);
    EXPECT_EQ(none.rangeBetween({0, 0}, {9, 9}), TextRange());
    EXPECT_EQ(none.wordAt({5, 5}), TextRange());
    EXPECT_EQ(none.lineAt({5, 5}), TextRange());
    EXPECT_FALSE(none.hasTextAt({5, 5}));
}

TEST(TextSelector, CaretIsBeforeOrBehindTheNearestCharacter) {
    const TextSelector text = selectorFor("abcdef\n");
    EXPECT_EQ(text.caretNear({21, 105}), 2);
    EXPECT_EQ(text.caretNear({29, 105}), 3);
    EXPECT_EQ(text.caretNear({-50, 105}), 0);
    EXPECT_EQ(text.caretNear({500, 105}), 6);
    EXPECT_EQ(text.caretNear({21, 900}), 2) << "above the line";
}

TEST(TextSelector, RangeIsTheSameInBothDirections) {
    const TextSelector text = selectorFor("abcdef\nghijkl\n");
    EXPECT_EQ(text.rangeBetween({21, 105}, {41, 85}), (TextRange{2, 9}));
    EXPECT_EQ(text.rangeBetween({41, 85}, {21, 105}), (TextRange{2, 9}));
    EXPECT_EQ(text.rangeBetween({21, 105}, {22, 105}), (TextRange{2, 0}));
}

TEST(TextSelector, Words) {
    const TextSelector text = selectorFor("see section 1.2, it's\n");
    EXPECT_EQ(text.wordAt({55, 105}), (TextRange{4, 7})) << "section";
    EXPECT_EQ(text.wordAt({5, 105}), (TextRange{0, 3})) << "the first";
    EXPECT_EQ(text.wordAt({175, 105}), (TextRange{17, 4})) << "with an apostrophe";
    EXPECT_EQ(text.wordAt({155, 105}), (TextRange{15, 1})) << "a comma is by itself";
    EXPECT_EQ(text.wordAt({55, 300}), TextRange()) << "off the text";
}

TEST(TextSelector, WordsEndWithTheirLine) {
    const TextSelector text = selectorFor("one\ntwo\n");
    EXPECT_EQ(text.wordAt({5, 85}), (TextRange{4, 3}));
    EXPECT_EQ(text.wordAt({25, 105}), (TextRange{0, 3}));
}

TEST(TextSelector, Lines) {
    const TextSelector text = selectorFor("first line\nsecond\nlast");
    EXPECT_EQ(text.lineAt({30, 105}), (TextRange{0, 11}));
    EXPECT_EQ(text.lineAt({30, 85}), (TextRange{11, 7}));
    EXPECT_EQ(text.lineAt({30, 65}), (TextRange{18, 4})) << "without a line feed";
    EXPECT_EQ(text.lineAt({90, 85}), TextRange()) << "behind a short line";
}

TEST(TextSelector, RectanglesByLine) {
    const TextSelector text = selectorFor("abcdef\nghijkl\n");
    EXPECT_THAT(text.rects({2, 9}), ElementsAre(Rect{20, 100, 40, 12}, Rect{0, 80, 40, 12}));
    EXPECT_THAT(text.rects({6, 1}), IsEmpty()) << "a line feed alone";
    EXPECT_THAT(text.rects({}), IsEmpty());
}

TEST(TextSelector, CharactersBeyondTheFirstPlaneStayWhole) {
    const QString text = u"a\U0001D400b"_qs;
    const TextSelector selector(text, {{0, 0, 10, 10}, {10, 0, 10, 10}, {10, 0, 10, 10}, {20, 0, 10, 10}});
    EXPECT_EQ(selector.caretNear({12, 5}), 1);
    EXPECT_EQ(selector.caretNear({18, 5}), 3);
}

TEST(TextSelector, LinesThatRunUpwardsOrBackwards) {
    const TextSelector upwards("abc", {{0, 0, 10, 10}, {0, 10, 10, 10}, {0, 20, 10, 10}});
    EXPECT_EQ(upwards.caretNear({5, 12}), 1);
    EXPECT_EQ(upwards.caretNear({5, 18}), 2);
    const TextSelector backwards("abc", {{20, 0, 10, 10}, {10, 0, 10, 10}, {0, 0, 10, 10}});
    EXPECT_EQ(backwards.caretNear({18, 5}), 1);
    EXPECT_EQ(backwards.caretNear({12, 5}), 2);
}

TEST(TextSelector, FewerBoxesThanCharacters) {
    const TextSelector text("abc\ndef\n", {{0, 0, 10, 10}});
    EXPECT_EQ(text.lineAt({5, 5}), (TextRange{0, 4}));
    EXPECT_EQ(text.caretNear({500, 5}), 1);
}

TEST(TextSelector, OnTheTextOfAPage) {
    test::PdfBuilder pdf;
    pdf.addPage(test::PdfBuilder::showText("F1", 20, 72, 700, "Hello there"), "/Rotate 90");
    const auto document = test::openPdf(pdf);
    const PDFPage &page = *document->page(0);
    const TextSelector text(page.text()->attributedString.string, page.characterBoxes());
    EXPECT_EQ(text.wordAt({75, 705}), (TextRange{0, 5}));
    EXPECT_EQ(text.lineAt({75, 705}), (TextRange{0, 12}));
}

}  // namespace
}  // namespace leafwright
