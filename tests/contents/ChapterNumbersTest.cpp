#include "contents/ChapterNumbers.h"
#include "contents/FindContents.h"
#include "support/MadePages.h"
#include "support/PrintedEntries.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;
using test::printedEntry;

/// The offsets by chapter of entries "title number", of which titles stand on pages as said; "-" for none.
QString offsetsOf(const QStringList &rows, const PagesOfForms &pages,
                  const PrintedNumbers &numbers = {{}, {}}) {
    std::vector<PrintedEntry> entries;
    for (const QString &row : rows)
        entries.push_back(printedEntry(row.section(u' ', 0, 0), row.section(u' ', 1)));
    std::vector<PrintedEntry *> pointers;
    for (PrintedEntry &entry : entries)
        pointers.push_back(&entry);
    QStringList offsets;
    for (const std::optional<int> &offset : offsetsByChapter(pointers, numbers, pages))
        offsets += offset ? QString::number(*offset) : QStringLiteral("-");
    return offsets.join(u' ');
}

bool doBeginAgain(const QStringList &numbers) {
    std::vector<PrintedEntry> entries;
    for (const QString &number : numbers)
        entries.push_back(printedEntry("Title", number));
    std::vector<PrintedEntry *> pointers;
    for (PrintedEntry &entry : entries)
        pointers.push_back(&entry);
    return beginAgain(pointers);
}

TEST(ChapterNumbers, BeginAgainWithOneOfTheFirst) {
    EXPECT_TRUE(doBeginAgain({"1", "5", "1"}));
    EXPECT_TRUE(doBeginAgain({"1", "5", "3"}));
    EXPECT_FALSE(doBeginAgain({"1", "5", "4"})) << "a number that was misread";
    EXPECT_FALSE(doBeginAgain({"1", "1", "3", "3"}));
    EXPECT_FALSE(doBeginAgain({"5", "ii", "6"}));
    EXPECT_TRUE(doBeginAgain({"5", "ii", "2"}));
}

TEST(ChapterNumbers, EachChapterLiesWhereItsTitlesAre) {
    EXPECT_EQ(offsetsOf({"soil 1", "sand 4", "water 1", "rain 3"},
                        {{"soil", {3}}, {"sand", {6}}, {"water", {9}}, {"rain", {11}}}),
              "2 2 8 8");
    EXPECT_EQ(offsetsOf({"soil 1", "sand 4", "water 1", "rain 3"},
                        {{"soil", {3}}, {"sand", {6, 11}}, {"water", {1, 9}}, {"rain", {11, 20}}}),
              "2 2 8 8")
        << "titles on other pages too";
}

TEST(ChapterNumbers, ChaptersAreInTheOrderOfTheContents) {
    // Each chapter has an introduction on its first page and exercises on its fourth.
    const PagesOfForms pages = {{"introduction", {2, 8, 14}}, {"exercises", {5, 11, 17}}};
    EXPECT_EQ(offsetsOf({"introduction 1", "exercises 4", "introduction 1", "exercises 4", "introduction 1",
                         "exercises 4"},
                        pages),
              "1 1 7 7 13 13");
}

TEST(ChapterNumbers, AChapterThatIsFoundNowhereIsLeftOut) {
    EXPECT_EQ(offsetsOf({"soil 1", "sand 4", "water 1", "snow 3", "rain 1", "hail 2"},
                        {{"soil", {3}}, {"sand", {6}}, {"rain", {20}}, {"hail", {21}}}),
              "2 2 - - 19 19");
}

/// The numbers 1, 2, ... at the foot of pages, of which the first is given.
PrintedNumbers numbersFrom(int firstPage, int count) {
    MadePages pages;
    for (int page = 0; page < firstPage + count; ++page) {
        pages.page().paragraph(400, 10);
        if (page >= firstPage) pages.text(300, 780, QString::number(page - firstPage + 1));
    }
    return {readAllLines(pages, {}, [](int) {}), {}};
}

TEST(ChapterNumbers, TenNumbersOnTheirPagesOutweighATitle) {
    // The first chapter and the first title of the second are found; its numbers stand on later pages.
    const auto isTitleTrusted = [](int rowsOfSecond) {
        const PrintedNumbers numbers = numbersFrom(40, 12);
        QStringList rows;
        PagesOfForms pages;
        for (int i = 1; i <= 12; ++i) {
            const QString title = "soil" + QString(i, u'a');
            rows += title + u' ' + QString::number(i);
            pages[title] = {i};
        }
        for (int i = 1; i <= rowsOfSecond; ++i)
            rows += "rain" + QString(i, u'b') + u' ' + QString::number(i);
        pages["rainb"] = {21};
        return offsetsOf(rows, pages, numbers).endsWith(" 20");
    };
    EXPECT_TRUE(isTitleTrusted(9));
    EXPECT_FALSE(isTitleTrusted(11));
}

