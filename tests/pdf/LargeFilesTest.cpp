#include "pdf/mupdf/WholeFileWriter.h"
#include "support/CliRun.h"
#include "support/OpenPdf.h"
#include "support/OutlineText.h"
#include "support/RawPdf.h"
#include "support/TempDir.h"

#include <gmock/gmock.h>
#include <limits>
#include <sys/stat.h>

namespace leafwright {
namespace {

using test::linesByQpdf;
using test::makeOutline;
using test::openPdf;
using test::RawPdf;
using test::rawPdfOfOnePage;
using test::TempDir;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr qint64 GB = 1'000'000'000;
/// The farthest that a cross-reference table can tell of.
constexpr qint64 farthestInTable = 9'999'999'999;

/// What a file takes of the disk, in bytes.
qint64 roomOf(const QString &path) {
    struct stat status = {};
    EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &status), 0);
    return qint64{status.st_blocks} * 512;
}

/// Files of gigabytes, of which hardly anything is on the disk.
class LargeFiles : public testing::Test {
protected:
    /// Gives the file an outline in a second one, and has all witnesses look at that.
    void expectAppended(const RawPdf &pdf, int pageCount = 2) {
        if (!pdf.save(in) || roomOf(in) > GB / 10)
            GTEST_SKIP() << "the disk knows no sparse files of this size";
        const auto document = openPdf(in);
        ASSERT_FALSE(document->wasRepaired());
        ASSERT_EQ(document->pageCount(), pageCount);
        document->setOutlineRoot(makeOutline({{"New", PDFDestination{pageCount - 1, {72, 700}}}}));
        const auto error = document->writeToFile(out);
        ASSERT_FALSE(error) << error->message.toStdString();

        EXPECT_TRUE(pdf.isStartOf(out));
        EXPECT_LT(roomOf(out), GB / 10) << "holes are to stay holes";
        const auto check = test::runProgram("qpdf", {"--check", out});
        EXPECT_EQ(check.exitCode, 0) << check.out.toStdString() << check.err.toStdString();
        EXPECT_THAT(linesByQpdf(out), ElementsAre("New -> " + std::to_string(pageCount - 1) + " (72, 700)"));
        const auto poppler = test::runProgram("pdfinfo", {"-dests", out});
        EXPECT_EQ(poppler.exitCode, 0);
        EXPECT_EQ(poppler.err, "");
        EXPECT_FALSE(openPdf(out)->wasRepaired());
    }

    /// A file that had to be repaired is left alone.
    void expectRefused(const RawPdf &pdf) {
        if (!pdf.save(in) || roomOf(in) > GB / 10)
            GTEST_SKIP() << "the disk knows no sparse files of this size";
        const auto document = openPdf(in);
        ASSERT_TRUE(document->wasRepaired());
        const auto error = document->writeToFile(out);
        ASSERT_TRUE(error);
        EXPECT_THAT(error->message.toStdString(), HasSubstr("too large"));
        EXPECT_FALSE(QFile::exists(out));
    }

    /// A file of two pages, whose second one and whose end lie at the given offsets.
    static RawPdf twoPages(qint64 secondPage, qint64 end) {
        RawPdf pdf;
        pdf.object(1, "<< /Type /Catalog /Pages 2 0 R >>")
            .object(2, "<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 >>")
            .object(3, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Resources << >> >>")
            .goOnAt(secondPage)
            .object(4, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Resources << >> >>")
            .goOnAt(end);
        return pdf;
    }

    QByteArray sectionBehind(const RawPdf &pdf) const {
        QFile file(out);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly) && file.seek(pdf.size()));
        return file.readAll();
    }

    const TempDir dir;
    const QString in = dir.path("in.pdf");
    const QString out = dir.path("out.pdf");
};

/// By the size of the file.
class LargeFilesOf : public LargeFiles, public testing::WithParamInterface<qint64> {};

