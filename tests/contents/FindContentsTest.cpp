#include "contents/FindContents.h"
#include "support/MadePages.h"

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <stop_token>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;

/// "level title @page", a line an entry; pages from 1.
QStringList outlineOf(const FoundContents &found) {
    QStringList lines;
    for (const ContentsEntry &entry : found.entries)
        lines += QStringLiteral("%1 %2 @%3").arg(entry.level).arg(entry.title).arg(entry.pageIndex + 1);
    return lines;
}

QStringList outlineOf(const ContentsPages &pages, const ContentsOptions &options = {}) {
    return outlineOf(findContents(pages, options));
}

/// Chapters with two sections each: a page a chapter, numbered headings, page numbers at the bottom.
void addChapters(MadePages &pages, int count) {
    for (int i = 1; i <= count; ++i) {
        pages.page().text(60, 100, QString("%1 Chapter of kind %2").arg(i).arg(QChar(u'a' + i)),
                          boldLook(18));
        pages.paragraph(130, 12);
        pages.text(60, 300, QString("%1.1 First part of %2").arg(i).arg(QChar(u'a' + i)), boldLook(13));
        pages.paragraph(324, 12);
        pages.text(60, 500, QString("%1.2 Second part of %2").arg(i).arg(QChar(u'a' + i)), boldLook(13));
        pages.paragraph(524, 12);
        pages.text(300, 770, QString::number(i));
    }
}

QStringList chaptersOutline(int count, int pagesBefore) {
    QStringList lines;
    for (int i = 1; i <= count; ++i) {
        const QString at = QString(" @%1").arg(i + pagesBefore);
        const QChar letter(u'a' + i);
        lines += QString("1 %1 Chapter of kind %2").arg(i).arg(letter) + at;
        lines += QString("2 %1.1 First part of %2").arg(i).arg(letter) + at;
        lines += QString("2 %1.2 Second part of %2").arg(i).arg(letter) + at;
    }
    return lines;
}

/// A page of contents for addChapters(), with dots or aligned numbers.
void addContents(MadePages &pages, int count, bool dots) {
    pages.page().text(60, 80, "Contents", boldLook(18));
    double y = 110;
    for (int i = 1; i <= count; ++i) {
        const QChar letter(u'a' + i);
        const QString number = QString::number(i);
        pages.contentsRow(60, y, QString("%1 Chapter of kind %2").arg(i).arg(letter), number, dots);
        pages.contentsRow(75, y + 14, QString("%1.1 First part of %2").arg(i).arg(letter), number, dots);
        pages.contentsRow(75, y + 28, QString("%1.2 Second part of %2").arg(i).arg(letter), number, dots);
        y += 42;
    }
}

TEST(FindContents, HeadingsByTheirStyle) {
    MadePages pages;
    addChapters(pages, 6);
    EXPECT_EQ(outlineOf(pages), chaptersOutline(6, 0));
}

TEST(FindContents, PrintedContentsWithDots) {
    MadePages pages;
    addContents(pages, 6, true);
    addChapters(pages, 6);
    EXPECT_EQ(outlineOf(pages), chaptersOutline(6, 1));
}

TEST(FindContents, PrintedContentsWithoutDots) {
    MadePages pages;
    addContents(pages, 6, false);
    addChapters(pages, 6);
    EXPECT_EQ(outlineOf(pages), chaptersOutline(6, 1));
}

constexpr int pagesOfChapter = 3;

/// The title of a chapter's page: its own, or that of a section, which are counted from 1 in each.
QString titleCountedAnew(int chapter, int page) {
    const QChar letter(u'a' + chapter);
    return page == 1
               ? QString("About %1").arg(QString(6, letter))
               : QString("%1 %2 of %3").arg(page - 1).arg(page == 2 ? "Rules" : "Cases", QString(5, letter));
}

