#include "pdf/mupdf/Context.h"
#include "pdf/mupdf/Walk.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/OpenPdf.h"
#include "support/OutlineText.h"
#include "support/RawPdf.h"
#include "support/TooManyNames.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openBytes;
using test::openPdf;
using test::PdfBuilder;
using test::RawPdf;
using test::rawPdfOfOnePage;
using test::TempDir;
using testing::HasSubstr;

QByteArray ref(int number) {
    return QByteArray::number(number) + " 0 R";
}

/// 40 lists, objects 100 to 139: each holds two dictionaries without a number, and each of these leads to the
/// next list. So there are 2^40 ways to the last one. @param key leads from a dictionary to a list
void addSharedLists(RawPdf &pdf, const QByteArray &key, const QByteArray &last) {
    constexpr int lists = 40;
    for (int i = 0; i < lists; ++i) {
        const QByteArray node = "<< " + key + ' ' + ref(101 + i) + " >>";
        pdf.object(100 + i, i + 1 < lists ? '[' + node + node + ']' : last);
    }
}

TEST(HostileTree, SharedListsOfPages) {
    RawPdf pdf;
    pdf.object(1, "<< /Type /Catalog /Pages 2 0 R >>")
        .object(2, "<< /Type /Pages /Count 1 /Kids 100 0 R >>")
        .object(3, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] >>");
    addSharedLists(pdf, "/Kids", "[3 0 R]");
    EXPECT_EQ(openBytes(pdf.endWithTable().bytes())->pageCount(), 1);
}

TEST(HostileTree, SharedListsOfLabels) {
    RawPdf pdf = rawPdfOfOnePage("/PageLabels << /Kids 100 0 R >>");
    addSharedLists(pdf, "/Kids", "[<< /Nums [0 << /P (A) >>] >>]");
    EXPECT_EQ(openBytes(pdf.endWithTable().bytes())->pageLabel(0), "A");
}

TEST(HostileTree, SharedListsOfNames) {
    RawPdf pdf = rawPdfOfOnePage("/Names << /Dests << /Kids 100 0 R >> >> /Outlines << /First 10 0 R >>");
    pdf.object(10, "<< /Title (a) /Dest (there) >>");
    addSharedLists(pdf, "/Kids", "[<< /Names [(there) [3 0 R /Fit]] >>]");
    const auto document = openBytes(pdf.endWithTable().bytes());
    EXPECT_TRUE(document->outlineRoot().childAtIndex(0).destination());
}

TEST(HostileTree, SharedListsOfFields) {
    RawPdf pdf = rawPdfOfOnePage("/AcroForm << /Fields 100 0 R >>");
    addSharedLists(pdf, "/Kids", "[<< /FT /Sig /V << /Type /Sig >> >>]");
    EXPECT_TRUE(openBytes(pdf.endWithTable().bytes())->isSigned());
}

TEST(HostileTree, WalkEndsAfterSomeSteps) {
    mupdf::Walk walk;
    for (int i = 0; i < mupdf::Walk::mostSteps; ++i)
        walk.step();
    EXPECT_THROW(walk.step(), mupdf::Error);
}

/// Each must not be found by walking to it from the top.
TEST(HostileTree, ManyPagesWithoutNumbers) {
    constexpr int count = 20'000;
    QByteArray kids;
    for (int i = 0; i < count; ++i)
        kids += "<< /Type /Page /MediaBox [0 0 " + QByteArray::number(100 + i) + " 100] >>\n";
    RawPdf pdf;
    pdf.object(1, "<< /Type /Catalog /Pages 2 0 R /Outlines << /First 10 0 R >> >>")
        .object(2, "<< /Type /Pages /Count 20000 /Kids [" + kids + "] >>")
        .object(10, "<< /Title (a) /Dest [19999 /FitH 7] >>");
    const auto document = openBytes(pdf.endWithTable().bytes());
    ASSERT_EQ(document->pageCount(), count);
    EXPECT_EQ(document->page(0)->mediaBox().width, 100);
    EXPECT_EQ(document->page(count - 1)->mediaBox().width, 100 + count - 1);
    EXPECT_EQ(document->outlineRoot().childAtIndex(0).destination()->pageIndex, count - 1);
}

/// A cross-reference stream whose entries claim to be gigabytes long is damage.
TEST(HostileTree, CrossReferenceEntriesOfGigabytes) {
    RawPdf pdf = rawPdfOfOnePage();
    QByteArray bytes = pdf.endWithStream(9).bytes();
    for (const char *widths :
         {"/W [1 2147483647 1]", "/W [1 2147483647 2147483647]", "/W [2147483647 4 1]"}) {
        const auto document = openBytes(QByteArray(bytes).replace("/W [1 8 1]", widths));
        EXPECT_EQ(document->pageCount(), 1);
        EXPECT_TRUE(document->wasRepaired());
    }
}