TEST_P(LargeFilesOf, Tables) {
    const qint64 end = GetParam();
    expectAppended(twoPages(std::min(end, farthestInTable) - 1000, end).endWithTable());
}

TEST_P(LargeFilesOf, Streams) {
    const qint64 end = GetParam();
    expectAppended(twoPages(end - 1000, end).endWithStream(5));
}

TEST_P(LargeFilesOf, StreamsBehindTables) {
    const qint64 end = GetParam();
    expectAppended(
        twoPages(GB, GB + 1000).endWithTable().object(6, "(changed)").goOnAt(end).endWithStream(5));
}

TEST_P(LargeFilesOf, TablesBehindStreams) {
    const qint64 end = GetParam();
    expectAppended(
        twoPages(GB, GB + 1000).endWithStream(5).object(6, "(changed)").goOnAt(end).endWithTable());
}

TEST_P(LargeFilesOf, TablesBehindHybrids) {
    const qint64 end = GetParam();
    expectAppended(twoPages(GB, GB + 1000)
                       .object(6, "(hidden)")
                       .endHybrid(5, {6})
                       .object(7, "(changed)")
                       .goOnAt(end)
                       .endWithTable());
}

TEST_P(LargeFilesOf, AreReplacedAgainAndAgain) {
    const qint64 end = GetParam();
    const RawPdf pdf = twoPages(GB, end).endWithStream(5);
    expectAppended(pdf);
    if (IsSkipped()) return;
    const QByteArray first = sectionBehind(pdf);
    const auto document = openPdf(out);
    document->setOutlineRoot(makeOutline({{"Yet", PDFDestination{1, {72, 700}}}}));
    ASSERT_FALSE(document->writeToFile(out));
    EXPECT_THAT(linesByQpdf(out), ElementsAre("Yet -> 1 (72, 700)"));
    EXPECT_EQ(sectionBehind(pdf).size(), first.size());
}

