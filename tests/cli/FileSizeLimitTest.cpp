#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Paths.h"

#include <QDir>

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;

/// Under `ulimit -f`, the system sends a signal that ends programs which don't expect it.
class FileSizeLimit : public testing::Test {
protected:
    static ProgramResult runLimited(QStringList arguments) {
        arguments.prepend(commandLineProgram());
        return runProgram("sh", QStringList{"-c", "ulimit -f 1; exec \"$0\" \"$@\""} + arguments);
    }
    QStringList names() const {
        return QDir(dir.path(".")).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    const TempDir dir;
};

TEST_F(FileSizeLimit, IsToldAndLeavesTheOldFile) {
    savePdfWithHeadings(dir, "a.pdf");
    const QByteArray before = bytesOf(dir.path("a.pdf"));
    ASSERT_GT(before.size(), 1024) << "more than the limit";
    const ProgramResult result = runLimited({"autotoc", dir.path("a.pdf"), "-o", dir.path("a.pdf")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("a.pdf could not be written: File too large"));
    EXPECT_EQ(bytesOf(dir.path("a.pdf")), before);
    EXPECT_EQ(names(), QStringList{"a.pdf"});
}

TEST_F(FileSizeLimit, IsToldByABatchToo) {
    savePdfWithHeadings(dir, "a.pdf");
    const ProgramResult result = runLimited({"autotoc", "--out-dir", dir.path("out"), dir.path("a.pdf")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("could not be written: File too large"));
    EXPECT_FALSE(QFile::exists(dir.path("out/a.pdf")));
}

}  // namespace
}  // namespace leafwright::test
