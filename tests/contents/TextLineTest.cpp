#include "contents/PageLines.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;
using test::TextLook;

PageLines linesOf(const MadePages &pages) {
    return readLines(pages.pageEvidence(0), 0);
}

QStringList textsOf(const MadePages &pages) {
    QStringList texts;
    for (const TextLine &line : linesOf(pages).lines)
        texts += line.text;
    return texts;
}

TEST(Lines, OneBaselineIsOneLine) {
    MadePages pages;
    pages.page().text(60, 100, "first").text(60, 120, "below").text(90, 100.7, "second");
    EXPECT_EQ(textsOf(pages), (QStringList{"first second", "below"}));
}

TEST(Lines, AGapIsABlank) {
    MadePages pages;
    pages.page().text(60, 100, "ab").text(71, 100, "cd").text(82, 100, "ef");
    EXPECT_EQ(textsOf(pages), QStringList{"abcdef"});
    MadePages apart;
    apart.page().text(60, 100, "ab").text(71.8, 100, "cd");
    EXPECT_EQ(textsOf(apart), QStringList{"ab cd"});
}

TEST(Lines, IdeographsStandApartWithoutBlank) {
    MadePages pages;
    pages.page().text(60, 100, QString("文")).text(69, 100, QString("字"));
    EXPECT_EQ(textsOf(pages), QStringList{QString("文字")});
}

TEST(Lines, AWideGapPartsThem) {
    MadePages pages;
    pages.page().text(60, 100, "left").text(94, 100, "close").text(135, 100, "right");
    EXPECT_EQ(textsOf(pages), (QStringList{"left close", "right"}));
}

TEST(Lines, ANumberKeepsItsTitleAcrossAWideGap) {
    MadePages pages;
    pages.page().text(60, 100, "1.2").text(125, 100, "Title");
    EXPECT_EQ(textsOf(pages), QStringList{"1.2 Title"});
    MadePages further;
    further.page().text(60, 100, "1.2").text(135, 100, "Title");
    EXPECT_EQ(textsOf(further), (QStringList{"1.2", "Title"}));
}

TEST(Lines, RaisedCharactersBelongToTheirWord) {
    MadePages pages;
    pages.page().text(60, 100, "word").text(80, 96, "2", {6}).text(84, 100, " more");
    EXPECT_EQ(textsOf(pages), QStringList{"word2 more"});
}

TEST(Lines, TextDrawnTwiceCountsOnce) {
    MadePages pages;
    pages.page().text(60, 100, "Bold").text(60.4, 100, "Bold");
    EXPECT_EQ(textsOf(pages), QStringList{"Bold"});
}

TEST(Lines, LetterSpacedTitlesAreWords) {
    MadePages pages;
    pages.page();
    double x = 60;
    for (const QChar letter : QString("THE END")) {
        if (letter != u' ') pages.text(x, 100, QString(letter));
        x += letter == u' ' ? 7 : 9;
    }
    EXPECT_EQ(textsOf(pages), QStringList{"THE END"});
}

TEST(Lines, InitialsAreNotLetterSpaced) {
    MadePages pages;
    pages.page().text(60, 100, "J R R Tolkien and C S Lewis");
    EXPECT_EQ(textsOf(pages), QStringList{"J R R Tolkien and C S Lewis"});
}

TEST(Lines, SmallCapitalsHaveTheSizeOfTheirCapitals) {
    MadePages pages;
    pages.page()
        .text(60, 100, "I", {18})
        .text(69, 100, "NTRO", {14})
        .text(102, 100, "T", {18})
        .text(111, 100, "O", {14});
    const TextLine line = linesOf(pages).lines.at(0);
    EXPECT_EQ(line.text, "INTRO TO");
    EXPECT_EQ(line.look.size, 18);
    EXPECT_TRUE(line.look.capitals);
}

TEST(Lines, ADropCapDoesNotMakeALineLarge) {
    MadePages pages;
    pages.page().text(60, 100, "O", {14}).text(67, 100, "nce upon a time there was a line of text");
    EXPECT_EQ(linesOf(pages).lines.at(0).look.size, 10);
}

TEST(Lines, LookIsThatOfMostLetters) {
    MadePages pages;
    pages.page().text(60, 100, "Mostly bold", boldLook(10)).text(116, 100, "text");
    pages.text(60, 120, "Partly", boldLook(10)).text(91, 120, "regular text");
    const PageLines page = linesOf(pages);
    EXPECT_TRUE(page.lines.at(0).look.bold);
    EXPECT_FALSE(page.lines.at(1).look.bold);
}