/// Four chapters of such pages. @param anew whether the pages are counted from 1 in each, too
QStringList addChaptersCountedAnew(MadePages &pages, bool anew) {
    QStringList outline;
    for (int chapter = 0; chapter < 4; ++chapter) {
        for (int page = 1; page <= pagesOfChapter; ++page) {
            const QString title = titleCountedAnew(chapter, page);
            pages.page().text(60, 100, title, boldLook(page == 1 ? 18 : 13)).paragraph(130, 30);
            pages.text(300, 770, QString::number(anew ? page : pagesOfChapter * chapter + page));
            outline += QString("%1 %2 @%3").arg(page == 1 ? 1 : 2).arg(title).arg(pages.pageCount());
        }
    }
    return outline;
}

TEST(FindContents, SectionsCountedAnewInEachChapter) {
    MadePages pages;
    pages.page().text(60, 80, "Contents", boldLook(18));
    for (int i = 0; i < 4 * pagesOfChapter; ++i) {
        const int page = i % pagesOfChapter + 1;
        pages.contentsRow(page == 1 ? 60 : 75, 110 + 14 * i, titleCountedAnew(i / pagesOfChapter, page),
                          QString::number(i + 1));
    }
    const QStringList outline = addChaptersCountedAnew(pages, false);
    EXPECT_EQ(outlineOf(pages), outline);
}

TEST(FindContents, PagesCountedAnewInEachChapter) {
    MadePages pages;
    const QStringList outline = addChaptersCountedAnew(pages, true);
    EXPECT_EQ(outlineOf(pages), outline);
}

TEST(FindContents, EntriesTellWhatSpeaksForThem) {
    MadePages pages;
    addContents(pages, 6, true);
    addChapters(pages, 6);
    const ContentsEntry entry = findContents(pages, {}).entries.at(1);
    EXPECT_EQ(entry.sources, PrintedSource | StyleSource);
    EXPECT_GT(entry.confidence, 0.9);
    EXPECT_EQ(entry.box.toAlignedRect(), QRectF(60, 300 - 0.8 * 13, 0.5 * 13 * 19, 13).toAlignedRect());
    EXPECT_EQ(entry.point.x(), 60);
    EXPECT_NEAR(entry.point.y(), 800 - (300 - 0.8 * 13), 1e-6);
}

TEST(FindContents, NothingInPlainText) {
    MadePages pages;
    for (int i = 0; i < 5; ++i)
        pages.page().paragraph(80, 50);
    const FoundContents found = findContents(pages, {});
    EXPECT_TRUE(found.hasText);
    EXPECT_TRUE(found.entries.empty());
}

TEST(FindContents, PagesWithoutTextSaySo) {
    MadePages pages;
    for (int i = 0; i < 5; ++i)
        pages.page().text(60, 100, "Scanned by a machine");
    EXPECT_FALSE(findContents(pages, {}).hasText);
}

TEST(FindContents, FiftyLettersAPageAreEnoughText) {
    const auto hasText = [](int letters) {
        MadePages pages;
        for (int i = 0; i < 5; ++i)
            pages.page().text(60, 100, QString(letters, u'a'));
        return findContents(pages, {}).hasText;
    };
    EXPECT_TRUE(hasText(50));
    EXPECT_FALSE(hasText(49));
}

TEST(FindContents, WithoutPagesNothingIsFound) {
    const FoundContents found = findContents(MadePages(), {});
    EXPECT_TRUE(found.hasText) << "no page lacks it";
    EXPECT_FALSE(found.lacksText());
    EXPECT_TRUE(found.entries.empty());
}

TEST(FindContents, PagesWithoutTextAreCountedAmongOthers) {
    const auto found = [](int withText, int without) {
        MadePages pages;
        addChapters(pages, withText);
        for (int i = 0; i < without; ++i)
            pages.page();
        return findContents(pages, {});
    };
    EXPECT_EQ(found(6, 2).pageCount, 8);
    EXPECT_EQ(found(6, 2).pagesWithoutText, 2);
    EXPECT_TRUE(found(6, 2).lacksText()) << "a quarter";
    EXPECT_FALSE(found(7, 2).lacksText()) << "which may be blank";
    EXPECT_FALSE(found(2, 1).lacksText()) << "as the back of a leaf may be";
}

