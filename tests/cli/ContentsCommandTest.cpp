#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/FakeProgram.h"

#include <QDir>

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;

/// Runs `contents` on the book and further options.
CliResult runContents(const TempDir &dir, const QStringList &options = {}) {
    const QString path = savePdfWithContents(dir, "in.pdf");
    return runCli(QStringList{"contents", "-q", path, "-o", dir.path("out.pdf")} + options);
}

/// Saves a PDF without text and with an outline of one entry, "Old Entry".
QString saveScan(const TempDir &dir, const QString &name, int pages = 2) {
    PdfBuilder pdf;
    for (int i = 0; i < pages; ++i)
        pdf.addPage("0.5 g 100 100 200 300 re f");
    addOutline(pdf, {{"(Old Entry)", "[" + pdf.pageReference(0) + " /XYZ 10 20 null]"}});
    pdf.save(dir.path(name));
    return dir.path(name);
}

TEST(ContentsCommand, WhatIsFoundReplacesTheOutline) {
    const TempDir dir;
    const CliResult result = runContents(dir);
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), outlineOfContents);
    EXPECT_EQ(plusLinesOf(dir.path("in.pdf")), "+ @2 Old Entry\n");
}

TEST(ContentsCommand, TheOriginalStandsInFrontOfTheResult) {
    const TempDir dir;
    runContents(dir);
    EXPECT_TRUE(bytesOf(dir.path("out.pdf")).startsWith(bytesOf(dir.path("in.pdf"))));
}

