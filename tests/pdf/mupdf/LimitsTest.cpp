#include "pdf/mupdf/Context.h"
#include "pdf/mupdf/TimeLimit.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

namespace leafwright::mupdf {
namespace {

using namespace std::chrono_literals;

TEST(Context, AnErrorOfMuPDFComesOutAsAnException) {
    const Context context;
    try {
        guarded(context, [&] { fz_throw(context, FZ_ERROR_GENERIC, "page %d is odd", 3); });
        FAIL() << "nothing was thrown";
    } catch (const Error &error) {
        EXPECT_STREQ(error.what(), "page 3 is odd");
    }
}

TEST(Context, MemoryIsLimited) {
    const Context context;
    EXPECT_THROW(guarded(context, [&] { return fz_malloc(context, size_t{2} << 30); }), Error);
    void *block = guarded(context, [&] { return fz_malloc(context, 600U << 20); });
    EXPECT_THROW(guarded(context, [&] { return fz_malloc(context, 600U << 20); }), Error);
    fz_free(context, block);
    block = guarded(context, [&] { return fz_malloc(context, 600U << 20); });
    EXPECT_NE(block, nullptr) << "what was freed counts no more";
    fz_free(context, block);
}

TEST(Context, MemoryThatRunsOutIsAProblemAndNoDamage) {
    const Context context;
    void *block = guarded(context, [&] { return fz_malloc(context, 600U << 20); });
    EXPECT_FALSE(context.problem());
    EXPECT_THROW(guarded(context, [&] { return fz_malloc(context, 600U << 20); }), ReadProblem);
    fz_free(context, block);
    ASSERT_TRUE(context.problem());
    EXPECT_EQ(context.problem()->kind, PDFError::Kind::OutOfMemory);
}

/// Lets the system give this process only so much more address space, for as long as it lives.
class MemoryLimit {
public:
    explicit MemoryLimit(size_t more) {
        std::ifstream pages("/proc/self/statm");
        size_t inUse = 0;
        pages >> inUse;
        getrlimit(RLIMIT_AS, &before_);
        const rlimit limit{inUse * static_cast<size_t>(sysconf(_SC_PAGESIZE)) + more, before_.rlim_max};
        setrlimit(RLIMIT_AS, &limit);
    }
    ~MemoryLimit() { setrlimit(RLIMIT_AS, &before_); }
    MemoryLimit(const MemoryLimit &) = delete;
    MemoryLimit &operator=(const MemoryLimit &) = delete;

private:
    rlimit before_{};
};

TEST(Context, ProblemIsTheBudgetOrTheSystem) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer does not go on without memory";
#endif
    const Context large;
    void *block = guarded(large, [&] { return fz_malloc(large, 600U << 20); });
    EXPECT_THROW(guarded(large, [&] { return fz_malloc(large, 600U << 20); }), ReadProblem);
    fz_free(large, block);
    EXPECT_EQ(large.problem()->message, "it takes more memory than a file may have");

