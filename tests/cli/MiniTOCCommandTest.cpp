#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <QFileInfo>

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;

CliResult runMiniTOC(const TempDir &dir, const QStringList &options) {
    const QString path = savePdfWithHeadings(dir, "in.pdf");
    return runCli(QStringList{"minitoc", "-q", path, "-o", dir.path("out.pdf")} + options);
}

TEST(MiniTOCCommand, HeadingsLikeTheSampleComeBelowOneEntryBehindTheOutline) {
    const TempDir dir;
    const CliResult result = runMiniTOC(dir, {"--page", "1", "--text", "Section Alpha"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")),
              "+ @2 Old Entry\n"
              "+ @1 MiniTOC\n"
              "++ @1 Section Alpha\n"
              "++ @2 Section Beta\n");
}

TEST(MiniTOCCommand, PartOfAHeadingIsSampleEnough) {
    const TempDir dir;
    EXPECT_EQ(runMiniTOC(dir, {"--page", "2", "--text", "apter T"}).exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")),
              "+ @2 Old Entry\n"
              "+ @1 MiniTOC\n"
              "++ @1 Chapter One\n"
              "++ @2 Chapter Two\n");
}

TEST(MiniTOCCommand, ASampleMaySpanLines) {
    const TempDir dir;
    EXPECT_EQ(runMiniTOC(dir, {"--page", "1", "--text", " One  Section "}).exitCode, 0);
    EXPECT_THAT(plusLinesOf(dir.path("out.pdf")).toStdString(), HasSubstr("MiniTOC"));
}

TEST(MiniTOCCommand, TheSampleIsNoPattern) {
    const TempDir dir;
    const CliResult result = runMiniTOC(dir, {"--page", "1", "--text", "Section .*"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err,
              "leafwright-cli: " + dir.path("in.pdf").toUtf8() + ": page 1 has no text \"Section .*\"\n");
    EXPECT_FALSE(QFileInfo::exists(dir.path("out.pdf")));
}

TEST(MiniTOCCommand, TheSampleMustBeOnItsPage) {
    const TempDir dir;
    const CliResult result = runMiniTOC(dir, {"--page", "2", "--text", "Section Alpha"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("page 2 has no text \"Section Alpha\""));
}

TEST(MiniTOCCommand, APageThatIsNotThereIsAFailure) {
    const TempDir dir;
    for (const char *page : {"0", "3", "-1"}) {
        SCOPED_TRACE(page);
        const CliResult result =
            runMiniTOC(dir, {QStringLiteral("--page=") + page, "--text", "Section Alpha"});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_THAT(result.err.toStdString(),
                    HasSubstr(std::string("there is no page ") + page + "; the pages are 1 to 2"));
        EXPECT_FALSE(QFileInfo::exists(dir.path("out.pdf")));
    }
}

TEST(MiniTOCCommand, PageTextAndOutputMustBeGiven) {
    const TempDir dir;
    const QString path = savePdfWithHeadings(dir, "in.pdf");
    const auto errorOf = [&](const QStringList &options) {
        const CliResult result = runCli(QStringList{"minitoc", path} + options);
        EXPECT_EQ(result.exitCode, 2);
        return result.err.toStdString();
    };
    const QString out = dir.path("out.pdf");
    EXPECT_THAT(errorOf({"--page", "1", "--text", "x"}), HasSubstr("-o OUT is missing"));
    EXPECT_THAT(errorOf({"-o", out, "--text", "x"}), HasSubstr("--page N is missing"));
    EXPECT_THAT(errorOf({"-o", out, "--page", "one", "--text", "x"}), HasSubstr("\"one\" is no page number"));
    EXPECT_THAT(errorOf({"-o", out, "--page", "1"}), HasSubstr("--text SAMPLE is missing"));
    EXPECT_THAT(errorOf({"-o", out, "--page", "1", "--text", " "}), HasSubstr("--text SAMPLE is missing"));
    EXPECT_FALSE(QFileInfo::exists(out));
}

TEST(MiniTOCCommand, OutputMayBeTheInput) {
    const TempDir dir;
    const QString path = savePdfWithHeadings(dir, "in.pdf");
    const QByteArray original = bytesOf(path);
    EXPECT_EQ(runCli({"minitoc", path, "-o", path, "--page", "1", "--text", "Chapter One"}).exitCode, 0);
    EXPECT_TRUE(bytesOf(path).startsWith(original));
    EXPECT_THAT(plusLinesOf(path).toStdString(), HasSubstr("++ @2 Chapter Two\n"));
}

TEST(MiniTOCCommand, FilesThatCannotBeReadOrEditedAreRefused) {
    const TempDir dir;
    saveEncryptedPdf(dir, "encrypted.pdf");
    const QStringList options{"-o", dir.path("out.pdf"), "--page", "1", "--text", "Page 1"};
    const CliResult encrypted = runCli(QStringList{"minitoc", dir.path("encrypted.pdf")} + options);
    EXPECT_EQ(encrypted.exitCode, 1);
    EXPECT_THAT(encrypted.err.toStdString(), HasSubstr("this PDF is encrypted: its outline can't be edited"));
    const CliResult missing = runCli(QStringList{"minitoc", dir.path("none.pdf")} + options);
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_THAT(missing.err.toStdString(), HasSubstr("there is no such file"));
    EXPECT_FALSE(QFileInfo::exists(dir.path("out.pdf")));
}

TEST(MiniTOCCommand, OutputThatCannotBeWrittenIsAFailure) {
    const TempDir dir;
    const QString out = dir.path("missing/out.pdf");
    const CliResult result = runCli(
        {"minitoc", savePdfWithHeadings(dir, "in.pdf"), "-o", out, "--page", "1", "--text", "Chapter One"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr(out.toStdString() + " could not be written"));
}

}  // namespace
}  // namespace leafwright::test
