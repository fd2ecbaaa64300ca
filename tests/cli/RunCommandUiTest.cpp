#include "pdf/mupdf/FileStream.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/EnvironmentVariable.h"

#include <QDir>

#include <cerrno>
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
    const CliResult result = run({"--report", "-", "-q"});
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(parsedJson(result.out).array().size(), 2);
    EXPECT_EQ(result.err, "");
    expectNothingWritten();
}

TEST_F(Running, WithoutAReportItSaysNothingIfToldSo) {
    const CliResult result = run({"-o", dir.path("out.pdf"), "-q"});
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

TEST_F(Running, ADocumentThatCantBeReadOnceSaysWhy) {
    int reads = 0;
    const mupdf::FailingReads failing([&reads](qint64, qint64) { return reads++ == 0 ? EIO : 0; });
    const CliResult result = run({});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("a.pdf: the file can't be read: Input/output error"));
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

TEST_F(Running, AReportThatNoFileCanHoldIsAFailure) {
    saveBytes(dir.path("steps.json"), R"([{"do": "saveDocument:"}])");
    const CliResult device = run({"--report", "/dev/null"});
    EXPECT_EQ(device.exitCode, 1);
    EXPECT_THAT(device.err.toStdString(), HasSubstr("/dev/null could not be written: it is a device"));
    const CliResult document = run({"--report", pdf});
    EXPECT_EQ(document.exitCode, 1) << "the document's own place is taken";
    EXPECT_THAT(document.err.toStdString(), HasSubstr("a.pdf is read, and would be overwritten"));
    expectNothingWritten();
}

TEST_F(Running, AReportThatDoesNotFitIsAFailure) {
    QByteArray steps = R"({"do": "setTitle", "path": [0], "title": "New"}, {"do": "saveDocument:"})";
    for (int i = 0; i < 100; ++i)
        steps += R"(, {"do": "selectTOCAll:"})";
    saveBytes(dir.path("steps.json"), '[' + steps + ']');
    const QString report = dir.path("report.json");
    ASSERT_EQ(run({"--report", report, "-o", dir.path("out.pdf")}).exitCode, 0);
    // Room for the document that is saved, but not for the report.
    const qint64 needed = QFileInfo(dir.path("out.pdf")).size() + 1000;
    ASSERT_GT(QFileInfo(report).size(), needed);
    savePdf(dir, "a.pdf", 3, {"One", "Two"});
    for (const QString &name : {report, QStringLiteral("-")}) {
        QFile::remove(report);
        CliResult result{};
        {
            const FileSizeLimit limit(static_cast<unsigned long>(needed));
            result = run({"--report", name});
        }
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_THAT(result.err.toStdString(), HasSubstr("the report could not be written: "));
        EXPECT_EQ(result.out, "");
        EXPECT_FALSE(QFile::exists(report));
        expectNothingWritten();
    }
}

TEST_F(Running, WithoutAFolderForCopiesNothingIsTouched) {
    saveBytes(dir.path("steps.json"), R"([{"do": "saveDocument:"}])");
    ASSERT_TRUE(QDir(dir.path(".")).mkdir("elsewhere"));
    saveBytes(dir.path("elsewhere/a.pdf"), "somebody's");
    saveBytes(dir.path("file"), "");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(dir.path("elsewhere")));
    for (const QString &place : {dir.path("missing"), dir.path("file"), QStringLiteral("/proc")}) {
        const EnvironmentVariable temporary("TMPDIR", QFile::encodeName(place));
        const CliResult result = run({"-o", dir.path("out.pdf")});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_THAT(result.err.toStdString(),
                    HasSubstr("no folder for temporary files can be made in " + place.toStdString() + ": "));
    }
    QDir::setCurrent(before);
    expectNothingWritten();
    EXPECT_EQ(bytesOf(dir.path("elsewhere/a.pdf")), "somebody's");
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
}

TEST_F(Running, WhereTheCopyDoesNotFitNothingIsTouched) {
    saveBytes(dir.path("steps.json"), R"([{"do": "saveDocument:"}])");
    CliResult result{};
    {
        const FileSizeLimit limit(static_cast<unsigned long>(original.size()) - 10);
        result = run({});
    }
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("a.pdf: it could not be copied to "));
    EXPECT_THAT(result.err.toStdString(), HasSubstr(": File too large"));
    expectNothingWritten();
}

TEST_F(Running, ASaveThatFailsEndsTheScript) {
    saveBytes(dir.path("steps.json"),
              R"([{"do": "setTitle", "path": [0], "title": "New"}, {"do": "saveDocument:"}])");
    CliResult result{};
    {
        const FileSizeLimit limit(static_cast<unsigned long>(original.size()) + 10);
        result = run({});
    }
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("steps.json: step 2 (saveDocument:): "));
    EXPECT_THAT(result.err.toStdString(), HasSubstr("a.pdf could not be written: File too large"));
    EXPECT_THAT(result.err.toStdString(), testing::Not(HasSubstr("leafwright-run-")));
    expectNothingWritten();
}

TEST_F(Running, OfADamagedFileTheResultIsNamed) {
    original.truncate(original.lastIndexOf("startxref"));
    saveBytes(pdf, original);
    const QString out = dir.path("out.pdf");
    const CliResult result = run({"-o", out, "-q"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "leafwright-cli: " + out.toUtf8() + ": it was damaged and has been written new\n");
    expectNothingWritten();
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
