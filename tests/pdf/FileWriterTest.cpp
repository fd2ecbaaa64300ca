#include "support/CliRun.h"
#include "support/OpenPdf.h"
#include "support/OutlineText.h"
#include "support/RawPdf.h"
#include "support/TempDir.h"

#include <QDir>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::contentOf;
using test::linesByQpdf;
using test::makeOutline;
using test::openPdf;
using test::PdfBuilder;
using test::RawPdf;
using test::TempDir;
using testing::ElementsAre;

std::unique_ptr<PDFOutline> newOutline() {
    return makeOutline({{"New", PDFDestination{0, {72, 700}}, {{"Below", PDFDestination{0, {72, 600}}}}}});
}

PdfBuilder threePages() {
    PdfBuilder pdf;
    pdf.addNumberedPages(3);
    test::addOutline(pdf, {{"(Old)", "[" + pdf.pageReference(1) + " /Fit]"}});
    return pdf;
}

/// Gives the file a new outline in a second file. Expects that this is the first one with something behind
/// it, and that the witnesses find nothing wrong.
void expectAppended(const TempDir &dir, const QByteArray &original) {
    test::writeFile(dir.path("in.pdf"), original);
    const auto document = openPdf(dir.path("in.pdf"));
    EXPECT_FALSE(document->wasRepaired());
    document->setOutlineRoot(newOutline());
    const auto error = document->writeToFile(dir.path("out.pdf"));
    ASSERT_FALSE(error) << error->message.toStdString();

    const QByteArray written = contentOf(dir.path("out.pdf"));
    EXPECT_TRUE(written.startsWith(original));
    EXPECT_EQ(written.mid(original.size()).count("startxref"), 1);
    const auto check = test::runProgram("qpdf", {"--check", dir.path("out.pdf")});
    EXPECT_EQ(check.exitCode, 0) << check.out.toStdString() << check.err.toStdString();
    EXPECT_THAT(linesByQpdf(dir.path("out.pdf")),
                ElementsAre("New -> 0 (72, 700)", "  Below -> 0 (72, 600)"));
    const auto poppler = test::runProgram("pdfinfo", {"-dests", dir.path("out.pdf")});
    EXPECT_EQ(poppler.exitCode, 0);
    EXPECT_EQ(poppler.err, "");
    const auto again = openPdf(dir.path("out.pdf"));
    EXPECT_FALSE(again->wasRepaired());
    EXPECT_EQ(test::linesOf(again->outlineRoot()), linesByQpdf(dir.path("out.pdf")));
}

void expectAppended(const PdfBuilder &pdf, const PdfBuilder::Options &options) {
    const TempDir dir;
    pdf.save(dir.path("made.pdf"), options);
    expectAppended(dir, contentOf(dir.path("made.pdf")));
    const auto text = test::runProgram("pdftotext", {dir.path("out.pdf"), "-"});
    EXPECT_THAT(text.out.simplified().toStdString(), "Page 1 Page 2 Page 3");
}

TEST(Appending, ToACrossReferenceTable) {
    expectAppended(threePages(), {});
}

TEST(Appending, ToACrossReferenceStream) {
    expectAppended(threePages(), {.version = "1.5", .objectStreams = true});
}

TEST(Appending, ToALinearizedFile) {
    expectAppended(threePages(), {.linearized = true});
    expectAppended(threePages(), {.version = "1.5", .objectStreams = true, .linearized = true});
}

TEST(Appending, ToATableAfterAStream) {
    RawPdf pdf = test::rawPdfOfOnePage();
    pdf.endWithStream(4).object(5, "(changed)").endWithTable();
    expectAppended(TempDir(), pdf.bytes());
}

TEST(Appending, ToAStreamAfterATable) {
    RawPdf pdf = test::rawPdfOfOnePage();
    pdf.endWithTable().object(5, "(changed)").endWithStream(4);
    expectAppended(TempDir(), pdf.bytes());
}

TEST(Appending, ToAHybridFile) {
    RawPdf pdf = test::rawPdfOfOnePage("/Extra 5 0 R");
    pdf.object(5, "<< /Length 2 >>\nstream\nab\nendstream").endHybrid(4, {5});
    expectAppended(TempDir(), pdf.bytes());
}

TEST(Appending, ToManySections) {
    RawPdf pdf = test::rawPdfOfOnePage();
    pdf.endWithTable();
    for (int number = 10; number < 60; number += 2)
        pdf.object(number, "(change)").endWithStream(number + 1).object(number, "(again)").endWithTable();
    expectAppended(TempDir(), pdf.bytes());
}

TEST(Appending, ToAFileWithBytesBehindItsEnd) {
    expectAppended(TempDir(), test::rawPdfOfOnePage().endWithTable().bytes() + "\n\n   ");
}

TEST(Appending, ToAFileWithoutALineBreakAtItsEnd) {
    expectAppended(TempDir(), test::rawPdfOfOnePage().endWithTable().bytes().trimmed());
}

TEST(Appending, EncryptedFileStaysReadable) {
    const TempDir dir;
    threePages().save(dir.path("in.pdf"), {.ownerPassword = "secret"});
    const auto document = openPdf(dir.path("in.pdf"));
    document->setOutlineRoot(makeOutline({{"Größe", PDFDestination{1, {72, 700}}}}));
    ASSERT_FALSE(document->writeToFile(dir.path("out.pdf")));
    EXPECT_TRUE(contentOf(dir.path("out.pdf")).startsWith(contentOf(dir.path("in.pdf"))));
    EXPECT_THAT(linesByQpdf(dir.path("out.pdf")), ElementsAre("Größe -> 1 (72, 700)"));
}