    const Context small;
    {
        const MemoryLimit limit(size_t{64} << 20);
        EXPECT_THROW(guarded(small, [&] { return fz_malloc(small, 200U << 20); }), ReadProblem);
    }
    EXPECT_EQ(small.problem()->kind, PDFError::Kind::OutOfMemory);
    EXPECT_EQ(small.problem()->message, "there is not enough memory for it");
}

TEST(Context, WhatIsNotedIsAProblem) {
    Context full;
    full.noteOutOfMemory();
    ASSERT_TRUE(full.problem());
    EXPECT_EQ(full.problem()->kind, PDFError::Kind::OutOfMemory);
    EXPECT_THROW(full.throwProblem(), ReadProblem);
    Context unread;
    unread.noteReadFailure(EIO);
    ASSERT_TRUE(unread.problem());
    EXPECT_EQ(unread.problem()->kind, PDFError::Kind::FileUnreadable);
    unread.noteOutOfMemory();
    EXPECT_EQ(unread.problem()->kind, PDFError::Kind::FileUnreadable)
        << "what went wrong on the disk is told first";
    Context slow;
    slow.noteSlowPage(3);
    ASSERT_TRUE(slow.problem());
    EXPECT_EQ(slow.problem()->kind, PDFError::Kind::TakesTooLong);
    EXPECT_TRUE(slow.problem()->message.contains("page 3"));
}

TEST(Context, AskingForTooMuchAtOnceIsDamageAndNoProblem) {
    const Context context;
    try {
        guarded(context, [&] { return fz_malloc(context, size_t{2} << 30); });
        FAIL();
    } catch (const ReadProblem &) {
        FAIL() << "one broken number is not a lack of memory";
    } catch (const Error &) {
    }
    EXPECT_FALSE(context.problem());
}

TEST(Context, ContextsOfAFileShareItsBudget) {
    const auto budget = std::make_shared<MemoryBudget>();
    const Context one(budget);
    const Context other(budget);
    const Context third(budget);
    constexpr size_t large = 900U << 20;
    void *const first = guarded(one, [&] { return fz_malloc(one, large); });
    void *const second = guarded(other, [&] { return fz_malloc(other, large); });
    EXPECT_THROW(guarded(third, [&] { return fz_malloc(third, large); }), ReadProblem);
    fz_free(one, first);
    EXPECT_FALSE(one.problem());
    fz_free(other, second);
    EXPECT_LT(budget->taken(), 64U << 20) << "what was freed counts no more";
}

TEST(Context, WhatGrowsCounts) {
    const auto budget = std::make_shared<MemoryBudget>();
    const Context context(budget);
    constexpr size_t megabyte = size_t{1} << 20;
    const size_t before = budget->taken();
    void *block = guarded(context, [&] { return fz_malloc(context, 1); });
    for (const size_t size : {1, 10, 100, 200, 300}) {
        block = guarded(context, [&] { return fz_realloc(context, block, size * megabyte); });
        // What grows comes with some room, so that it need not be moved again soon.
        EXPECT_GE(budget->taken(), size * megabyte) << size;
        EXPECT_LE(budget->taken(), before + (size + size / 8 + 5) * megabyte) << size;
    }
    block = guarded(context, [&] { return fz_realloc(context, block, 10 * megabyte); });
    fz_free(context, block);
    EXPECT_LE(budget->taken(), before + 8 * megabyte) << "what was freed counts no more";
}

TEST(Context, WhatGrowsKeepsItsBytes) {
    const Context context;
    std::vector<unsigned char> expected;
    unsigned char *block = nullptr;
    for (size_t size = 1000; size < 3'000'000; size += size < 200'000 ? 99'000 : 1'001) {
        block =
            guarded(context, [&] { return static_cast<unsigned char *>(fz_realloc(context, block, size)); });
        while (expected.size() < size) {
            const auto byte = static_cast<unsigned char>(expected.size() * 7);
            block[expected.size()] = byte;
            expected.push_back(byte);
        }
    }
    EXPECT_EQ(std::memcmp(block, expected.data(), expected.size()), 0);
    block =
        guarded(context, [&] { return static_cast<unsigned char *>(fz_realloc(context, block, 500'000)); });
    EXPECT_EQ(std::memcmp(block, expected.data(), 500'000), 0);
    fz_free(context, block);
}

TEST(Context, ManyStepsAreLimitedAsOneIs) {
    const Context context;
    std::vector<void *> blocks;
    EXPECT_THROW(
        {
            while (blocks.size() < 2000)
                blocks.push_back(guarded(context, [&] { return fz_malloc(context, 1U << 20); }));
        },
        ReadProblem);
    EXPECT_GT(blocks.size(), 1000U);
    EXPECT_LT(blocks.size(), 1024U);
    for (void *block : blocks)
        fz_free(context, block);
}

TEST(Context, ThreadMayTakeTheLockOfTheLibrariesTwice) {
    const Context context;
    // As happens when FreeType wants memory and a font is dropped to find some.
    fz_context *const ctx = context;
    for (int i = 0; i < 2; ++i)
        ctx->locks.lock(ctx->locks.user, FZ_LOCK_FREETYPE);
    for (int i = 0; i < 2; ++i)
        ctx->locks.unlock(ctx->locks.user, FZ_LOCK_FREETYPE);
}

/// The flag is set from another thread, once this one has worked for a while.
bool isAbortedSoon(fz_cookie &cookie) {
    const std::atomic_ref aborted(cookie.abort);
    const std::clock_t end = std::clock() + 10 * CLOCKS_PER_SEC;
    while (aborted.load() == 0 && std::clock() < end) {
    }
    return aborted.load() == 1;
}

TEST(TimeLimit, SetsTheAbortFlagWhenTheTimeIsOver) {
    fz_cookie cookie{};
    const TimeLimit limit(cookie, 1ms);
    EXPECT_FALSE(limit.isOver());
    EXPECT_TRUE(isAbortedSoon(cookie));
    EXPECT_TRUE(limit.isOver());
}

// A disk that wakes up takes seconds, and so does a busy machine.
TEST(TimeLimit, WaitingTakesNoneOfTheTime) {
    fz_cookie cookie{};
    const TimeLimit limit(cookie, 100ms);
    std::this_thread::sleep_for(1s);
    EXPECT_FALSE(limit.isOver());
    EXPECT_EQ(std::atomic_ref(cookie.abort).load(), 0);
}

TEST(TimeLimit, LeavesOthersAlone) {
    fz_cookie patient{};
    fz_cookie impatient{};
    const TimeLimit long_(patient, 1h);
    const TimeLimit short_(impatient, 1ms);
    EXPECT_TRUE(isAbortedSoon(impatient));
    EXPECT_EQ(std::atomic_ref(patient.abort).load(), 0);
}

}  // namespace
}  // namespace leafwright::mupdf
