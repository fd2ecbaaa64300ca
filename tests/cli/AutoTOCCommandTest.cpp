#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/PdfBuilder.h"

#include <QFileInfo>

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;

/// Runs `autotoc` on the file with headings and further options.
CliResult runAutoTOC(const TempDir &dir, const QStringList &options = {}) {
    const QString path = savePdfWithHeadings(dir, "in.pdf");
    return runCli(QStringList{"autotoc", "-q", path, "-o", dir.path("out.pdf")} + options);
}

TEST(AutoTOCCommand, HeadingsReplaceTheOutline) {
    const TempDir dir;
    const CliResult result = runAutoTOC(dir);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), outlineOfHeadings);
    EXPECT_EQ(plusLinesOf(dir.path("in.pdf")), "+ @2 Old Entry\n");
}

TEST(AutoTOCCommand, EntriesPointAtTheTopLeftOfTheirText) {
    const TempDir dir;
    runAutoTOC(dir);
    const QByteArray firstLine = runCli({"text", dir.path("in.pdf")}).out.split('\n').first();
    const QJsonArray bounds = parsedJson(firstLine)["bounds"].toArray();
    const QJsonArray point = outlineOf(dir.path("out.pdf"))[0].toObject()["point"].toArray();
    EXPECT_NEAR(point[0].toDouble(), bounds[0].toDouble(), 0.005);
    EXPECT_NEAR(point[1].toDouble(), bounds[1].toDouble() + bounds[3].toDouble(), 0.005);
}

TEST(AutoTOCCommand, TheOriginalStandsInFrontOfTheResult) {
    const TempDir dir;
    runAutoTOC(dir);
    const QByteArray original = bytesOf(dir.path("in.pdf"));
    const QByteArray result = bytesOf(dir.path("out.pdf"));
    EXPECT_TRUE(result.startsWith(original));
    EXPECT_GT(result.size(), original.size());
}

