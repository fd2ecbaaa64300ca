#include "pdf/mupdf/Context.h"
#include "pdf/mupdf/TimeLimit.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

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

/// The flag is set from another thread.
bool isAbortedSoon(fz_cookie &cookie) {
    const std::atomic_ref aborted(cookie.abort);
    for (int i = 0; i < 1000 && aborted.load() == 0; ++i)
        std::this_thread::sleep_for(10ms);
    return aborted.load() == 1;
}

TEST(TimeLimit, SetsTheAbortFlagWhenTheTimeIsOver) {
    fz_cookie cookie{};
    const TimeLimit limit(cookie, 1ms);
    EXPECT_TRUE(isAbortedSoon(cookie));
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
