#include "contents/ContentsStages.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;

/// How many headings are taken of so many that are tagged, of which some stand on their pages.
size_t taken(int tagged, int standing) {
    MadePages pages;
    std::vector<StructureHeading> headings;
    for (int i = 0; i < tagged; ++i) {
        const QString title = QString("About the letter %1").arg(QString(6, QChar(u'a' + i)));
        pages.page().paragraph(200, 20);
        if (i < standing) pages.text(60, 100, title, boldLook(14));
        headings.push_back({1, i, title});
    }
    const std::vector<PageLines> lines = readAllLines(pages, {}, [](int) {});
    return findStructureHeadings(headings, lines, BodyStyle()).size();
}

TEST(StructureHeadings, ThreeAreEnough) {
    EXPECT_EQ(taken(3, 3), 3U);
    EXPECT_EQ(taken(2, 2), 0U);
}

TEST(StructureHeadings, MostStandOnTheirPages) {
    EXPECT_EQ(taken(10, 8), 10U);
    EXPECT_EQ(taken(10, 6), 0U);
}

/// Where the last of some headings is found, whose line is as given, on its page or the next.
LineRef placeOf(const QString &title, const QString &line, int page) {
    MadePages pages;
    std::vector<StructureHeading> headings;
    for (int i = 0; i < 4; ++i) {
        const QString known = QString("Known %1").arg(QChar(u'a' + i));
        pages.page().text(60, 100, known, boldLook(14)).paragraph(200, 20);
        headings.push_back({1, i, known});
    }
    for (int i = 4; i < 6; ++i) {
        pages.page().paragraph(200, 20);
        if (i == page) pages.text(60, 100, line);
    }
    headings.push_back({1, 4, title});
    const std::vector<PageLines> lines = readAllLines(pages, {}, [](int) {});
    return findStructureHeadings(headings, lines, BodyStyle()).back().line;
}

TEST(StructureHeadings, OnTheNextPageOnlyTheVeryTitleCounts) {
    EXPECT_EQ(placeOf("A title of some length", "A title of some length", 5), (LineRef{5, 0}));
    EXPECT_EQ(placeOf("A title of some length", "A title of same length", 4), (LineRef{4, 0}));
    EXPECT_TRUE(placeOf("A title of some length", "A title of same length", 5).isNull());
    EXPECT_EQ(placeOf("A title of some length", "A title of some length that goes on", 4), (LineRef{4, 0}));
    EXPECT_TRUE(placeOf("Of length", "Of length is what goes on here", 4).isNull()) << "too short to be sure";
}

/// The levels of headings that are tagged with these.
std::vector<int> levelsOf(const std::vector<int> &tagged) {
    MadePages pages;
    std::vector<StructureHeading> headings;
    for (size_t i = 0; i < tagged.size(); ++i) {
        const QString title =
            QString("About the letter %1").arg(QString(6, QChar(u'a' + static_cast<int>(i))));
        pages.page().text(60, 100, title, boldLook(14)).paragraph(200, 20);
        headings.push_back({tagged[i], static_cast<int>(i), title});
    }
    const std::vector<PageLines> lines = readAllLines(pages, {}, [](int) {});
    std::vector<int> levels;
    for (const LocatedStructureHeading &heading : findStructureHeadings(headings, lines, BodyStyle()))
        levels.push_back(heading.level);
    return levels;
}

TEST(StructureHeadings, LevelsThatNoneHasAreNotCounted) {
    EXPECT_EQ(levelsOf({1, 2, 3}), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(levelsOf({2, 4, 6, 4}), (std::vector<int>{1, 2, 3, 2}));
    EXPECT_EQ(levelsOf({0, 0, 3}), (std::vector<int>{1, 1, 2})) << "those without level are of the first";
}

}  // namespace
}  // namespace leafwright
