#include "contents/ContentsLevels.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

struct Row {
    QString title;
    double left = 60;
    double size = 10;
    bool bold = false;
    int page = 0;
    double right = 540;
};

PrintedEntry entryOf(const Row &row) {
    TextLine line;
    line.text = row.title;
    line.left = row.left;
    line.right = row.right;
    line.look.size = row.size;
    line.look.bold = row.bold;
    PrintedEntry entry;
    entry.title = row.title;
    entry.number = QStringLiteral("1");
    entry.numbering = numberingOf(row.title);
    entry.contentsPage = row.page;
    entry.rows = {line};
    return entry;
}

std::vector<int> levelsOf(const std::vector<Row> &rows, double bodySize = 10) {
    std::vector<PrintedEntry> entries;
    for (const Row &row : rows)
        entries.push_back(entryOf(row));
    BodyStyle body;
    body.size = bodySize;
    assignPrintedLevels(entries, body);
    std::vector<int> levels;
    for (const PrintedEntry &entry : entries)
        levels.push_back(entry.level);
    return levels;
}

/// The level of rows without numbers at an indent, among others that are at another.
int levelAt(double left, double bodySize) {
    return levelsOf({{"Alpha"}, {"Beta", left}, {"Gamma"}, {"Delta", left}, {"Epsilon"}}, bodySize)[1];
}

TEST(PrintedLevels, IndentsOfOneLevelDifferLittle) {
    EXPECT_EQ(levelAt(62.4, 10), 1) << "a quarter of the body's size";
    EXPECT_EQ(levelAt(62.6, 10), 2);
    EXPECT_EQ(levelAt(61.9, 4), 1) << "two points at least";
    EXPECT_EQ(levelAt(62.1, 4), 2);
}

/// So many rows at an indent.
std::vector<Row> rowsAt(double left, int count) {
    return std::vector<Row>(static_cast<size_t>(count), {"Title", left});
}

std::vector<Row> joined(const std::vector<std::vector<Row>> &groups) {
    std::vector<Row> all;
    for (const std::vector<Row> &group : groups)
        all.insert(all.end(), group.begin(), group.end());
    return all;
}

TEST(PrintedLevels, AFewRowsOfManyAreNoLevel) {
    EXPECT_EQ(levelsOf(joined({rowsAt(60, 100), rowsAt(75, 46), rowsAt(90, 3)})).back(), 3);
    EXPECT_EQ(levelsOf(joined({rowsAt(60, 100), rowsAt(75, 46), rowsAt(90, 2)})).back(), 2)
        << "less than one of fifty";
}

TEST(PrintedLevels, ManyIndentsMeanNothing) {
    const auto deepest = [](int indents) {
        std::vector<std::vector<Row>> groups;
        for (int i = 0; i < indents; ++i)
            groups.push_back(rowsAt(60 + 10 * i, 2));
        return levelsOf(joined(groups)).back();
    };
    EXPECT_EQ(deepest(5), 5);
    EXPECT_EQ(deepest(6), 1);
}

TEST(PrintedLevels, ManyLooksMeanNothing) {
    const auto deepest = [](int looks) {
        std::vector<Row> rows;
        for (int i = 0; i < looks; ++i)
            rows.insert(rows.end(), 2, {"Title", 60, 20.0 - 2 * i});
        return levelsOf(rows).back();
    };
    EXPECT_EQ(deepest(4), 4);
    EXPECT_EQ(deepest(5), 1);
}

/// The level of the rows on a second page that stands 20 points further right, and has no chapter. So many of
/// ten numbers there end at one place.
int levelOnShiftedPage(int aligned) {
    std::vector<Row> rows{{"Alpha"}, {"Beta", 75}, {"Gamma"}, {"Delta", 75}, {"Epsilon", 75}};
    for (int i = 0; i < 10; ++i)
        rows.push_back({"Title", 95, 10, false, 1, i < aligned ? 560.0 : 400.0 + 10 * i});
    return levelsOf(rows).back();
}

TEST(PrintedLevels, PagesAreComparedByTheirNumbers) {
    EXPECT_EQ(levelOnShiftedPage(7), 2);
    EXPECT_EQ(levelOnShiftedPage(5), 1) << "by their leftmost rows, where too few numbers are aligned";
}

TEST(PrintedLevels, RomanNumbersWithManyEntriesEachAreParts) {
    const auto levelBelow = [](size_t entries) {
        std::vector<Row> rows{{"I Alpha"}};
        rows.insert(rows.end(), entries - 2, {"Title"});
        rows.push_back({"II Beta"});
        return levelsOf(rows)[1];
    };
    EXPECT_EQ(levelBelow(9), 2);
    EXPECT_EQ(levelBelow(8), 1);
}

/// The level of a row without number, among chapters at 60 and sections at 75.
int levelAmongNumbers(const Row &row, const Row &chapter, const Row &section) {
    std::vector<Row> rows;
    for (const QString number : {"1", "2"}) {
        rows.push_back(chapter);
        rows.back().title = number + " Chapter";
        for (const QString part : {".1", ".2"}) {
            rows.push_back(section);
            rows.back().title = number + part + " Section";
        }
    }
    rows.push_back(row);
    return levelsOf(rows).back();
}

TEST(PrintedLevels, RowsWithoutNumberAreThoseOfTheNearestIndentAndLook) {
    const Row boldChapter{"", 60, 10, true};
    const Row section{"", 75};
    // Another weight is worth four points of indent.
    EXPECT_EQ(levelAmongNumbers({"Index", 69, 10, true}, boldChapter, section), 1);
    EXPECT_EQ(levelAmongNumbers({"Index", 70, 10, true}, boldChapter, section), 2);
    // A point of size is worth three.
    const Row largeChapter{"", 60, 13};
    EXPECT_EQ(levelAmongNumbers({"Index", 71, 13}, largeChapter, section), 1);
    EXPECT_EQ(levelAmongNumbers({"Index", 72.5, 13}, largeChapter, section), 2);
}

TEST(PrintedLevels, RowsRightOfTheDeepestAreDeeper) {
    EXPECT_EQ(levelAmongNumbers({"Detail", 80}, {}, {"", 75}), 2);
    EXPECT_EQ(levelAmongNumbers({"Detail", 81}, {}, {"", 75}), 3);
}

TEST(PrintedLevels, ALoneNumberBelowSectionsIsThatOfAnItem) {
    const auto levelOfItem = [](double left) {
        return levelsOf({{"1 A"},
                         {"1.1 B", 75},
                         {"1.1.1 C", 90, 10, true},
                         {"2 D"},
                         {"2.1 E", 75},
                         {"2.1.1 F", 90, 10, true},
                         {"3 Item", left}})
            .back();
    };
    // Another look is worth three points of indent.
    EXPECT_EQ(levelOfItem(83.6), 2);
    EXPECT_EQ(levelOfItem(84.4), 3);
}

}  // namespace
}  // namespace leafwright
