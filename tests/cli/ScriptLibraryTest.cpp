#include "cli/ScriptLibrary.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/EnvironmentVariable.h"
#include "support/Paths.h"

#include <dlfcn.h>
#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// The library that all commands stand on.
QString pathOfFirstLibrary() {
    Dl_info library{};
    dladdr(reinterpret_cast<const void *>(&cli::scriptLibrary), &library);
    return QString::fromUtf8(library.dli_fname);
}

TEST(ScriptLibrary, TheCommandLineStartsWithNothingThatDraws) {
    const ProgramResult result = runProgram("ldd", {commandLineProgram()});
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_THAT(result.out.toStdString(),
                AllOf(HasSubstr("libleafwright.so"), HasSubstr("libQt6Core"), Not(HasSubstr("libQt6Gui")),
                      Not(HasSubstr("libQt6Network"))));
}

TEST(ScriptLibrary, WhereItIsMissingOnlyRunFailsAndSaysWhy) {
    const TempDir dir;
    ASSERT_TRUE(QFile::link(pathOfFirstLibrary(), dir.path("libleafwright.so")));
    const EnvironmentVariable libraries("LD_LIBRARY_PATH", QFile::encodeName(dir.path("")));
    const QString pdf = savePdf(dir, "a.pdf", 2, {"One"});
    saveBytes(dir.path("steps.json"), "[]");

    const ProgramResult other = runProgram(commandLineProgram(), {"outline", "--format", "text", pdf});
    EXPECT_EQ(other.exitCode, 0) << other.err.constData();
    EXPECT_THAT(other.out.toStdString(), HasSubstr("One"));
    const ProgramResult run =
        runProgram(commandLineProgram(), {"run", dir.path("steps.json"), pdf, "-o", dir.path("out.pdf")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.err.toStdString(), AllOf(HasSubstr("leafwright-cli: "),
                                             HasSubstr(dir.path("libleafwright-windows.so").toStdString())));
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
}

}  // namespace
}  // namespace leafwright::test
