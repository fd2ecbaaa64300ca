#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <QDir>
#include <QFileInfo>

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

TEST(Batch, ManyFilesAreDoneUnderTheirOwnNames) {
    const TempDir dir;
    QStringList files;
    for (int i = 0; i < 7; ++i)
        files.append(savePdfWithHeadings(dir, QStringLiteral("file %1.pdf").arg(i)));
    const QString out = dir.path("new/folder");
    const CliResult result = runCli(QStringList{"autotoc", "--out-dir", out} + files);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
    // No progress bar where there is no terminal.
    EXPECT_EQ(result.err, "leafwright-cli: " + out.toUtf8() + ": 7 files written\n");
    EXPECT_EQ(QDir(out).entryList(QDir::Files).size(), 7);
    for (const QString &file : files) {
        EXPECT_EQ(plusLinesOf(QDir(out).filePath(QFileInfo(file).fileName())), outlineOfHeadings);
        EXPECT_EQ(plusLinesOf(file), "+ @2 Old Entry\n");
    }
}

TEST(Batch, BadFilesDoNotStopTheOthersAndAreListedAtTheEnd) {
    const TempDir dir;
    const QString first = savePdfWithHeadings(dir, "first.pdf");
    const QString bad = dir.path("bad.pdf");
    saveBytes(bad, "This is no PDF.\n");
    const QString missing = dir.path("missing.pdf");
    const QString last = savePdfWithHeadings(dir, "last.pdf");
    const QString out = dir.path("out");
    const CliResult result = runCli({"autotoc", "--out-dir", out, first, bad, missing, last});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(plusLinesOf(out + "/first.pdf"), outlineOfHeadings);
    EXPECT_EQ(plusLinesOf(out + "/last.pdf"), outlineOfHeadings);
    EXPECT_EQ(QDir(out).entryList(QDir::Files), (QStringList{"first.pdf", "last.pdf"}));
    // In the order of the files, whichever thread was first.
    const qsizetype badAt = result.err.indexOf(bad.toUtf8() + ": this is not a PDF that can be read");
    const qsizetype missingAt = result.err.indexOf(missing.toUtf8() + ": there is no such file");
    EXPECT_GE(badAt, 0);
    EXPECT_GT(missingAt, badAt);
    EXPECT_THAT(result.err.toStdString(), EndsWith("leafwright-cli: 2 of 4 files failed\n"));
}

TEST(Batch, TwoFilesOfTheSameNameAreRefused) {
    const TempDir dir;
    const QString one = savePdfWithHeadings(dir, "same.pdf");
    QDir(dir.path(".")).mkdir("sub");
    const QString other = savePdfWithHeadings(dir, "sub/same.pdf");
    const CliResult result = runCli({"autotoc", "--out-dir", dir.path("out"), one, other});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("two of the files are named \"same.pdf\""));
    EXPECT_FALSE(QFileInfo::exists(dir.path("out")));
}

TEST(Batch, SeveralFilesWantAFolder) {
    const TempDir dir;
    const CliResult result = runCli({"autotoc", "a.pdf", "b.pdf", "-o", dir.path("out.pdf")});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("several files need --out-dir DIR"));
}

TEST(Batch, FileAndFolderTogetherAreWrongUsage) {
    const TempDir dir;
    const CliResult result =
        runCli({"autotoc", "a.pdf", "-o", dir.path("out.pdf"), "--out-dir", dir.path("out")});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("either -o OUT or --out-dir DIR"));
}

TEST(Batch, OneFileMayGoToAFolderToo) {
    const TempDir dir;
    const CliResult result =
        runCli({"autotoc", savePdfWithHeadings(dir, "a.pdf"), "--out-dir", dir.path("out")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out/a.pdf")), outlineOfHeadings);
}

TEST(Batch, FolderThatCannotBeMadeIsAFailure) {
    const TempDir dir;
    const QString path = savePdfWithHeadings(dir, "a.pdf");
    const CliResult result = runCli({"autotoc", path, "--out-dir", path + "/out"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("a.pdf/out: the folder could not be made"));
}

}  // namespace
}  // namespace leafwright::test
