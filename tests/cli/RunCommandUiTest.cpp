#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;

/// What the command does with its arguments; what steps do is for tests/scripts.
class Running : public testing::Test {
protected:
    void SetUp() override {
        pdf = savePdf(dir, "a.pdf", 3, {"One", "Two"});
        original = bytesOf(pdf);
        saveBytes(dir.path("steps.json"), R"([{"do": "setTitle", "path": [0], "title": "New"}])");
    }

    CliResult run(const QStringList &arguments) {
        return runCli(QStringList{"run", dir.path("steps.json"), pdf} + arguments);
    }
    void expectNothingWritten() { EXPECT_TRUE(bytesOf(pdf) == original); }

    TempDir dir;
    QString pdf;
    QByteArray original;
};

TEST_F(Running, ReportsToStandardOutput) {
    const CliResult result = run({"--report", "-"});
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(parsedJson(result.out).array().size(), 2);
    EXPECT_EQ(result.err, "");
    expectNothingWritten();
}

TEST_F(Running, WithoutAReportItSaysNothing) {
    const CliResult result = run({"-o", dir.path("out.pdf")});
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @1 New\n+ @2 Two\n");
    EXPECT_TRUE(bytesOf(dir.path("out.pdf")).startsWith(original)) << "appended, as everywhere";
}

TEST_F(Running, TakesTheScriptFromStandardInput) {
    const StandardInput input(dir.path("steps.json"));
    const CliResult result = runCli({"run", "-", pdf, "-o", dir.path("out.pdf")});
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @1 New\n+ @2 Two\n");
}

TEST_F(Running, ADocumentThatIsMissingIsTold) {
    const CliResult result = runCli({"run", dir.path("steps.json"), dir.path("no.pdf")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("no.pdf: there is no such file"));
}

TEST_F(Running, WhereTheReportCantBeWrittenNothingIs) {
    const CliResult result = run({"-o", pdf, "--report", dir.path("no/report.json")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("report.json could not be written: "));
    expectNothingWritten();
}

TEST_F(Running, WhereTheOutcomeCantBeWrittenNothingIs) {
    const CliResult result = run({"-o", dir.path("no/out.pdf"), "--report", dir.path("report.json")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("out.pdf could not be written: "));
    EXPECT_FALSE(QFile::exists(dir.path("report.json")));
}

TEST_F(Running, AClosedDocumentHasNoOutcome) {
    saveBytes(dir.path("steps.json"), R"([{"do": "performClose:"}])");
    EXPECT_EQ(run({}).exitCode, 0);
    const CliResult result = run({"-o", dir.path("out.pdf")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("the script closed the document"));
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
}

TEST_F(Running, ALockedDocumentHasNoOutcome) {
    const QString locked = saveLockedPdf(dir, "locked.pdf");
    saveBytes(dir.path("steps.json"), "[]");
    const CliResult result = runCli({"run", dir.path("steps.json"), locked, "-o", dir.path("out.pdf")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("out.pdf could not be written: it is locked"));
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
}

TEST_F(Running, OutlinesOfAnyDepthAreReported) {
    PdfBuilder deep;
    deep.addNumberedPages(1);
    OutlineEntry entry{"(x)", "[0 /Fit]"};
    constexpr int levels = 600;
    for (int i = 0; i < levels; ++i)
        entry = {"(x)", "[0 /Fit]", {entry}};
    addOutline(deep, {entry});
    deep.save(pdf);
    const CliResult result = run({"--report", "-"});
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(result.out.count("\"title\": \"x\""), 2 * levels + 1)
        << "and one that has another title by then";
}

}  // namespace
}  // namespace leafwright::test