TEST(Writing, RepairedFileIsWrittenWhole) {
    const TempDir dir;
    threePages().save(dir.path("in.pdf"));
    const QByteArray whole = contentOf(dir.path("in.pdf"));
    test::writeFile(dir.path("in.pdf"), whole.left(whole.lastIndexOf("xref\n0 ") + 20));
    const auto document = openPdf(dir.path("in.pdf"));
    ASSERT_TRUE(document->wasRepaired());
    document->setOutlineRoot(newOutline());
    ASSERT_FALSE(document->writeToFile(dir.path("out.pdf")));
    const auto check = test::runProgram("qpdf", {"--check", dir.path("out.pdf")});
    EXPECT_EQ(check.exitCode, 0) << check.err.toStdString();
    EXPECT_THAT(linesByQpdf(dir.path("out.pdf")),
                ElementsAre("New -> 0 (72, 700)", "  Below -> 0 (72, 600)"));
    const auto again = openPdf(dir.path("out.pdf"));
    EXPECT_FALSE(again->wasRepaired());
    ASSERT_EQ(again->pageCount(), 3);
    EXPECT_EQ(test::textOf(*again, 2), "Page 3\n");
}

TEST(Writing, TwiceAppendsOneSection) {
    const TempDir dir;
    threePages().save(dir.path("in.pdf"));
    const auto document = openPdf(dir.path("in.pdf"));
    document->setOutlineRoot(newOutline());
    ASSERT_FALSE(document->writeToFile(dir.path("one.pdf")));
    ASSERT_FALSE(document->writeToFile(dir.path("two.pdf")));
    EXPECT_EQ(contentOf(dir.path("one.pdf")), contentOf(dir.path("two.pdf")));
}

TEST(Writing, OverTheFileItselfAgainAndAgain) {
    const TempDir dir;
    const QString path = dir.path("in.pdf");
    threePages().save(path);
    const QByteArray original = contentOf(path);
    const auto document = openPdf(path);
    document->setOutlineRoot(newOutline());
    ASSERT_FALSE(document->writeToFile(path));
    const QByteArray first = contentOf(path);
    EXPECT_TRUE(first.startsWith(original));
    EXPECT_EQ(test::textOf(*document, 1), "Page 2\n");

    ASSERT_FALSE(document->writeToFile(path));
    EXPECT_EQ(contentOf(path), first);
    document->setOutlineRoot(makeOutline({{"Newer"}}));
    ASSERT_FALSE(document->writeToFile(path));
    EXPECT_TRUE(contentOf(path).startsWith(original));
    EXPECT_THAT(linesByQpdf(path), ElementsAre("Newer"));
    EXPECT_EQ(test::textOf(*document, 2), "Page 3\n");
}

TEST(Writing, OfWhatWasWrittenBefore) {
    const TempDir dir;
    const QString path = dir.path("in.pdf");
    threePages().save(path);
    for (int i = 0; i < 3; ++i) {
        const auto document = openPdf(path);
        document->setOutlineRoot(makeOutline({{QString::number(i), PDFDestination{i, {1, 2}}}}));
        ASSERT_FALSE(document->writeToFile(path));
    }
    EXPECT_THAT(linesByQpdf(path), ElementsAre("2 -> 2 (1, 2)"));
    EXPECT_EQ(test::runProgram("qpdf", {"--check", path}).exitCode, 0);
}

TEST(Writing, ALockedFileIsNotWritten) {
    const TempDir dir;
    const auto document = openPdf(threePages(), {.userPassword = "secret"});
    const auto error = document->writeToFile(dir.path("out.pdf"));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, PDFError::Kind::WriteFailed);
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf"))) << "its outline would be lost";
}

TEST(Writing, MissingFolderIsAnError) {
    const TempDir dir;
    const auto document = openPdf(threePages());
    const auto error = document->writeToFile(dir.path("none/out.pdf"));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, PDFError::Kind::WriteFailed);
    EXPECT_TRUE(error->message.contains(dir.path("none/out.pdf")));
}

TEST(Writing, FailureLeavesTheOldFile) {
    const TempDir dir;
    const auto document = openPdf(threePages());
    // A folder of that name can't be replaced, not even by those who may write everywhere.
    ASSERT_TRUE(QDir(dir.path("")).mkdir("out.pdf"));
    test::writeFile(dir.path("out.pdf/old.txt"), "old");
    const auto error = document->writeToFile(dir.path("out.pdf"));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, PDFError::Kind::WriteFailed);
    EXPECT_EQ(contentOf(dir.path("out.pdf/old.txt")), "old");
    EXPECT_THAT(QDir(dir.path("")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                ElementsAre("out.pdf"));
}

TEST(Writing, OriginalCutShortLeavesTheOldFile) {
    const TempDir dir;
    threePages().save(dir.path("in.pdf"));
    test::writeFile(dir.path("out.pdf"), "old");
    const auto document = openPdf(dir.path("in.pdf"));
    document->setOutlineRoot(newOutline());
    ASSERT_TRUE(QFile::resize(dir.path("in.pdf"), 100));
    const auto error = document->writeToFile(dir.path("out.pdf"));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, PDFError::Kind::WriteFailed);
    EXPECT_EQ(contentOf(dir.path("out.pdf")), "old");
}

}  // namespace
}  // namespace leafwright
