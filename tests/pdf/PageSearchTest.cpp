#include "pdf/PageSearch.h"
#include "support/FakePages.h"

#include <atomic>
#include <condition_variable>
#include <gmock/gmock.h>
#include <mutex>
#include <thread>

namespace leafwright {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const Font roman = test::makeFont("Roman", 10);
const Font bold = test::makeFont("Roman", 10, BoldTrait);

std::vector<PageHits> hitsOf(PageSearch &search, const QString &text) {
    std::vector<PageHits> hits;
    search.search(text, [&hits](PageHits each) { hits.push_back(std::move(each)); });
    return hits;
}

TEST(PageSearch, TellsThePagesThatHaveATextAndWhere) {
    test::FakePages pages;
    pages.add("1", {{"One two one\n", roman}}).add("2", {{"three\n", roman}}).add("3", {{"ONE\n", roman}});
    PageSearch search(pages);
    EXPECT_THAT(hitsOf(search, "one"), ElementsAre(PageHits{0, {{0, 3}, {8, 3}}}, PageHits{2, {{0, 3}}}));
}

TEST(PageSearch, FindsAcrossFontsAndLines) {
    test::FakePages pages;
    pages.add("1", {{"a table ", roman}, {"of con-\n", bold}, {"tents\n", roman}});
    PageSearch search(pages);
    EXPECT_THAT(hitsOf(search, "Table of Contents"), ElementsAre(PageHits{0, {{2, 19}}}));
}

TEST(PageSearch, DoesNotFindAcrossPages) {
    test::FakePages pages;
    pages.add("1", {{"table of\n", roman}}).add("2", {{"contents\n", roman}});
    PageSearch search(pages);
    EXPECT_THAT(hitsOf(search, "of contents"), IsEmpty());
}

TEST(PageSearch, HitsDoNotLieOverEachOther) {
    test::FakePages pages;
    pages.add("1", {{"aaaaa\n", roman}});
    PageSearch search(pages);
    EXPECT_THAT(hitsOf(search, "aa"), ElementsAre(PageHits{0, {{0, 2}, {2, 2}}}));
}

TEST(PageSearch, NothingIsFoundForBlanksAlone) {
    test::FakePages pages;
    pages.add("1", {{"a b\n", roman}});
    PageSearch search(pages);
    for (const char *text : {"", " ", "\n\t"})
        EXPECT_THAT(hitsOf(search, text), IsEmpty());
}

/// Pages of which the first is read when all others have been.
class LateFirstPage final : public TextPages {
public:
    explicit LateFirstPage(const TextPages &pages) : pages_(pages) {}
    int pageCount() const override { return pages_.pageCount(); }
    QString pageLabel(int index) const override { return pages_.pageLabel(index); }
    std::shared_ptr<const PageText> pageText(int index) const override {
        std::unique_lock lock(mutex_);
        if (index == 0) {
            changed_.wait(lock, [this] { return others_ == pageCount() - 1; });
        } else {
            ++others_;
            changed_.notify_all();
        }
        return pages_.pageText(index);
    }

private:
    const TextPages &pages_;
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    mutable int others_ = 0;
};

TEST(PageSearch, PagesComeInTheirOrderHoweverLongEachTakes) {
    if (std::thread::hardware_concurrency() < 2) GTEST_SKIP() << "there is one core only";
    constexpr int count = 100;
    test::FakePages made;
    for (int i = 0; i < count; ++i)
        made.add(QString::number(i), {{i % 3 == 0 ? "hit\n" : "miss\n", roman}});
    const LateFirstPage pages(made);
    PageSearch search(pages);
    const std::vector<PageHits> hits = hitsOf(search, "HIT");
    ASSERT_EQ(hits.size(), (count + 2) / 3);
    for (size_t k = 0; k < hits.size(); ++k)
        EXPECT_EQ(hits[k].pageIndex, static_cast<int>(3 * k));
}

/// Pages that count how often they are read.
class CountedPages final : public TextPages {
public:
    explicit CountedPages(const TextPages &pages) : pages_(pages) {}
    int pageCount() const override { return pages_.pageCount(); }
    QString pageLabel(int index) const override { return pages_.pageLabel(index); }
    std::shared_ptr<const PageText> pageText(int index) const override {
        ++reads_;
        return pages_.pageText(index);
    }
    int reads() const { return reads_; }

private:
    const TextPages &pages_;
    mutable std::atomic<int> reads_ = 0;
};

TEST(PageSearch, ReadsAPageOnce) {
    test::FakePages made;
    made.add("1", {{"one\n", roman}}).add("2", {{"two\n", roman}});
    const CountedPages pages(made);
    PageSearch search(pages);
    hitsOf(search, "one");
    hitsOf(search, "two");
    EXPECT_EQ(pages.reads(), 2);
}

TEST(PageSearch, KeepsNoMoreThanItMay) {
    test::FakePages made;
    made.add("1", {{"one\n", roman}}).add("2", {{"two\n", roman}});
    const CountedPages pages(made);
    PageSearch search(pages, 0);
    hitsOf(search, "one");
    EXPECT_THAT(hitsOf(search, "two"), ElementsAre(PageHits{1, {{0, 3}}}));
    EXPECT_EQ(pages.reads(), 4);
}

/// Pages that ask for a stop as soon as one is read.
class StoppingPages final : public TextPages {
public:
    explicit StoppingPages(const TextPages &pages) : pages_(pages) {}
    int pageCount() const override { return pages_.pageCount(); }
    QString pageLabel(int index) const override { return pages_.pageLabel(index); }
    std::shared_ptr<const PageText> pageText(int index) const override {
        const std::lock_guard lock(mutex_);
        ++reads_;
        stop.request_stop();
        return pages_.pageText(index);
    }
    int reads() const { return reads_; }