TEST(AutoTOCCommand, KeepAddsTheHeadingsBehindTheOutline) {
    const TempDir dir;
    EXPECT_EQ(runAutoTOC(dir, {"--keep"}).exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @2 Old Entry\n" + outlineOfHeadings);
}

TEST(AutoTOCCommand, WrapLeavesThemBelowOneEntry) {
    const TempDir dir;
    EXPECT_EQ(runAutoTOC(dir, {"--wrap"}).exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")),
              "+ @1 AutoTOC3\n"
              "++ @1 Chapter One\n"
              "+++ @1 Section Alpha\n"
              "++++ @1 Detail Below\n"
              "++ @2 Chapter Two\n"
              "+++ @2 Section Beta\n");
}

TEST(AutoTOCCommand, KeepAndWrapTogether) {
    const TempDir dir;
    EXPECT_EQ(runAutoTOC(dir, {"--keep", "--wrap", "--max-depth", "1"}).exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")),
              "+ @2 Old Entry\n"
              "+ @1 AutoTOC1\n"
              "++ @1 Chapter One\n"
              "++ @2 Chapter Two\n");
}

TEST(AutoTOCCommand, MaxDepthDropsDeeperHeadings) {
    const TempDir dir;
    EXPECT_EQ(runAutoTOC(dir, {"--max-depth", "2"}).exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")),
              "+ @1 Chapter One\n"
              "++ @1 Section Alpha\n"
              "+ @2 Chapter Two\n"
              "++ @2 Section Beta\n");
}

TEST(AutoTOCCommand, MaxDepthMustBeANumberFromOne) {
    const TempDir dir;
    for (const char *depth : {"0", "-1", "x", "1.5"}) {
        SCOPED_TRACE(depth);
        const CliResult result = runAutoTOC(dir, {QStringLiteral("--max-depth=") + depth});
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_THAT(result.err.toStdString(), HasSubstr("--max-depth wants a number from 1"));
        EXPECT_FALSE(QFileInfo::exists(dir.path("out.pdf")));
    }
}

TEST(AutoTOCCommand, OutputMayBeTheInput) {
    const TempDir dir;
    const QString path = savePdfWithHeadings(dir, "in.pdf");
    const QByteArray original = bytesOf(path);
    EXPECT_EQ(runCli({"autotoc", path, "-o", path}).exitCode, 0);
    EXPECT_EQ(plusLinesOf(path), outlineOfHeadings);
    EXPECT_TRUE(bytesOf(path).startsWith(original));
}

TEST(AutoTOCCommand, WithoutHeadingsTheOutlineStaysAndIsSaidTo) {
    const TempDir dir;
    const QString path = savePdf(dir, "in.pdf", 2, {"Kept", "Kept Too"});
    const CliResult result = runCli({"autotoc", "-q", path, "-o", dir.path("out.pdf")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err,
              "leafwright-cli: " + path.toUtf8() + ": no headings were found; the outline stays as it was\n");
    EXPECT_EQ(outlineOf(dir.path("out.pdf")), outlineOf(path));
    EXPECT_EQ(outlineOf(path).size(), 2);
}

TEST(AutoTOCCommand, WithoutHeadingsWrapLeavesTheOldOutlineToo) {
    const TempDir dir;
    const QString path = savePdf(dir, "in.pdf", 1, {"Old"});
    const CliResult result = runCli({"autotoc", path, "-o", dir.path("out.pdf"), "--wrap"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("the outline stays as it was"));
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @1 Old\n");
}

TEST(AutoTOCCommand, WithoutHeadingsKeepAndWrapAddTheTopEntryLikeTheWindow) {
    const TempDir dir;
    const QString path = savePdf(dir, "in.pdf", 1, {"Old"});
    const CliResult result = runCli({"autotoc", path, "-o", dir.path("out.pdf"), "--keep", "--wrap"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("no headings were found"));
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @1 Old\n+ @1 AutoTOC3\n");
}

TEST(AutoTOCCommand, LockedAndEncryptedFilesAreRefusedWithTheReason) {
    const TempDir dir;
    saveLockedPdf(dir, "locked.pdf");
    saveEncryptedPdf(dir, "encrypted.pdf");

    const CliResult locked = runCli({"autotoc", dir.path("locked.pdf"), "-o", dir.path("out.pdf")});
    EXPECT_EQ(locked.exitCode, 1);
    EXPECT_THAT(locked.err.toStdString(), HasSubstr("this PDF is locked"));
    const CliResult encrypted = runCli({"autotoc", dir.path("encrypted.pdf"), "-o", dir.path("out.pdf")});
    EXPECT_EQ(encrypted.exitCode, 1);
    EXPECT_THAT(encrypted.err.toStdString(), HasSubstr("this PDF is encrypted: its outline can't be edited"));
    EXPECT_FALSE(QFileInfo::exists(dir.path("out.pdf")));
}

TEST(AutoTOCCommand, OutputThatCannotBeWrittenIsAFailure) {
    const TempDir dir;
    const QString path = savePdfWithHeadings(dir, "in.pdf");
    const QString out = dir.path("missing/out.pdf");
    const CliResult result = runCli({"autotoc", path, "-o", out});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr(out.toStdString() + " could not be written"));
}

TEST(AutoTOCCommand, CalibrateFindsTheHeadingsToo) {
    const TempDir dir;
    const CliResult result = runAutoTOC(dir, {"--calibrate"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), outlineOfHeadings);
    EXPECT_NE(outlineOf(dir.path("out.pdf"))[0].toObject()["point"].toArray(), (QJsonArray{0, 0}));
}

TEST(AutoTOCCommand, CalibrateGivesEveryFontALevelOfItsOwnAndLeavesRareOnesOut) {
    const TempDir dir;
    PdfBuilder pdf;
    std::string content =
        PdfBuilder::showText("F2", 30, 72, 750, "A Title") + PdfBuilder::showText("F2", 20, 72, 720, "Rare");
    for (int line = 0; line < 20; ++line) {
        content += PdfBuilder::showText("F2", 14, 72, 700 - 30 * line, "Section of the paper") +
                   PdfBuilder::showText("F1", 10, 72, 685 - 30 * line, "Body text that is longer than that");
    }
    pdf.addPage(content);
    pdf.save(dir.path("in.pdf"));
    ASSERT_EQ(runCli({"autotoc", dir.path("in.pdf"), "-o", dir.path("out.pdf")}).exitCode, 0);
    EXPECT_TRUE(plusLinesOf(dir.path("out.pdf")).startsWith("+ @1 A Title Rare Section of the paper\n"))
        << "single runs use up no level";
    ASSERT_EQ(
        runCli({"autotoc", dir.path("in.pdf"), "-o", dir.path("out.pdf"), "--calibrate", "--wrap"}).exitCode,
        0);
    EXPECT_TRUE(plusLinesOf(dir.path("out.pdf"))
                    .startsWith("+ @1 AutoTOC3\n++ @1 Section of the paper\n++ @1 Section of the paper\n"));
}

TEST(AutoTOCCommand, CalibrateGoesWithTheOtherOptionsButNotWithAMap) {
    const TempDir dir;
    EXPECT_EQ(runAutoTOC(dir, {"--calibrate", "--keep", "--wrap", "--max-depth", "1"}).exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")),
              "+ @2 Old Entry\n"
              "+ @1 AutoTOC1\n"
              "++ @1 Chapter One\n"
              "++ @2 Chapter Two\n");
    const CliResult result = runAutoTOC(dir, {"--calibrate", "--map", dir.path("map")});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("--map can't be given with it"));
}

TEST(AutoTOCCommand, CalibrateNeedsTwoFonts) {
    const TempDir dir;
    const QString path = savePdf(dir, "in.pdf", 2, {"Kept"});
    const CliResult result = runCli({"autotoc", path, "-o", dir.path("out.pdf"), "--calibrate"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(),
                HasSubstr("in.pdf: its text has fewer than two fonts, from which nothing can be told\n"));
    EXPECT_THAT(result.err.toStdString(), HasSubstr("in.pdf: nothing was written\n"));
    EXPECT_FALSE(QFileInfo::exists(dir.path("out.pdf")));
}

}  // namespace
}  // namespace leafwright::test
