#include "document/PageFinder.h"
#include "support/FakePages.h"

#include <atomic>
#include <gtest/gtest.h>
#include <new>

namespace leafwright {
namespace {

/// Pages of which one can't be read for lack of memory, as long as it lasts.
class ScarcePages final : public TextPages {
public:
    explicit ScarcePages(const TextPages &pages) : pages_(pages) {}
    int pageCount() const override { return pages_.pageCount(); }
    QString pageLabel(int index) const override { return pages_.pageLabel(index); }
    std::shared_ptr<const PageText> pageText(int index) const override {
        if (index == 1 && isScarce) throw std::bad_alloc();
        return pages_.pageText(index);
    }

    std::atomic<bool> isScarce = true;

private:
    const TextPages &pages_;
};

class PageFinding : public testing::Test {
protected:
    void SetUp() override {
        for (int i = 0; i < 3; ++i)
            made.add(QString::number(i), {{"hit\n", test::makeFont("Roman", 10)}});
    }
    test::FakePages made;
    ScarcePages pages{made};
};

TEST_F(PageFinding, SaysWhenMemoryRanOut) {
    PageFinder finder(pages);
    finder.start("hit");
    finder.finish();
    EXPECT_FALSE(finder.isSearching());
    EXPECT_TRUE(finder.lacksMemory());
    pages.isScarce = false;
    finder.start("hit");
    EXPECT_FALSE(finder.lacksMemory());
    finder.finish();
    EXPECT_FALSE(finder.lacksMemory());
    EXPECT_EQ(finder.hits().count(), 3U);
}

TEST_F(PageFinding, GoesAmidASearchOrBeforeOne) {
    pages.isScarce = false;
    for (const char *text : {"", "hit"}) {
        PageFinder finder(pages);
        finder.start(text);
    }
    const PageFinder unused(pages);
    EXPECT_FALSE(unused.isSearching());
}

TEST_F(PageFinding, ForNothingItSearchesNothing) {
    pages.isScarce = false;
    PageFinder finder(pages);
    finder.start("hit");
    finder.finish();
    finder.start({});
    EXPECT_FALSE(finder.isSearching());
    finder.finish();
    EXPECT_EQ(finder.hits().count(), 0U);
}

}  // namespace
}  // namespace leafwright