TEST(ChapterNumbers, OtherNumbersAreOfNoChapter) {
    EXPECT_EQ(offsetsOf({"preface iv", "soil 1", "sand 4", "water 1", "rain 3"},
                        {{"soil", {3}}, {"sand", {6}}, {"water", {9}}, {"rain", {11}}}),
              "- 2 2 8 8");
}

TEST(ChapterNumbers, PagesThatAreCountedThroughAreNotCountedAnew) {
    EXPECT_EQ(offsetsOf({"soil 1", "sand 4", "water 2", "rain 6"},
                        {{"soil", {3}}, {"sand", {6}}, {"water", {4}}, {"rain", {8}}}),
              "")
        << "the third is out of order";
    EXPECT_EQ(offsetsOf({"soil 1", "sand 4", "water 1", "rain 3"}, {{"soil", {3}}}), "")
        << "a quarter is not enough to tell";
    EXPECT_EQ(offsetsOf({}, {}), "");
}

/// A book whose pages are counted anew in each chapter. All chapters have sections of the same titles, so
/// that these alone don't tell where they are.
class CountedByChapter {
public:
    /// @param sections the page numbers of those of each chapter, whose last page is the last of these
    explicit CountedByChapter(const std::vector<std::vector<int>> &sections, bool isNumbered = true) {
        pages_.page().text(60, 60, "Contents", boldLook(18));
        double y = 84;
        for (size_t chapter = 0; chapter < sections.size(); ++chapter, y += 14) {
            pages_.contentsRow(60, y, titleOf(chapter), "1");
            for (size_t k = 0; k < sections[chapter].size(); ++k) {
                y += 14;
                pages_.contentsRow(80, y, sectionTitles[k], QString::number(sections[chapter][k]));
            }
        }
        for (size_t chapter = 0; chapter < sections.size(); ++chapter) {
            for (int number = 1; number <= sections[chapter].back(); ++number)
                addPage(chapter, number, sections[chapter], isNumbered);
        }
    }
    QStringList found() const {
        QStringList lines;
        for (const ContentsEntry &entry : findContents(pages_, {}).entries)
            lines += QString("%1 %2 @%3").arg(entry.level).arg(entry.title).arg(entry.pageIndex);
        return lines;
    }
    std::string explanation() const { return analyseContents(pages_)->explanation().toStdString(); }
    const QStringList &expected() const { return expected_; }

private:
    static QString titleOf(size_t chapter) {
        return QString("About the letter %1").arg(QString(5, QChar(u'a' + static_cast<int>(chapter))));
    }
    void addPage(size_t chapter, int number, const std::vector<int> &sections, bool isNumbered) {
        const int index = pages_.pageCount();
        pages_.page().paragraph(400, 20);
        if (number == 1) addHeading(100, 1, titleOf(chapter), 18, index);
        for (size_t k = 0; k < sections.size(); ++k) {
            if (sections[k] == number) addHeading(250, 2, sectionTitles[k], 14, index);
        }
        if (isNumbered) pages_.text(300, 780, QString::number(number));
    }
    void addHeading(double y, int level, const QString &title, double size, int index) {
        pages_.text(60, y, title, boldLook(size)).paragraph(y + 24, 6);
        expected_ += QString("%1 %2 @%3").arg(level).arg(title).arg(index);
    }

    const QStringList sectionTitles = {"Introduction", "Exercises", "Further reading"};
    MadePages pages_;
    QStringList expected_;
};

TEST(ChapterNumbers, SectionsOfOneTitleLieInTheirChapters) {
    const CountedByChapter book({{2, 7, 9}, {3, 6, 8}, {2, 4, 7}, {1, 5, 6}});
    EXPECT_EQ(book.expected().size(), 16);
    EXPECT_EQ(book.found(), book.expected());
    EXPECT_THAT(book.explanation(), testing::HasSubstr("  Page numbers: counted anew in each chapter\n"));
}

TEST(ChapterNumbers, NeedNotBePrintedOnThePages) {
    const CountedByChapter book({{2, 7, 9}, {3, 6, 8}, {2, 4, 7}, {1, 5, 6}}, false);
    EXPECT_EQ(book.found(), book.expected());
}

TEST(ChapterNumbers, MayBeginAgainEveryOtherRow) {
    const CountedByChapter book({{4}, {5}, {4}, {6}, {5}});
    EXPECT_EQ(book.expected().size(), 10);
    EXPECT_EQ(book.found(), book.expected());
}

}  // namespace
}  // namespace leafwright