/// Saves a file whose catalog has further entries, and in which object 5 is a string of 60,000 characters.
QString saveWithLongString(const TempDir &dir, int pages, const QByteArray &entries,
                           const std::vector<QByteArray> &objects = {}) {
    QByteArray kids;
    for (int i = 0; i < pages; ++i)
        kids += "3 0 R ";
    RawPdf pdf;
    pdf.object(1, "<< /Type /Catalog /Pages 2 0 R " + entries + " >>")
        .object(2, "<< /Type /Pages /Count " + QByteArray::number(pages) + " /Kids [" + kids + "] >>")
        .object(3, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Resources << >> >>")
        .object(5, '(' + QByteArray(60'000, 'x') + ')');
    for (int i = 0; i < std::ssize(objects); ++i)
        pdf.object(10 + i, objects[static_cast<size_t>(i)]);
    test::writeFile(dir.path("long.pdf"), pdf.endWithTable().bytes());
    return dir.path("long.pdf");
}

TEST(HostileMemory, LongPrefixOnManyPages) {
    const TempDir dir;
    const QString path = saveWithLongString(dir, 20'000, "/PageLabels << /Nums [0 << /S /D /P 5 0 R >>] >>");
    const auto document = openPdf(path);
    ASSERT_TRUE(document->readProblem());
    EXPECT_EQ(document->readProblem()->kind, PDFError::Kind::OutOfMemory);
    EXPECT_EQ(document->pageLabel(19'999), "20000") << "as if there were no labels";
    EXPECT_TRUE(document->writeToFile(dir.path("out.pdf")));
    for (const QStringList &command : {QStringList{"labels", path}, QStringList{"info", path},
                                       QStringList{"autotoc", path, "-o", dir.path("out.pdf")}}) {
        const auto result = test::runCli(command);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_THAT(result.err.toStdString(), HasSubstr("it takes more memory than a file may have"));
    }
}

TEST(HostileMemory, LongPrefixOfManyRanges) {
    const TempDir dir;
    QByteArray ranges;
    for (int i = 0; i < 20'000; ++i)
        ranges += QByteArray::number(i) + " << /P 5 0 R >> ";
    const auto document = openPdf(saveWithLongString(dir, 1, "/PageLabels << /Nums [" + ranges + "] >>"));
    EXPECT_EQ(document->readProblem()->kind, PDFError::Kind::OutOfMemory);
}

TEST(HostileMemory, LongTitleOfManyEntries) {
    constexpr int count = 5000;
    std::vector<QByteArray> entries;
    for (int i = 0; i < count; ++i)
        entries.push_back("<< /Title 5 0 R /Next " + ref(11 + i) + " >>");
    const TempDir dir;
    const auto document = openPdf(saveWithLongString(dir, 1, "/Outlines << /First 10 0 R >>", entries));
    EXPECT_FALSE(document->readProblem());
    EXPECT_EQ(document->outlineRoot().numberOfChildren(), 0);
    EXPECT_EQ(document->readProblem()->kind, PDFError::Kind::OutOfMemory);
}

TEST(HostileMemory, LongNameOfManyDestinations) {
    QByteArray names;
    for (int i = 0; i < 5000; ++i)
        names += "5 0 R null ";
    const TempDir dir;
    const auto document = openPdf(saveWithLongString(
        dir, 1, "/Names << /Dests << /Names [" + names + "] >> >> /Outlines << /First 10 0 R >>",
        {"<< /Title (a) /Dest (b) >>"}));
    EXPECT_EQ(document->outlineRoot().numberOfChildren(), 0);
    EXPECT_EQ(document->readProblem()->kind, PDFError::Kind::OutOfMemory);
}

TEST(HostileMemory, ContentsOfWhatCanNotAllBeReadAreNotWritten) {
    const TempDir dir;
    std::string content = PdfBuilder::showText("F2", 24, 72, 720, "Heading");
    for (int line = 0; line < 10; ++line)
        content += PdfBuilder::showText("F1", 10, 72, 680 - 12 * line, "Text, so that it is no page image.");
    PdfBuilder pdf;
    pdf.addPage(content);
    test::addTooManyNames(pdf);
    pdf.save(dir.path("names.pdf"));
    const auto result = test::runCli({"contents", dir.path("names.pdf"), "-o", dir.path("out.pdf")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("it takes more memory than a file may have"));
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
}

}  // namespace
}  // namespace leafwright