TEST(FindContents, DepthIsLimited) {
    MadePages pages;
    addChapters(pages, 6);
    ContentsOptions options;
    options.maxDepth = 1;
    QStringList expected = chaptersOutline(6, 0);
    expected.removeIf([](const QString &line) { return line.startsWith(u'2'); });
    EXPECT_EQ(outlineOf(pages, options), expected);
}

/// Counts how often each of its pages is asked for, and what is said of the document.
class CountedPages final : public ContentsPages {
public:
    explicit CountedPages(const MadePages &pages)
        : pages_(pages), asked_(static_cast<size_t>(pages.pageCount())) {}

    int pageCount() const override { return pages_.pageCount(); }
    std::shared_ptr<const PageEvidence> pageEvidence(int index) const override {
        ++asked_[static_cast<size_t>(index)];
        return pages_.pageEvidence(index);
    }
    DocumentEvidence documentEvidence() const override {
        ++documentAsked_;
        return pages_.documentEvidence();
    }
    bool allOnce() const {
        return documentAsked_ == 1 &&
               std::all_of(asked_.begin(), asked_.end(), [](const auto &times) { return times == 1; });
    }

private:
    const MadePages &pages_;
    mutable std::vector<std::atomic<int>> asked_;
    mutable std::atomic<int> documentAsked_ = 0;
};

TEST(FindContents, EachPageIsAskedForOnce) {
    MadePages pages;
    addContents(pages, 6, true);
    addChapters(pages, 6);
    const CountedPages counted(pages);
    EXPECT_EQ(findContents(counted, {}).entries.size(), findContents(pages, {}).entries.size());
    EXPECT_TRUE(counted.allOnce());
}

TEST(FindContents, StopsWhenAsked) {
    MadePages pages;
    addChapters(pages, 3);
    std::stop_source stop;
    stop.request_stop();
    EXPECT_TRUE(findContents(pages, {}, stop.get_token()).cancelled);
}

TEST(FindContents, ProgressRisesToOne) {
    MadePages pages;
    addChapters(pages, 6);
    std::vector<double> told;
    findContents(pages, {}, {}, [&told](double done) { told.push_back(done); });
    ASSERT_FALSE(told.empty());
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_EQ(told.back(), 1);
}

TEST(FindContents, StylesAreTurnedOffAndMoved) {
    MadePages pages;
    addChapters(pages, 6);
    const auto analysis = analyseContents(pages);
    const FoundContents all = analysis->choose({});
    ASSERT_EQ(all.styles.size(), 2U);
    EXPECT_EQ(all.styles[1].count, 12);
    EXPECT_EQ(all.styles[1].level, 2);
    EXPECT_EQ(all.styles[1].sample, "1.1 First part of b");

    ContentsChoices choices;
    choices.styles[all.styles[1].id].accepted = false;
    const FoundContents chapters = analysis->choose({}, choices);
    EXPECT_EQ(chapters.entries.size(), 6U);
    EXPECT_FALSE(chapters.styles[1].accepted);

    choices.styles[all.styles[1].id] = {std::nullopt, 1};
    EXPECT_EQ(analysis->choose({}, choices).entries.at(1).level, 1);
}

TEST(FindContents, EntriesAreRejected) {
    MadePages pages;
    addChapters(pages, 6);
    const auto analysis = analyseContents(pages);
    ContentsChoices choices;
    choices.entries[analysis->choose({}).entries.at(1).id] = false;
    QStringList expected = chaptersOutline(6, 0);
    expected.removeAt(1);
    EXPECT_EQ(outlineOf(analysis->choose({}, choices)), expected);
}

TEST(FindContents, ExplanationNamesTheStages) {
    MadePages pages;
    addContents(pages, 6, true);
    addChapters(pages, 6);
    const QString text = analyseContents(pages)->explanation();
    EXPECT_TRUE(text.contains("Body text: 10.0 times, leading 12.0"));
    EXPECT_TRUE(text.contains("Printed contents: pages 1 to 1, 18 entries, 100 % found on their pages"));
}

}  // namespace
}  // namespace leafwright
