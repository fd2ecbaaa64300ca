#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Paths.h"

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

/// Under `ulimit -v`, threads can't be started either. What a window is drawn with waits for them for ever.
TEST(MemoryLimit, EndsAScriptSomehow) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer takes all addresses there are";
#endif
    const TempDir dir;
    savePdfWithHeadings(dir, "a.pdf");
    saveBytes(dir.path("steps.json"), R"([{"do": "saveDocument:"}])");
    const QByteArray before = bytesOf(dir.path("a.pdf"));
    constexpr int step = 4'000;  // KB
    int refused = 0;
    int done = 0;
    for (int limit = 120'000; limit < 260'000 && done < 3; limit += step) {
        const ProgramResult result = runProgram(
            "sh", {"-c", "ulimit -v $0; exec timeout 60 \"$1\" run \"$2\" \"$3\"", QString::number(limit),
                   commandLineProgram(), dir.path("steps.json"), dir.path("a.pdf")});
        EXPECT_NE(result.exitCode, 124) << "it waits, with " << limit << " KB";
        result.exitCode == 0 ? ++done : ++refused;
        if (done == 0) {
            EXPECT_EQ(bytesOf(dir.path("a.pdf")), before);
        }
    }
    EXPECT_GT(refused, 0);
    EXPECT_GT(done, 0);
}

}  // namespace
}  // namespace leafwright::test
