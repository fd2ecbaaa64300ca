#include "contents/FindContents.h"
#include "contents/SizeClasses.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::MadePages;
using test::TextLook;

/// The sizes of lines of a recognised page, once they are settled.
std::vector<double> settled(const std::vector<std::pair<double, int>> &sizesAndLetters,
                            bool recognised = true) {
    MadePages pages;
    pages.page(2000, 2000);
    if (recognised) pages.recognised();
    double y = 0;
    for (const auto &[size, letters] : sizesAndLetters)
        pages.text(60, y += 40, QString(letters, u'a'), TextLook{size});
    std::vector<PageLines> lines{readLines(pages.pageEvidence(0), 0)};
    settleRecognisedSizes(lines);
    std::vector<double> sizes;
    for (const TextLine &line : lines[0].lines)
        sizes.push_back(line.look.size);
    return sizes;
}

TEST(SizeClasses, SizesThatVaryByAPointAreOne) {
    EXPECT_EQ(settled({{9.5, 20}, {10, 60}, {10.4, 30}, {11, 10}, {9.1, 10}}), std::vector<double>(5, 10));
    EXPECT_EQ(settled({{17, 10}, {18, 10}, {19, 10}}), std::vector<double>(3, 18)) << "the one in the middle";
    EXPECT_EQ(settled({{32, 10}, {30, 30}, {28, 10}}), std::vector<double>(3, 30)) << "large ones vary more";
    EXPECT_EQ(settled({{33, 10}, {30, 30}}), std::vector<double>(2, 30)) << "by a tenth";
}

TEST(SizeClasses, SizesTwoPointsApartStayApart) {
    EXPECT_EQ(settled({{10, 90}, {12, 20}, {14, 10}}), (std::vector<double>{10, 12, 14}));
    EXPECT_EQ(settled({{10, 90}, {11.5, 20}}), (std::vector<double>{10, 11.5}));
    EXPECT_EQ(settled({{30, 90}, {33.5, 20}}), (std::vector<double>{30, 33.5}));
}

TEST(SizeClasses, PagesThatWereNotRecognisedStayAsTheyAre) {
    EXPECT_EQ(settled({{10, 60}, {10.5, 30}, {11, 10}}, false), (std::vector<double>{10, 10.5, 11}));
}

/// Chapters with two sections each, whose sizes vary by a point up and down.
MadePages scannedBook(bool recognised) {
    const auto varied = [](double size, int index) { return TextLook{size + 0.5 * ((index * 2) % 5 - 2)}; };
    MadePages pages;
    int line = 0;
    const auto paragraph = [&](double y) {
        for (int i = 0; i < 8; ++i, ++line)
            pages.text(60, y + 12 * i, QString("plain words of the running text, in row %1 of all").arg(line),
                       varied(10, line % 3 == 0 ? line : 1));
    };
    for (int i = 1; i <= 8; ++i) {
        pages.page();
        if (recognised) pages.recognised();
        const QChar letter(u'a' + i);
        pages.text(60, 80, QString("Chapter about %1").arg(letter), varied(20, i));
        paragraph(104);
        pages.text(60, 250, QString("First of the %1").arg(letter), varied(15, i + 1));
        paragraph(274);
        pages.text(60, 420, QString("Second of the %1").arg(letter), varied(15, i + 3));
        paragraph(444);
    }
    return pages;
}

TEST(SizeClasses, HeadingsOfAScanAreOfFewStyles) {
    const FoundContents found = findContents(scannedBook(true), {});
    EXPECT_EQ(found.entries.size(), 24U);
    ASSERT_EQ(found.styles.size(), 2U);
    EXPECT_EQ(found.styles[0].count, 8);
    EXPECT_EQ(found.styles[1].count, 16);
    for (const ContentsEntry &entry : found.entries)
        EXPECT_EQ(entry.level, entry.title.startsWith("Chapter") ? 1 : 2) << entry.title.toStdString();
    EXPECT_GT(findContents(scannedBook(false), {}).styles.size(), 2U) << "where sizes mean what they are";
}

}  // namespace
}  // namespace leafwright
