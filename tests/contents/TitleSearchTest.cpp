#include "contents/TextFolding.h"
#include "contents/TitleSearch.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;
using test::TextLook;

/// Looks for a title on the first page, whose body text is what MadePages::paragraph() makes.
std::optional<TitlePlace> located(const MadePages &made, const QString &title, std::optional<double> y = {}) {
    std::vector<PageLines> pages = readAllLines(made, {}, [](int) {});
    const BodyStyle body = findBodyStyle(pages);
    return TitleSearch(pages, body).locate(searchForms(title), 0, y);
}

/// The score of a title in a line that has the given text.
double scoreOf(const QString &title, const QString &line) {
    const auto place = located(MadePages().page().text(60, 100, line).paragraph(300, 20), title);
    return place ? place->score : 0;
}

double scoreOfLook(const TextLook &look) {
    return located(MadePages().page().text(60, 100, "The title", look).paragraph(300, 20), "The title")
        ->score;
}

TEST(TitleSearch, LargeAndBoldLinesArePreferred) {
    EXPECT_DOUBLE_EQ(scoreOfLook({}), 100);
    EXPECT_DOUBLE_EQ(scoreOfLook(boldLook(10)), 104);
    EXPECT_DOUBLE_EQ(scoreOfLook({15}), 103);
    EXPECT_DOUBLE_EQ(scoreOfLook({20}), 106);
    EXPECT_DOUBLE_EQ(scoreOfLook({30}), 106) << "at most";
    EXPECT_DOUBLE_EQ(scoreOfLook({7.5}), 98.5);
    EXPECT_DOUBLE_EQ(scoreOfLook({4}), 97) << "at least";
}

TEST(TitleSearch, LinesOfAParagraphAreNot) {
    const auto score = [](double gap) {
        MadePages pages = MadePages().page().paragraph(100, 5);
        return located(pages.text(60, 148 + gap, "The title").paragraph(300, 20), "The title")->score;
    };
    EXPECT_DOUBLE_EQ(score(14), 92);
    EXPECT_DOUBLE_EQ(score(16), 100) << "set apart by more than a quarter of the leading";
}

TEST(TitleSearch, LinesBelowBelongToATitleIfTheyAreNear) {
    const auto lines = [](double gap) {
        MadePages pages = MadePages().page().text(60, 100, "The title", boldLook(14));
        const auto place = located(pages.text(60, 100 + gap, "goes on", boldLook(14)).paragraph(300, 20),
                                   "The title goes on");
        return place ? place->lineCount : 0;
    };
    EXPECT_EQ(lines(32), 2);
    EXPECT_EQ(lines(34), 0);
}

TEST(TitleSearch, TitlesHaveFourLinesAtMost) {
    const auto place = [](int lines) {
        QStringList words;
        MadePages pages = MadePages().page();
        for (int i = 0; i < lines; ++i) {
            words += QString(6, QChar(u'a' + i));
            pages.text(60, 100 + 12 * i, words.back());
        }
        return located(pages.paragraph(400, 20), words.join(u' '));
    };
    EXPECT_DOUBLE_EQ(place(3)->score, 99) << "half a point less a line";
    EXPECT_DOUBLE_EQ(place(4)->score, 98.5);
    EXPECT_EQ(place(4)->lineCount, 4);
    EXPECT_FALSE(place(5));
}

TEST(TitleSearch, WordsThatALineBeginsWithAreNotTooShort) {
    EXPECT_DOUBLE_EQ(scoreOf("abcdef", "abcdef and more"), 50);
    EXPECT_DOUBLE_EQ(scoreOf("abcde", "abcde and more"), 0);
    EXPECT_DOUBLE_EQ(scoreOf("abcdefghij", "abcdefghij and more"), 50);
    EXPECT_DOUBLE_EQ(scoreOf("abcdefghijk", "abcdefghijk and more"), 62) << "long enough to be sure";
}

TEST(TitleSearch, AlikeAreLongTitlesOfNearlyOneLength) {
    EXPECT_DOUBLE_EQ(scoreOf("abcdefgh", "abcdxfgh"), 80 * 2 * 7 / 16.0);
    EXPECT_DOUBLE_EQ(scoreOf("abcdefg", "abcxefg"), 0);
    EXPECT_DOUBLE_EQ(scoreOf("abcdefghijklmnopqrst", "abcdefghijxxxxxklmnopqrst"), 80 * 2 * 20 / 45.0);
    EXPECT_DOUBLE_EQ(scoreOf("abcdefghijklmnopqrst", "abcdefghijxxxxxxklmnopqrst"), 0)
        << "more than a quarter longer";
}

TEST(TitleSearch, NearTheSpotIsBetter) {
    const auto score = [](double y) {
        return located(MadePages().page().text(60, 400, "The title").paragraph(600, 10), "The title", y)
            ->score;
    };
    EXPECT_DOUBLE_EQ(score(390), 100) << "the top of the line";
    EXPECT_DOUBLE_EQ(score(330), 95);
    EXPECT_DOUBLE_EQ(score(450), 95);
    EXPECT_DOUBLE_EQ(score(100), 88) << "at least";
}

}  // namespace
}  // namespace leafwright
