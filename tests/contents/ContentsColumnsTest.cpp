#include "contents/ContentsRows.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::MadePages;

std::optional<double> gutterOf(const MadePages &pages) {
    return contentsGutter(readLines(pages.pageEvidence(0), 0));
}

/// What two columns of a contents differ in: four rows on the left and on the right, 600 points wide.
struct Columns {
    QStringList titles{"Alpha", "Beta", "Gamma", "Delta"};
    std::vector<double> numberEnds{279, 279, 279, 279};
    std::vector<double> rightLefts{320, 320, 320, 320};
    QString rightText = "Right title";
};

/// A page of columns and of other rows, which have one text each from one x.
MadePages pageOf(const Columns &columns, int others = 0, double x = 320,
                 const QString &text = "Right title") {
    MadePages pages;
    pages.page();
    double y = 100;
    for (size_t i = 0; i < columns.numberEnds.size(); ++i, y += 12) {
        pages.text(60, y, columns.titles[static_cast<qsizetype>(i)]);
        pages.textUpTo(columns.numberEnds[i], y, QString::number(i + 1));
        if (i < columns.rightLefts.size()) pages.text(columns.rightLefts[i], y, columns.rightText);
    }
    for (int i = 0; i < others; ++i, y += 12)
        pages.text(x, y, text);
    return pages;
}

bool isParted(const MadePages &pages) {
    return gutterOf(pages).has_value();
}

bool isParted(const Columns &columns) {
    return isParted(pageOf(columns));
}

TEST(ContentsColumns, ArePartedBehindTheNumbersOfFourRows) {
    EXPECT_EQ(gutterOf(pageOf({})), 283);
    Columns three;
    three.numberEnds.pop_back();
    EXPECT_FALSE(isParted(three));
    Columns right;
    right.rightLefts.pop_back();
    EXPECT_FALSE(isParted(right)) << "three rows there are too few, too";
}

TEST(ContentsColumns, NumbersEndAtOnePlaceNearly) {
    Columns columns;
    columns.numberEnds = {279, 279, 283, 283};
    EXPECT_TRUE(isParted(columns));
    columns.numberEnds = {279, 279, 288, 288};
    EXPECT_FALSE(isParted(columns));
    columns.numberEnds = {276, 279, 279, 283.4};
    EXPECT_TRUE(isParted(columns));
}

TEST(ContentsColumns, NumbersInThePageAreNotAtItsEdges) {
    Columns columns;
    columns.numberEnds = {175, 175, 175, 175};
    EXPECT_TRUE(isParted(columns));
    columns.numberEnds = {160, 160, 160, 160};
    EXPECT_FALSE(isParted(columns)) << "less than 28 hundredths of the width";
}

TEST(ContentsColumns, TitlesOnTheLeftHaveLetters) {
    Columns columns;
    columns.titles = {"abc", "def", "ghi", "jkl"};
    EXPECT_TRUE(isParted(columns));
    columns.titles = {"ab", "de", "gh", "jk"};
    EXPECT_FALSE(isParted(columns)) << "as section numbers may have";
}

TEST(ContentsColumns, TitlesThatEndWithTheirNumberAreLeftOfTheEdge) {
    const auto isPartedAt = [](double end) {
        Columns columns;
        columns.numberEnds = {276, 279, 279};
        MadePages pages = pageOf(columns).textUpTo(end, 200, "Delta 4").text(320, 200, "Right title");
        return isParted(pages);
    };
    EXPECT_TRUE(isPartedAt(282.9));
    EXPECT_FALSE(isPartedAt(283.4));
}

TEST(ContentsColumns, ManyRowsHaveTextOnTheLeft) {
    EXPECT_TRUE(isParted(pageOf({}, 6)));
    EXPECT_FALSE(isParted(pageOf({}, 8))) << "less than 35 of a hundred";
}

TEST(ContentsColumns, FewRowsGoAcross) {
    const auto isPartedBeside = [](int across, int others) {
        Columns columns;
        columns.titles += {"Epsilon", "Zeta", "Eta"};
        columns.numberEnds.resize(7, 279);
        columns.rightLefts.resize(7, 320);
        MadePages pages = pageOf(columns, across, 60, QString(60, u'w'));
        for (int i = 0; i < others; ++i)
            pages.text(320, 400 + 12 * i, "Right title");
        return isParted(pages);
    };
    EXPECT_TRUE(isPartedBeside(1, 2));
    EXPECT_FALSE(isPartedBeside(2, 5)) << "more than one of eight";
}

TEST(ContentsColumns, AcrossIsWhatReachesFarIntoBoth) {
    EXPECT_FALSE(isParted(pageOf({}, 3, 60, QString(47, u'w')))) << "to 295";
    EXPECT_TRUE(isParted(pageOf({}, 3, 60, QString(46, u'w')))) << "to 290";
    EXPECT_FALSE(isParted(pageOf({}, 3, 268, "words")));
    EXPECT_TRUE(isParted(pageOf({}, 3, 270, "words")));
}

