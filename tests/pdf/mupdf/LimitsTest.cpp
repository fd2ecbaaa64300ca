#include "pdf/mupdf/Context.h"
#include "pdf/mupdf/TimeLimit.h"

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

TEST(TimeLimit, SetsTheAbortFlagWhenTheTimeIsOver) {
    fz_cookie cookie{};
    const TimeLimit limit(cookie, 1ms);
    const volatile int &aborted = cookie.abort;
    for (int i = 0; i < 1000 && !aborted; ++i)
        std::this_thread::sleep_for(10ms);
    EXPECT_EQ(cookie.abort, 1);
}

TEST(TimeLimit, LeavesOthersAlone) {
    fz_cookie patient{};
    fz_cookie impatient{};
    const TimeLimit long_(patient, 1h);
    const TimeLimit short_(impatient, 1ms);
    const volatile int &aborted = impatient.abort;
    for (int i = 0; i < 1000 && !aborted; ++i)
        std::this_thread::sleep_for(10ms);
    EXPECT_EQ(impatient.abort, 1);
    EXPECT_EQ(patient.abort, 0);
}

}  // namespace
}  // namespace leafwright::mupdf