TEST(ContentsCommand, KeepAddsTheEntriesBehindTheOutline) {
    const TempDir dir;
    EXPECT_EQ(runContents(dir, {"--keep"}).exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @2 Old Entry\n" + outlineOfContents);
}

TEST(ContentsCommand, MaxDepthDropsDeeperEntries) {
    const TempDir dir;
    EXPECT_EQ(runContents(dir, {"--max-depth", "1"}).exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @2 1 Soil\n+ @5 2 Water\n+ @8 3 Light\n");
}

TEST(ContentsCommand, PagesWithTheSameLabelAreToldApart) {
    const TempDir dir;
    const QString path = savePdfWithContents(dir, "in.pdf", "<< /Nums [0 << /P (A) >>] >>");
    const CliResult result = runCli({"contents", path, "-o", dir.path("out.pdf")});
    ASSERT_EQ(result.exitCode, 0) << result.err.constData();
    const QJsonArray outline = outlineOf(dir.path("out.pdf"));
    ASSERT_EQ(outline.size(), 3);
    EXPECT_EQ(outline[0].toObject()["pageIndex"].toInt(), 1);
    EXPECT_EQ(outline[1].toObject()["pageIndex"].toInt(), 4);
}

TEST(ContentsCommand, ReportTellsOfEachEntry) {
    const TempDir dir;
    EXPECT_EQ(runContents(dir, {"--report", dir.path("report.json")}).exitCode, 0);
    const QJsonArray report = parsedJson(bytesOf(dir.path("report.json"))).array();
    ASSERT_EQ(report.size(), 3);
    const QJsonObject first = report[0].toObject();
    EXPECT_EQ(first["title"], "1 Soil");
    EXPECT_EQ(first["pageLabel"], "2");
    EXPECT_EQ(first["pageIndex"], 1);
    EXPECT_EQ(first["level"], 1);
    EXPECT_NEAR(first["point"][0].toDouble(), 72, 1);
    EXPECT_NEAR(first["point"][1].toDouble(), 715, 15);
    EXPECT_TRUE(first["evidence"].toArray().contains("printed"));
    EXPECT_TRUE(first["evidence"].toArray().contains("style"));
    EXPECT_GT(first["confidence"].toDouble(), 0.5);
    EXPECT_LE(first["confidence"].toDouble(), 1);
    const QJsonArray below = first["children"].toArray();
    ASSERT_EQ(below.size(), 2);
    EXPECT_EQ(below[1].toObject()["title"], "1.2 Compost");
    EXPECT_EQ(below[1].toObject()["level"], 2);
}

TEST(ContentsCommand, ReportToStandardOutput) {
    const TempDir dir;
    const CliResult result = runContents(dir, {"--report", "-"});
    EXPECT_EQ(parsedJson(result.out).array().size(), 3);
}

TEST(ContentsCommand, ReportThatCannotBeWritten) {
    const TempDir dir;
    const CliResult result = runContents(dir, {"--report", dir.path("none/report.json")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("none/report.json could not be written"));
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf"))) << "nor is the PDF, then";
}

TEST(ContentsCommand, ExplainPrintsTheStages) {
    const TempDir dir;
    const CliResult result = runContents(dir, {"--explain"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.out.toStdString(), HasSubstr("What is in the Ground"));
}

TEST(ContentsCommand, PageImagesAreRefused) {
    const TempDir dir;
    const QString path = saveScan(dir, "scan.pdf");
    const CliResult result = runCli({"contents", path, "-o", dir.path("out.pdf")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(),
                HasSubstr("scan.pdf: page images without text; run text recognition first"));
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
}

/// Saves a book of ten pages, of which the first four have text.
QString saveHalfScan(const TempDir &dir, const QString &name) {
    std::string text;
    for (int line = 0; line < 10; ++line)
        text += PdfBuilder::showText("F1", 10, 72, 700 - 12 * line,
                                     "Plain text, so that nobody takes it for an image.");
    PdfBuilder pdf;
    for (int i = 0; i < 4; ++i)
        pdf.addPage(text);
    for (int i = 4; i < 10; ++i)
        pdf.addPage("0.5 g 100 100 200 300 re f");
    pdf.save(dir.path(name));
    return dir.path(name);
}

TEST(ContentsCommand, SaysThatManyPagesHaveNoText) {
    const TempDir dir;
    const CliResult result = runCli({"contents", saveHalfScan(dir, "in.pdf"), "-o", dir.path("out.pdf")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err.toStdString(),
                HasSubstr("in.pdf: 6 of 10 pages are without text; --ocr recognises that of images"));
}

TEST(ContentsCommand, RecognisesThePagesWithoutTextWhereOthersHaveSome) {
    const TempDir dir;
    const FakeProgram program("ocrmypdf",
                              "while [ \"$1\" != -- ]; do shift; done\n"
                              "cp \"$(dirname \"$0\")/book.pdf\" \"$3\"\n");
    QFile::copy(savePdfWithContents(dir, "book.pdf"), program.path("book.pdf"));
    const CliResult result =
        runCli({"contents", "-q", saveHalfScan(dir, "in.pdf"), "-o", dir.path("out.pdf"), "--ocr"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(
        plusLinesOf(dir.path("out.pdf")),
        "+ @5 2 Water\n++ @6 2.1 Rain\n++ @7 2.2 Wells\n+ @8 3 Light\n++ @9 3.1 Shade\n++ @10 3.2 Glass\n")
        << "the pages that have text are read as they are";
}

TEST(ContentsCommand, NothingIsFoundWhereThereIsNoPage) {
    const TempDir dir;
    PdfBuilder().save(dir.path("in.pdf"));
    const FakeProgram program("ocrmypdf", "exit 1\n");
    for (const QStringList &more : {QStringList(), QStringList("--ocr")}) {
        const CliResult result =
            runCli(QStringList{"contents", dir.path("in.pdf"), "-o", dir.path("out.pdf")} + more);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_THAT(result.err.toStdString(), HasSubstr("in.pdf: no headings were found; the outline stays"));
    }
}

TEST(ContentsCommand, OutlineStaysWhereNothingIsFound) {
    const TempDir dir;
    PdfBuilder pdf;
    std::string page;
    for (int line = 0; line < 40; ++line)
        page +=
            PdfBuilder::showText("F1", 10, 72, 700 - 12 * line, "nothing but a plain line of a long letter,");
    pdf.addPage(page);
    addOutline(pdf, {{"(Old Entry)", "[" + pdf.pageReference(0) + " /XYZ 10 20 null]"}});
    pdf.save(dir.path("letter.pdf"));
    const CliResult result = runCli(
        {"contents", dir.path("letter.pdf"), "-o", dir.path("out.pdf"), "--report", dir.path("report.json")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err.toStdString(),
                HasSubstr("letter.pdf: no headings were found; the outline stays as it was"));
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @1 Old Entry\n");
    EXPECT_EQ(parsedJson(bytesOf(dir.path("report.json"))).array(), QJsonArray()) << "of what was found";
}

TEST(ContentsCommand, ManyFilesWithAReportEach) {
    const TempDir dir;
    const QString one = savePdfWithContents(dir, "one.pdf");
    const QString two = savePdfWithContents(dir, "two.pdf");
    const QString scan = saveScan(dir, "scan.pdf");
    const CliResult result =
        runCli({"contents", one, scan, two, "--out-dir", dir.path("out"), "--report", dir.path("reports")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("1 of 3 files failed"));
    EXPECT_EQ(plusLinesOf(dir.path("out/one.pdf")), outlineOfContents);
    EXPECT_EQ(plusLinesOf(dir.path("out/two.pdf")), outlineOfContents);
    EXPECT_EQ(QDir(dir.path("reports")).entryList(QDir::Files), (QStringList{"one.json", "two.json"}));
}

TEST(ContentsCommand, WhatIsToldOfOneFileIsPrintedWithAFolderToo) {
    const TempDir dir;
    const QString path = savePdfWithContents(dir, "in.pdf");
    const CliResult explained = runCli({"contents", path, "--out-dir", dir.path("out"), "--explain"});
    EXPECT_EQ(explained.exitCode, 0);
    EXPECT_THAT(explained.out.toStdString(), HasSubstr("What is in the Ground"));
    const CliResult report = runCli({"contents", path, "--out-dir", dir.path("out"), "--report", "-"});
    EXPECT_EQ(report.exitCode, 0) << report.err.constData();
    EXPECT_EQ(parsedJson(report.out).array().size(), 3);
}

TEST(ContentsCommand, WrongUsage) {
    const TempDir dir;
    const QString path = savePdf(dir, "in.pdf", 1);
    const QString out = dir.path("out.pdf");
    for (const QStringList &wrong : {QStringList{path},
                                     {path, "-o", out, "--out-dir", dir.path("out")},
                                     {path, "-o", out, "--max-depth", "0"},
                                     {path, "-o", out, "--max-depth", "x"},
                                     {path, "-o", out, "--deeper", "--as-printed"},
                                     {path, "-o", out, "--explain", "--report", "-"},
                                     {path, path, "-o", out},
                                     {path, path, "--out-dir", dir.path("out")}}) {
        EXPECT_EQ(runCli(QStringList{"contents"} + wrong).exitCode, 2) << qPrintable(wrong.join(' '));
    }
    const QString other = savePdf(dir, "other.pdf", 1);
    EXPECT_EQ(runCli({"contents", path, other, "--out-dir", dir.path("out"), "--explain"}).exitCode, 2);
    EXPECT_EQ(runCli({"contents", path, other, "--out-dir", dir.path("out"), "--report", "-"}).exitCode, 2);
}

TEST(ContentsCommand, LockedAndMissingFilesAreNamed) {
    const TempDir dir;
    const CliResult locked =
        runCli({"contents", saveLockedPdf(dir, "locked.pdf"), "-o", dir.path("out.pdf")});
    EXPECT_EQ(locked.exitCode, 1);
    EXPECT_THAT(locked.err.toStdString(), HasSubstr("locked.pdf: this PDF is locked"));
    const CliResult missing = runCli({"contents", dir.path("none.pdf"), "-o", dir.path("out.pdf")});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_THAT(missing.err.toStdString(), HasSubstr("none.pdf: there is no such file"));
}

TEST(ContentsCommand, ScanIsReadFromACopyWithRecognisedText) {
    const TempDir dir;
    const QString scan = saveScan(dir, "scan.pdf", 10);
    const FakeProgram program("ocrmypdf",
                              "while [ \"$1\" != -- ]; do shift; done\n"
                              "cp \"$(dirname \"$0\")/book.pdf\" \"$3\"\n");
    QFile::copy(savePdfWithContents(dir, "book.pdf"), program.path("book.pdf"));
    const CliResult result = runCli({"contents", scan, "-o", dir.path("out.pdf"), "--ocr"});
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), outlineOfContents);
    EXPECT_TRUE(bytesOf(dir.path("out.pdf")).startsWith(bytesOf(scan)));
}

TEST(ContentsCommand, LanguageToRecogniseImpliesRecognition) {
    const TempDir dir;
    const FakeProgram program("ocrmypdf", "echo \"$@\" > \"$(dirname \"$0\")/arguments\"; exit 1\n");
    const CliResult result =
        runCli({"contents", saveScan(dir, "scan.pdf"), "-o", dir.path("out.pdf"), "--ocr-language", "deu"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(bytesOf(program.path("arguments")).toStdString(), HasSubstr("--language deu"));
}

TEST(ContentsCommand, CopyWithOtherPagesIsRefused) {
    const TempDir dir;
    const FakeProgram program("ocrmypdf",
                              "while [ \"$1\" != -- ]; do shift; done\n"
                              "cp \"$(dirname \"$0\")/book.pdf\" \"$3\"\n");
    QFile::copy(savePdfWithContents(dir, "book.pdf"), program.path("book.pdf"));
    const CliResult result =
        runCli({"contents", saveScan(dir, "scan.pdf", 9), "-o", dir.path("out.pdf"), "--ocr"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("the copy with recognised text has other pages"));
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
}

TEST(ContentsCommand, WithoutTheProgramItsNameIsSaid) {
    const TempDir dir;
    const QString scan = saveScan(dir, "scan.pdf");
    const FakeProgram none("ocrmypdf", QByteArray());
    const CliResult result = runCli({"contents", scan, "-o", dir.path("out.pdf"), "--ocr"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("--ocr needs the program ocrmypdf"));
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
}

}  // namespace
}  // namespace leafwright::test
