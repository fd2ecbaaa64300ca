#include "contents/NamedHeadings.h"
#include "contents/StyleLevels.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;

struct Title {
    QString text;
    double size = 14;
};

/// The levels of bold headings in running text of 10 points.
std::vector<int> levelsOf(const std::vector<Title> &titles) {
    HeadingCandidates all;
    std::vector<size_t> headings;
    for (const Title &title : titles) {
        HeadingCandidate candidate;
        candidate.block.text = title.text;
        candidate.block.look.size = title.size;
        candidate.block.look.bold = true;
        candidate.block.look.capitals = title.text == title.text.toUpper();
        candidate.block.numbering = numberingOf(title.text);
        headings.push_back(all.candidates.size());
        all.candidates.push_back(std::move(candidate));
    }
    return styleLevels(all, headings, BodyStyle());
}

/// The level of a title without number, below chapters of 20 points, among others of its size.
int levelAmong(const std::vector<Title> &others, double size = 14) {
    std::vector<Title> titles{{"Chapter 1 Alpha", 20}, {"Chapter 2 Beta", 20}};
    titles.insert(titles.end(), others.begin(), others.end());
    titles.push_back({"Title", size});
    return levelsOf(titles).back();
}

TEST(StyleLevels, CapitalsMakeALevelOfSmallTextOnly) {
    EXPECT_EQ(levelsOf({{"ALPHA", 11}, {"Beta", 11}}), (std::vector<int>{1, 2}));
    EXPECT_EQ(levelsOf({{"ALPHA", 12}, {"Beta", 12}}), (std::vector<int>{1, 1}));
}

TEST(StyleLevels, NumbersTellThatOfTheirSizeIfEnoughHaveOne) {
    EXPECT_EQ(levelAmong({{"1.1.1 Gamma"}, {"Delta"}}), 3) << "a third";
    EXPECT_EQ(levelAmong({{"1.1.1 Gamma"}, {"Delta"}, {"Epsilon"}}), 2);
}

TEST(StyleLevels, AndIfTheyAgree) {
    EXPECT_EQ(levelAmong({{"1.1.1 A"}, {"1.1.2 B"}, {"1.1.3 C"}, {"1.1.3.1 D"}}), 3);
    EXPECT_EQ(levelAmong({{"1.1.1 A"}, {"1.1.2 B"}, {"1.1.2.1 D"}}), 2);
}

TEST(StyleLevels, SizesNearlyThoseOfNumberedTitlesAreOfTheirLevel) {
    const std::vector<Title> numbered{{"1.1 A"}, {"1.2 B"}, {"2.1 C"}};
    EXPECT_EQ(levelAmong(numbered, 13.5), 2);
    EXPECT_EQ(levelAmong(numbered, 13), 3);
}

TEST(NamedHeadings, KindsHaveTheirDepths) {
    MadePages pages;
    const QStringList kinds{"chapter", "section", "subsection", "subsubsection", "paragraph", "subparagraph"};
    for (int i = 0; i < kinds.size(); ++i) {
        pages.page().paragraph(80, 5).text(60, 200, QString("Title %1").arg(QChar(u'a' + i)), boldLook(14));
        pages.paragraph(240, 20);
        pages.document.namedPlaces.push_back({kinds[i] + ".1.1", i, QPointF(60, 184)});
    }
    std::vector<PageLines> lines = readAllLines(pages, {}, [](int) {});
    const BodyStyle body = findBodyStyle(lines);
    const HeadingCandidates headings = findHeadingCandidates(makeBlocks(lines, body), lines, body);
    const auto named = findNamedHeadings(pages.document.namedPlaces, lines, headings, body);
    ASSERT_EQ(named.size(), kinds.size());
    for (int i = 0; i < kinds.size(); ++i)
        EXPECT_EQ(named[i].depth, i + 1) << kinds[i].toStdString();
}

/// The line that a place at the given height of the first page points at.
LineRef pointedAt(const MadePages &pages, double y) {
    std::vector<PageLines> lines = readAllLines(pages, {}, [](int) {});
    const BodyStyle body = findBodyStyle(lines);
    return headingAt({{}, 0, QPointF(60, y)}, lines, body);
}

TEST(NamedHeadings, ALargerLineJustBelowTheFirstIsMeant) {
    const auto line = [](double gap) {
        MadePages pages =
            MadePages().page().text(60, 100, "Small").text(60, 100 + gap, "Large", boldLook(14));
        return pointedAt(pages.paragraph(300, 20), 95).line;
    };
    EXPECT_EQ(line(17), 1);
    EXPECT_EQ(line(19), 0);
}

TEST(NamedHeadings, BelowTheLastLineTheTopOfTheNextPageIsMeant) {
    const auto isFound = [](double y) {
        MadePages pages = MadePages().page().paragraph(300, 20);
        return pointedAt(pages.page().text(60, y, "Title").paragraph(300, 20), 700) == LineRef{1, 0};
    };
    EXPECT_TRUE(isFound(130));
    EXPECT_FALSE(isFound(140));
}

}  // namespace
}  // namespace leafwright