TEST(ContentsColumns, TextOnTheRightIsMoreThanANumber) {
    Columns columns;
    columns.rightText = "abcd";
    EXPECT_TRUE(isParted(columns));
    columns.rightText = "abc";
    EXPECT_FALSE(isParted(columns));
}

TEST(ContentsColumns, TextOnTheRightBeginsBehindTheNumbers) {
    Columns columns;
    columns.rightLefts = {282.5, 282.5, 282.5, 282.5};
    EXPECT_TRUE(isParted(columns));
    columns.rightLefts = {281.5, 281.5, 281.5, 281.5};
    EXPECT_FALSE(isParted(columns));
}

TEST(ContentsColumns, ThreeRowsOnTheRightBeginAtOnePlace) {
    Columns columns;
    columns.rightLefts = {320, 320, 320, 350};
    EXPECT_TRUE(isParted(columns));
    columns.rightLefts = {320, 320, 350, 380};
    EXPECT_FALSE(isParted(columns));
    columns.rightLefts = {318, 319.4, 318, 319.4};
    EXPECT_TRUE(isParted(columns)) << "nearly";
}

bool areEntries(const std::vector<ContentsRow> &rows) {
    return rows.front().isEntry;
}

std::vector<ContentsRow> rowsOf(const MadePages &pages) {
    return contentsRows(readLines(pages.pageEvidence(0), 0), 0, true);
}

/// Whether rows whose numbers end at 540 are entries: so many, with a gap before each number. They are too
/// few of the page's rows to be page numbers by that.
bool areEntriesBehindGap(int count, double gap, const QString &title = "Alpha") {
    MadePages pages;
    pages.page();
    for (int i = 0; i < count; ++i) {
        const double y = 100 + 12 * i;
        pages.textUpTo(535 - gap, y, title).textUpTo(540, y, QString::number(i + 1));
    }
    return areEntries(rowsOf(pages.paragraph(300, 20)));
}

TEST(ContentsRows, AlignedNumbersStandBehindAWideGapUnlessTheyAreMany) {
    EXPECT_TRUE(areEntriesBehindGap(3, 12));
    EXPECT_FALSE(areEntriesBehindGap(3, 10));
    EXPECT_FALSE(areEntriesBehindGap(2, 12));
    EXPECT_TRUE(areEntriesBehindGap(5, 3));
    EXPECT_FALSE(areEntriesBehindGap(4, 3));
    EXPECT_TRUE(areEntriesBehindGap(5, 0.25, "Alpha "));
    EXPECT_FALSE(areEntriesBehindGap(5, 0.15, "Alpha "));
}

TEST(ContentsRows, ThreeBlanksAreAWideGap) {
    const auto areEntriesOf = [](double size) {
        MadePages pages;
        pages.page();
        for (int i = 0; i < 3; ++i)
            pages.textUpTo(540, 100 + 40 * i, QString("Alpha   %1").arg(i + 1), {size});
        return areEntries(rowsOf(pages.paragraph(300, 20)));
    };
    EXPECT_TRUE(areEntriesOf(20));
    EXPECT_FALSE(areEntriesOf(30));
}

TEST(ContentsRows, ALinkReachesTheNumber) {
    const auto isEntry = [](double end) {
        MadePages pages;
        pages.page().textUpTo(530, 100, "Alpha").textUpTo(540, 100, "7").link(400, end, 100, 5, 90);
        return areEntries(rowsOf(pages.paragraph(300, 20)));
    };
    EXPECT_TRUE(isEntry(536.5));
    EXPECT_FALSE(isEntry(535.5));
}

TEST(ContentsRows, LinksLieOnTheirRow) {
    const auto linksOn = [](double left) {
        MadePages pages;
        pages.page().text(60, 100, QString(40, u'w')).link(left, left + 100, 100, 5, 90);  // to 260
        return rowsOf(pages).front().links.size();
    };
    EXPECT_EQ(linksOn(225), 1U);
    EXPECT_EQ(linksOn(235), 0U) << "less than three tenths of it";
}

TEST(ContentsRows, NearlyAllRowsEndInANumberWhereThatIsEnough) {
    const auto areEntriesBeside = [](int others) {
        MadePages pages;
        pages.page();
        for (int i = 0; i < 7; ++i)
            pages.text(60, 100 + 12 * i, QString("Title %1 %2").arg(QString(i, u'a')).arg(i + 1));
        for (int i = 0; i < others; ++i)
            pages.text(60, 300 + 12 * i, "Another row");
        return areEntries(rowsOf(pages));
    };
    EXPECT_TRUE(areEntriesBeside(2));
    EXPECT_FALSE(areEntriesBeside(4));
}

}  // namespace
}  // namespace leafwright