INSTANTIATE_TEST_SUITE_P(Sizes, LargeFilesOf, testing::Values(2'150'000'000, 3 * GB, 5 * GB, 11 * GB),
                         [](const auto &test) { return std::to_string(test.param / 1'000'000) + "MB"; });

TEST_F(LargeFiles, AnOffsetThatNoTableHoldsTakesAStream) {
    const RawPdf pdf = twoPages(GB, 11 * GB).endWithTable();
    expectAppended(pdf);
    if (IsSkipped()) return;
    EXPECT_TRUE(sectionBehind(pdf).contains("/Type /XRef"));
    EXPECT_EQ(openPdf(out)->version().minor, 5) << "which has such streams";
}

TEST_F(LargeFiles, AnOffsetThatATableHoldsStaysInOne) {
    const RawPdf pdf = twoPages(GB, farthestInTable - 10'000).endWithTable();
    expectAppended(pdf);
    if (IsSkipped()) return;
    EXPECT_FALSE(sectionBehind(pdf).contains("/XRef"));
}

/// Writes a file again, with its first entries by these titles.
void rename(const QString &from, const QString &to, const QStringList &titles) {
    const auto document = openPdf(from);
    auto root = std::make_unique<PDFOutline>();
    for (int i = 0; i < titles.size(); ++i) {
        const PDFOutline &old = document->outlineRoot().childAtIndex(i);
        PDFOutline &entry = root->insertChildAtIndex(std::make_unique<PDFOutline>(titles[i]), i);
        entry.setDestination(old.destination());
        entry.setEntry(old.entry());
    }
    document->setOutlineRoot(std::move(root));
    ASSERT_FALSE(document->writeToFile(to));
}

/// What stood in the section that is replaced is nowhere any more, its first object neither.
TEST_F(LargeFiles, EntryThatIsRemovedAgainIsNotListed) {
    RawPdf pdf = rawPdfOfOnePage("/Outlines 4 0 R");
    pdf.object(4, "<< /First 5 0 R /Last 6 0 R /Count 2 >>")
        .object(5, "<< /Title (One) /Parent 4 0 R /Next 6 0 R /Dest [3 0 R /XYZ 72 700 0] >>")
        .object(6, "<< /Title (Two) /Parent 4 0 R /Prev 5 0 R /Dest [3 0 R /XYZ 72 600 0] >>")
        .goOnAt(3 * GB)
        .endWithTable();
    if (!pdf.save(in) || roomOf(in) > GB / 10) GTEST_SKIP() << "the disk knows no sparse files of this size";
    rename(in, out, {"One", "Changed"});
    EXPECT_TRUE(sectionBehind(pdf).startsWith("6 0 obj")) << sectionBehind(pdf).constData();
    rename(out, out, {"One"});
    EXPECT_THAT(linesByQpdf(out), ElementsAre("One -> 0 (72, 700)"));
    const auto check = test::runProgram("qpdf", {"--check", out});
    EXPECT_EQ(check.exitCode, 0) << check.out.toStdString() << check.err.toStdString();
}

/// A page, a stream that is a hole, and some objects behind it that bring the file over 2 GiB. Repair passes
/// over streams of a known length, so that it does not read the hole.
RawPdf onePageAndAHole() {
    RawPdf pdf = rawPdfOfOnePage();
    pdf.add("4 0 obj\n<< /Length 2147000000 >>\nstream\n");
    pdf.goOnAt(pdf.size() + 2'147'000'000).add("\nendstream\nendobj\n");
    for (int number = 5; pdf.size() < 2'148'000'000; ++number)
        pdf.object(number, QByteArray(100'000, ' '));
    return pdf;
}

TEST_F(LargeFiles, AreNotWrittenNewWhenTheyAreDamaged) {
    expectRefused(onePageAndAHole());
}

/// Writes a damaged file new, behind a hole of this size. @return the size of what is there then
qint64 sizeBehindHole(const TempDir &dir, qint64 hole) {
    EXPECT_TRUE(rawPdfOfOnePage().save(dir.path("damaged.pdf")));
    QFile sparse(dir.path("hole"));
    QFile written(dir.path("written"));
    EXPECT_TRUE(sparse.open(QIODevice::ReadWrite) && sparse.resize(hole));
    EXPECT_TRUE(written.open(QIODevice::ReadWrite | QIODevice::Truncate));
    mupdf::Reader reader(std::make_shared<const mupdf::FileHandle>(dir.path("damaged.pdf")));
    const mupdf::Object pages = reader.catalog().get(PDF_NAME(Pages));
    reader.setPages(std::make_shared<const mupdf::PageTree>(pages, mupdf::PageTree::Kids::LookedAt));
    mupdf::OutputFile file(written.handle(), [](qint64) {});
    file.copyFrom(mupdf::FileHandle(sparse.fileName()), hole);
    mupdf::writeWhole(reader, *makeOutline({{"New", PDFDestination{0, {72, 700}}}}), file);
    file.flush();
    return written.size();
}

TEST_F(LargeFiles, AreWrittenNewUpTo2GiB) {
    constexpr qint64 largest = std::numeric_limits<qint32>::max();
    const qint64 size = sizeBehindHole(dir, 2 * GB) - 2 * GB;
    if (roomOf(dir.path("written")) > GB / 10) GTEST_SKIP() << "the disk knows no sparse files of this size";
    EXPECT_EQ(sizeBehindHole(dir, largest - size), largest);
    try {
        sizeBehindHole(dir, largest - size + 1);
        FAIL() << "MuPDF can't count so far";
    } catch (const mupdf::Error &error) {
        EXPECT_THAT(error.what(), HasSubstr("too large"));
    }
}

/// MuPDF can't follow the older section's place, so it repairs the file in memory.
TEST_F(LargeFiles, OfTwoSectionsBehind2GiBAreNotWritten) {
    expectRefused(onePageAndAHole().endWithTable().object(60, "(changed)").endWithTable());
}

}  // namespace
}  // namespace leafwright