    mutable std::stop_source stop;

private:
    const TextPages &pages_;
    mutable std::mutex mutex_;
    mutable int reads_ = 0;
};

TEST(PageSearch, StopsWhenAsked) {
    constexpr int count = 1'000;
    test::FakePages made;
    for (int i = 0; i < count; ++i)
        made.add(QString::number(i), {{"hit\n", roman}});
    const StoppingPages pages(made);
    PageSearch search(pages);
    search.search(
        "hit", [](const PageHits & /*hits*/) {}, pages.stop.get_token());
    EXPECT_GE(pages.reads(), 1);
    EXPECT_LE(pages.reads(), static_cast<int>(std::max(1U, std::thread::hardware_concurrency())));
    // What was left out is searched the next time.
    EXPECT_EQ(hitsOf(search, "hit").size(), count);
}

TEST(PageSearch, WhatReadingThrowsIsThrown) {
    class BrokenPages final : public TextPages {
    public:
        int pageCount() const override { return 3; }
        QString pageLabel(int /*index*/) const override { return {}; }
        std::shared_ptr<const PageText> pageText(int /*index*/) const override { throw std::bad_alloc(); }
    };
    const BrokenPages pages;
    PageSearch search(pages);
    EXPECT_THROW(hitsOf(search, "text"), std::bad_alloc);
}

TEST(FoundHits, AreNumberedInTheOrderOfPages) {
    FoundHits hits;
    hits.add({2, {{0, 1}, {5, 1}}});
    hits.add({7, {{3, 1}}});
    EXPECT_EQ(hits.count(), 3U);
    EXPECT_EQ(hits.at(0), (FoundHits::Hit{2, {0, 1}}));
    EXPECT_EQ(hits.at(1), (FoundHits::Hit{2, {5, 1}}));
    EXPECT_EQ(hits.at(2), (FoundHits::Hit{7, {3, 1}}));
    hits.clear();
    EXPECT_EQ(hits.count(), 0U);
}

TEST(FoundHits, TheFirstFromAPageOnMayBeOnALaterOne) {
    FoundHits hits;
    EXPECT_EQ(hits.firstFrom(0), std::nullopt);
    hits.add({2, {{0, 1}, {5, 1}}});
    hits.add({7, {{3, 1}}});
    EXPECT_EQ(hits.firstFrom(0), 0U);
    EXPECT_EQ(hits.firstFrom(2), 0U);
    EXPECT_EQ(hits.firstFrom(3), 2U);
    EXPECT_EQ(hits.firstFrom(8), std::nullopt);
}

}  // namespace
}  // namespace leafwright
