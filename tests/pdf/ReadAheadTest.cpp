#include "pdf/ReadAhead.h"
#include "support/EmptyEngine.h"
#include "support/OpenPdf.h"

#include <atomic>
#include <gmock/gmock.h>

namespace leafwright {

void PrintTo(const PageStretch &stretch, std::ostream *out) {
    *out << stretch.pagemin << ".." << stretch.pagemax;
}

namespace {

using test::openPdf;
using test::PdfBuilder;
using testing::Each;
using testing::ElementsAre;

/// Pages that count how often each is read.
class CountingPages final : public TextPages {
public:
    explicit CountingPages(int count) : reads_(static_cast<size_t>(count)) {}

    int pageCount() const override { return static_cast<int>(reads_.size()); }
    QString pageLabel(int index) const override { return QString::number(index + 1); }
    std::shared_ptr<const PageText> pageText(int index) const override {
        ++reads_.at(static_cast<size_t>(index));
        ++total_;
        total_.notify_all();
        return std::make_shared<const PageText>();
    }

    /// Waits until pages were read as often as this, in all.
    void waitForReads(int count) const {
        for (int seen = total_; seen < count; seen = total_)
            total_.wait(seen);
    }
    std::vector<int> reads() const { return {reads_.begin(), reads_.end()}; }

private:
    mutable std::vector<std::atomic<int>> reads_;
    mutable std::atomic<int> total_ = 0;
};

TEST(WarmingStretches, OnePer150Pages) {
    EXPECT_THAT(warmingStretches(1), ElementsAre(PageStretch{0, 1}));
    EXPECT_THAT(warmingStretches(149), ElementsAre(PageStretch{0, 149}));
    EXPECT_THAT(warmingStretches(150), ElementsAre(PageStretch{0, 150}));
    EXPECT_THAT(warmingStretches(299), ElementsAre(PageStretch{0, 299}));
    EXPECT_THAT(warmingStretches(300), ElementsAre(PageStretch{0, 150}, PageStretch{150, 300}));
    EXPECT_THAT(warmingStretches(450),
                ElementsAre(PageStretch{0, 150}, PageStretch{150, 300}, PageStretch{300, 450}));
    EXPECT_EQ(warmingStretches(1500).size(), 10U);
}

TEST(WarmingStretches, RemainderIsNotWarmed) {
    EXPECT_THAT(warmingStretches(449), ElementsAre(PageStretch{0, 224}, PageStretch{224, 448}));
    EXPECT_THAT(warmingStretches(301), ElementsAre(PageStretch{0, 150}, PageStretch{150, 300}));
}

TEST(WarmingStretches, WithoutPages) {
    EXPECT_THAT(warmingStretches(0), ElementsAre(PageStretch{0, 0}));
}

TEST(WarmPages, ReadsItsStretch) {
    const CountingPages pages(5);
    warmPages(pages, {1, 4}, std::stop_token());
    EXPECT_THAT(pages.reads(), ElementsAre(0, 1, 1, 1, 0));
}

TEST(WarmPages, StopsWhenAsked) {
    const CountingPages pages(5);
    std::stop_source source;
    source.request_stop();
    warmPages(pages, {0, 5}, source.get_token());
    EXPECT_THAT(pages.reads(), Each(0));
}

TEST(OnAllCores, DoesEachOnce) {
    std::vector<std::atomic<int>> times(1'000);
    onAllCores(1'000, [&times](int number) { ++times[static_cast<size_t>(number)]; });
    EXPECT_THAT(std::vector<int>(times.begin(), times.end()), Each(1));
}

TEST(OnAllCores, NothingToDo) {
    onAllCores(0, [](int number) { ADD_FAILURE() << number; });
}

TEST(OnAllCores, StopsWhenAsked) {
    std::stop_source source;
    std::atomic<int> done = 0;
    onAllCores(
        1'000'000,
        [&](int /*number*/) {
            ++done;
            source.request_stop();
        },
        source.get_token());
    EXPECT_LT(done, 1'000'000);
}

TEST(ReadAllPages, ReadsEachOnce) {
    const CountingPages pages(1000);
    readAllPages(pages);
    EXPECT_THAT(pages.reads(), Each(1));
    readAllPages(CountingPages(0));
}

/// Pages for which memory runs out.
class GreedyPages final : public TextPages {
public:
    int pageCount() const override { return 300; }
    QString pageLabel(int index) const override { return QString::number(index + 1); }
    std::shared_ptr<const PageText> pageText(int index) const override {
        if (index >= 40) throw std::bad_alloc();
        return std::make_shared<const PageText>();
    }
};

TEST(ReadAllPages, ThrowsWhatAPageThrowsOnWhicheverThread) {
    EXPECT_THROW(readAllPages(GreedyPages()), std::bad_alloc);
}

TEST(PageWarmer, EndsWhereMemoryRunsOut) {
    const GreedyPages pages;
    const PageWarmer warmer(pages);
}

TEST(PageWarmer, ReadsItsStretchesAndNoPageTwice) {
    for (const auto &[count, warmed] : {std::pair(1, 1), std::pair(449, 448)}) {
        const CountingPages pages(count);
        const PageWarmer warmer(pages);
        pages.waitForReads(warmed);
        std::vector<int> expected(static_cast<size_t>(count), 0);
        std::fill_n(expected.begin(), warmed, 1);
        EXPECT_EQ(pages.reads(), expected);
    }
}

TEST(PageWarmer, MayGoAtAnyTime) {
    const CountingPages pages(449);
    { const PageWarmer warmer(pages); }
    EXPECT_THAT(pages.reads(), Each(testing::Le(1)));
    EXPECT_EQ(pages.reads()[448], 0);
}

PdfBuilder manyPages(int count) {
    PdfBuilder pdf;
    for (int i = 0; i < count; ++i) {
        pdf.addPage(
            PdfBuilder::showText(i % 2 ? "F1" : "F3", 10 + i % 5, 72, 700, "Heading " + std::to_string(i)) +
            PdfBuilder::showText("F4", 10, 72, 600, "Text of the page"));
    }
    return pdf;
}

TEST(ConcurrentReading, ThreadsReadTheSameAsOne) {
    constexpr int count = 60;
    const PdfBuilder pdf = manyPages(count);
    const auto alone = openPdf(pdf);
    const auto shared = openPdf(pdf);
    {
        std::vector<std::jthread> threads;
        for (int k = 0; k < 8; ++k) {
            threads.emplace_back([&shared, k] {
                for (int i = 0; i < count; ++i)
                    shared->pageText(k % 2 ? i : count - 1 - i);
            });
        }
    }
    for (int i = 0; i < count; ++i) {
        const auto expected = alone->pageText(i);
        const auto read = shared->pageText(i);
        ASSERT_EQ(read->attributedString.string, expected->attributedString.string) << i;
        ASSERT_EQ(read->attributedString.runs, expected->attributedString.runs) << i;
        ASSERT_EQ(read->runBounds, expected->runBounds) << i;
    }
}

/// Counts how often the text of each page is read; has nothing else.
class CountingEngine final : public test::EmptyEngine {
public:
    explicit CountingEngine(int count) : EmptyEngine(count), reads_(static_cast<size_t>(count)) {}

    std::shared_ptr<const PageText> pageText(int index) const override {
        const int earlier = reads_[static_cast<size_t>(index)]++;
        std::this_thread::yield();  // so that others ask meanwhile
        if (index == pageWithoutMemory && earlier == 0) throw std::bad_alloc();
        return EmptyEngine::pageText(index);
    }
    std::vector<int> reads() const { return {reads_.begin(), reads_.end()}; }

    int pageWithoutMemory = -1;  ///< Whose first reading ends for want of it.

private:
    mutable std::vector<std::atomic<int>> reads_;
};

TEST(ConcurrentReading, NoPageIsReadTwice) {
    auto owned = std::make_unique<CountingEngine>(2000);
    const CountingEngine &engine = *owned;
    const PDFDocument document(std::move(owned));
    {
        const PageWarmer warmer(document);
        std::vector<std::jthread> threads;
        for (int k = 0; k < 6; ++k)
            threads.emplace_back([&] { readAllPages(document); });
    }
    EXPECT_THAT(engine.reads(), Each(1));
}

TEST(ConcurrentReading, APageThatCouldNotBeReadIsReadByTheNext) {
    auto owned = std::make_unique<CountingEngine>(1);
    owned->pageWithoutMemory = 0;
    const CountingEngine &engine = *owned;
    const PDFDocument document(std::move(owned));
    EXPECT_THROW(document.pageText(0), std::bad_alloc);
    EXPECT_NE(document.pageText(0), nullptr);
    EXPECT_THAT(engine.reads(), ElementsAre(2));
}

TEST(ConcurrentReading, BoxesAndOutlineBesideTheText) {
    constexpr int count = 30;
    PdfBuilder pdf = manyPages(count);
    test::addOutline(pdf, {{"(A)", "[" + pdf.pageReference(7) + " /Fit]"}});
    const auto document = openPdf(pdf);
    const size_t boxes = document->engine().characterBoxes(3).size();
    std::atomic<int> wrong = 0;
    {
        const PageWarmer warmer(*document);
        std::vector<std::jthread> threads;
        for (int k = 0; k < 4; ++k) {
            threads.emplace_back([&] {
                for (int i = 0; i < 10; ++i) {
                    if (document->engine().characterBoxes(3).size() != boxes) ++wrong;
                    const auto outline = document->engine().readOutline();
                    const auto &root = std::get<std::unique_ptr<PDFOutline>>(outline);
                    if (root->childAtIndex(0).destination()->pageIndex != 7) ++wrong;
                }
            });
        }
        readAllPages(*document);
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(test::textOf(*document, 29), "Heading 29\nText of the page\n");
}

}  // namespace
}  // namespace leafwright
