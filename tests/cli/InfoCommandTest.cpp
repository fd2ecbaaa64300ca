#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;

/// What `info` prints of a file.
QJsonObject infoOf(const QString &path) {
    const CliResult result = runCli({"info", "-q", path});
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(result.err, "");
    return parsedJson(result.out).object();
}

QJsonObject expectedInfo(int pages, const QString &version) {
    return {{"pages", pages},    {"version", version}, {"locked", false},    {"encrypted", false},
            {"repaired", false}, {"signed", false},    {"hasOutline", false}};
}

QJsonObject with(QJsonObject info, const QString &key) {
    info[key] = true;
    return info;
}

TEST(InfoCommand, PlainFile) {
    const TempDir dir;
    EXPECT_EQ(infoOf(savePdf(dir, "a.pdf", 3)), expectedInfo(3, "1.4"));
}

TEST(InfoCommand, FileWithoutPages) {
    const TempDir dir;
    PdfBuilder().save(dir.path("a.pdf"));
    EXPECT_EQ(infoOf(dir.path("a.pdf")), expectedInfo(0, "1.4"));
}

TEST(InfoCommand, FileWithOutline) {
    const TempDir dir;
    EXPECT_EQ(infoOf(savePdf(dir, "a.pdf", 2, {"Intro"})), with(expectedInfo(2, "1.4"), "hasOutline"));
}

TEST(InfoCommand, OutlineWithoutEntriesIsNone) {
    const TempDir dir;
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    addOutline(pdf, {});
    pdf.save(dir.path("a.pdf"));
    EXPECT_EQ(infoOf(dir.path("a.pdf")), expectedInfo(1, "1.4"));
}

PdfBuilder::Options madeAs(const std::string &version) {
    PdfBuilder::Options options;
    options.version = version;
    return options;
}

TEST(InfoCommand, VersionIsTheLaterOfHeaderAndCatalog) {
    const TempDir dir;
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    pdf.setCatalogEntry("/Version", "/1.7");
    pdf.save(dir.path("a.pdf"), madeAs("1.5"));
    EXPECT_EQ(infoOf(dir.path("a.pdf")), expectedInfo(1, "1.7"));
    pdf.setCatalogEntry("/Version", "/1.2");
    pdf.save(dir.path("a.pdf"), madeAs("1.5"));
    EXPECT_EQ(infoOf(dir.path("a.pdf")), expectedInfo(1, "1.5"));
}

TEST(InfoCommand, LockedFileTellsNoPages) {
    const TempDir dir;
    EXPECT_EQ(infoOf(saveLockedPdf(dir, "a.pdf")), with(with(expectedInfo(0, "1.7"), "locked"), "encrypted"));
}

TEST(InfoCommand, EncryptedFileThatOpensWithoutPassword) {
    const TempDir dir;
    EXPECT_EQ(infoOf(saveEncryptedPdf(dir, "a.pdf")),
              with(with(expectedInfo(2, "1.7"), "encrypted"), "hasOutline"));
}

TEST(InfoCommand, DamagedFileIsRepaired) {
    const TempDir dir;
    QByteArray bytes = bytesOf(savePdf(dir, "a.pdf", 2));
    const auto startxref = bytes.lastIndexOf("startxref");
    ASSERT_GT(startxref, 0);
    saveBytes(dir.path("damaged.pdf"), bytes.left(startxref));
    EXPECT_EQ(infoOf(dir.path("damaged.pdf")), with(expectedInfo(2, "1.4"), "repaired"));
}

TEST(InfoCommand, PipeIsNoFile) {
    const TempDir dir;
    ASSERT_EQ(::mkfifo(QFile::encodeName(dir.path("pipe")).constData(), 0600), 0);
    const CliResult result = runCli({"info", dir.path("pipe")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(),
                HasSubstr("pipe: the file can't be read: it is a pipe or a device, and not a file"));
}

TEST(InfoCommand, SignedFile) {
    const TempDir dir;
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    const int field = pdf.addObject("<< /FT /Sig /T (S) /V << /Type /Sig /Contents <00> >> >>");
    pdf.setCatalogEntry("/AcroForm", "<< /Fields [" + PdfBuilder::reference(field) + "] >>");
    pdf.save(dir.path("a.pdf"));
    EXPECT_EQ(infoOf(dir.path("a.pdf")), with(expectedInfo(1, "1.4"), "signed"));
}

TEST(InfoCommand, EmptySignatureFieldIsNoSignature) {
    const TempDir dir;
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    const int field = pdf.addObject("<< /FT /Sig /T (S) >>");
    pdf.setCatalogEntry("/AcroForm", "<< /Fields [" + PdfBuilder::reference(field) + "] >>");
    pdf.save(dir.path("a.pdf"));
    EXPECT_EQ(infoOf(dir.path("a.pdf")), expectedInfo(1, "1.4"));
}

TEST(LabelsCommand, PagesWithoutLabelsHaveTheirNumbers) {
    const TempDir dir;
    const CliResult result = runCli({"labels", savePdf(dir, "a.pdf", 3)});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(parsedJson(result.out).array(), (QJsonArray{"1", "2", "3"}));
}

TEST(LabelsCommand, LabelsOfTheFile) {
    const TempDir dir;
    PdfBuilder pdf;
    pdf.addNumberedPages(5);
    pdf.setCatalogEntry("/PageLabels",
                        "<< /Nums [0 << /S /r >> 2 << /S /D >> 4 << /P (Back \"cover\" \\\\) >>] >>");
    pdf.save(dir.path("a.pdf"));
    const CliResult result = runCli({"labels", dir.path("a.pdf")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(parsedJson(result.out).array(), (QJsonArray{"i", "ii", "1", "2", "Back \"cover\" \\"}));
}

TEST(LabelsCommand, LockedFileIsRefused) {
    const TempDir dir;
    const CliResult result = runCli({"labels", saveLockedPdf(dir, "a.pdf")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("this PDF is locked"));
    EXPECT_EQ(result.out, "");
}

}  // namespace
}  // namespace leafwright::test