TEST(Lines, NumbersInAnotherFontDoNotChangeTheLook) {
    MadePages pages;
    pages.page().text(60, 100, "3", {12, false, "Helvetica"}).text(75, 100, "The title of it", boldLook(12));
    const TextLine line = linesOf(pages).lines.at(0);
    EXPECT_EQ(line.text, "3 The title of it");
    EXPECT_TRUE(line.look.bold);
    EXPECT_EQ(line.look.family, "times");
}

TEST(Lines, NeighboursOverlapInX) {
    MadePages pages;
    pages.page().text(60, 100, "left").text(300, 104, "right").text(60, 114, "left again");
    const PageLines page = linesOf(pages);
    EXPECT_EQ(page.lines.at(2).previous, 0);
    EXPECT_EQ(page.lines.at(0).next, 2);
    EXPECT_EQ(page.lines.at(2).gapAbove, 14);
    EXPECT_EQ(page.lines.at(1).gapAbove, noGap);
}

TEST(Lines, PagesWhoseTextRunsUpAreTurned) {
    MadePages pages;
    pages.page(600, 800);
    TextSpan span = test::madeSpan(0, 0, "Turned title");
    span.direction = {0, -1};
    span.box = QRectF(92, 640, 10, 60);
    span.baseline = 100;
    pages.span(span);
    const PageLines page = linesOf(pages);
    ASSERT_EQ(page.lines.size(), 1U);
    EXPECT_EQ(page.lines[0].left, 100);
    EXPECT_EQ(page.lines[0].baseline, 100);
    EXPECT_EQ(page.frame.size(), QSizeF(800, 600));
    EXPECT_EQ(page.frame.toShown(QRectF(100, 92, 60, 10)), QRectF(92, 640, 10, 60));
}

TEST(Lines, SpansAreKeptOfTheFirstPagesAlone) {
    MadePages pages;
    for (int i = 0; i < 3; ++i)
        pages.page().text(60, 100, "Word");
    const std::vector<PageLines> lines = readAllLines(
        pages, {}, [](int) {}, 2);
    EXPECT_EQ(lines[1].lines.at(0).spans.size(), 1U);
    EXPECT_TRUE(lines[1].evidence);
    EXPECT_EQ(lines[2].lines.at(0).text, "Word");
    EXPECT_TRUE(lines[2].lines.at(0).spans.empty());
    EXPECT_FALSE(lines[2].evidence);
}

TEST(Lines, RightToLeftTextIsReadFromTheRight) {
    MadePages pages;
    pages.page().text(60, 100, "12").text(470, 100, QString("\u0628\u0627\u0628"));
    const PageLines page = linesOf(pages);
    EXPECT_TRUE(page.frame.isMirrored);
    EXPECT_EQ(page.lines.at(0).text, QString("\u0628\u0627\u0628"));
    EXPECT_EQ(page.lines.at(1).text, "12");
}

TEST(Lines, PresentationFormsInVisualOrderAreTurnedAround) {
    MadePages pages;
    // The word as it is seen from left to right, in presentation forms: meem, lam, seen.
    pages.page().text(300, 100, QString("\ufee2\ufee0\ufeb3"));
    EXPECT_EQ(textsOf(pages), QStringList{QString("\u0633\u0644\u0645")});
}

TEST(Lines, NumbersAndNamesKeepTheirOrderInTextThatIsTurned) {
    MadePages pages;
    pages.page().text(300, 100, QString("TeX 2015 \ufee2\ufee0\ufeb3"));
    EXPECT_EQ(textsOf(pages), QStringList{QString("\u0633\u0644\u0645 2015 TeX")});
}

TEST(Lines, PagesWhoseTextRunsDownAreTurnedTheOtherWay) {
    PageEvidence evidence;
    evidence.visibleBox = {0, 0, 600, 800};
    evidence.spans = {test::madeSpan(0, 0, "Turned title")};
    const QPointF point(10, 20);
    const auto turned = [&](int rotation, double y) {
        evidence.rotation = rotation;
        evidence.spans[0].direction = {0, y};
        return readingFrameOf(evidence).turned.toShown(point);
    };
    const auto shown = [&](int rotation) {
        return PageTransform(evidence.visibleBox, rotation).toShown(point);
    };
    EXPECT_EQ(turned(0, 1), shown(270));
    EXPECT_EQ(turned(0, -1), shown(90));
    EXPECT_EQ(turned(270, -1), shown(0));
    EXPECT_EQ(turned(180, 1), shown(90));
}

TEST(Lines, LigaturesAreResolved) {
    MadePages pages;
    pages.page().text(60, 100, QString("\ufb01nd"));
    EXPECT_EQ(textsOf(pages), QStringList{"find"});
}

}  // namespace
}  // namespace leafwright
