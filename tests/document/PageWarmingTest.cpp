#include "pdf/ReadAhead.h"
#include "support/FakePages.h"

#include <atomic>
#include <gmock/gmock.h>

namespace leafwright {
namespace {

using testing::Each;
using testing::ElementsAre;

/// Pages that count how often each was read.
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

TEST(PageWarming, FewPagesAreForOneThread) {
    EXPECT_THAT(warmingStretches(1), ElementsAre(PageStretch{0, 1}));
    EXPECT_THAT(warmingStretches(149), ElementsAre(PageStretch{0, 149}));
    EXPECT_THAT(warmingStretches(299), ElementsAre(PageStretch{0, 299}));
}

TEST(PageWarming, AThreadIsForAtLeast150Pages) {
    EXPECT_THAT(warmingStretches(300), ElementsAre(PageStretch{0, 150}, PageStretch{150, 300}));
    EXPECT_EQ(warmingStretches(1500).size(), 10U);
}

TEST(PageWarming, PagesLeftOverByTheDivisionAreNotWarmed) {
    EXPECT_THAT(warmingStretches(449), ElementsAre(PageStretch{0, 224}, PageStretch{224, 448}));
}

TEST(PageWarming, ReadsTheStretchAndNothingElse) {
    const CountingPages pages(6);
    warmPages(pages, {2, 5}, {});
    EXPECT_THAT(pages.reads(), ElementsAre(0, 0, 1, 1, 1, 0));
}

TEST(PageWarming, StopsWhenAskedTo) {
    const CountingPages pages(6);
    std::stop_source stop;
    stop.request_stop();
    warmPages(pages, {0, 6}, stop.get_token());
    EXPECT_THAT(pages.reads(), Each(0));
}

TEST(PageWarming, AWarmerReadsItsStretchesAndNoPageTwice) {
    for (const auto &[count, warmed] : {std::pair(1, 1), std::pair(449, 448)}) {
        const CountingPages pages(count);
        const PageWarmer warmer(pages);
        pages.waitForReads(warmed);
        std::vector<int> expected(static_cast<size_t>(count), 0);
        std::fill_n(expected.begin(), warmed, 1);
        EXPECT_EQ(pages.reads(), expected);
    }
}

TEST(PageWarming, AWarmerMayGoAtAnyTime) {
    const CountingPages pages(450);
    { const PageWarmer warmer(pages); }
    EXPECT_THAT(pages.reads(), Each(testing::Le(1)));
}

TEST(PageWarming, ReadingAllPagesReadsEachOnce) {
    const CountingPages pages(100);
    readAllPages(pages);
    EXPECT_THAT(pages.reads(), Each(1));
    readAllPages(CountingPages(0));
}

}  // namespace
}  // namespace leafwright
