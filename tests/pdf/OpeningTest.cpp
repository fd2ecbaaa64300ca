#include "support/OpenPdf.h"
#include "support/TempDir.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace leafwright {
namespace {

using test::openBytes;
using test::openPdf;
using test::PdfBuilder;
using test::TempDir;
using test::writeFile;
using Kind = PDFError::Kind;

/// Why a file does not open; nothing when it does.
std::optional<Kind> refusal(const QString &path) {
    const auto result = PDFDocument::open(path);
    const auto *error = std::get_if<PDFError>(&result);
    if (!error) return std::nullopt;
    EXPECT_FALSE(error->message.isEmpty());
    return error->kind;
}

PdfBuilder threePages() {
    PdfBuilder pdf;
    pdf.addNumberedPages(3);
    return pdf;
}

TEST(Opening, SoundFile) {
    const auto document = openPdf(threePages());
    EXPECT_EQ(document->pageCount(), 3);
    EXPECT_FALSE(document->isLocked());
    EXPECT_FALSE(document->isEncrypted());
    EXPECT_FALSE(document->wasRepaired());
    EXPECT_FALSE(document->isSigned());
    EXPECT_FALSE(document->hasOutline());
}

TEST(Opening, MissingFile) {
    EXPECT_EQ(refusal(TempDir().path("none.pdf")), Kind::FileMissing);
}

TEST(Opening, EmptyPath) {
    EXPECT_EQ(refusal(""), Kind::FileMissing);
}

TEST(Opening, FolderIsUnreadable) {
    const TempDir dir;
    EXPECT_EQ(refusal(dir.path("")), Kind::FileUnreadable);
}

TEST(Opening, NamedPipeIsRefusedWithoutWaitingForAWriter) {
    const TempDir dir;
    ASSERT_EQ(::mkfifo(QFile::encodeName(dir.path("pipe.pdf")).constData(), 0600), 0);
    EXPECT_EQ(refusal(dir.path("pipe.pdf")), Kind::FileUnreadable);
}

TEST(Opening, EmptyFileIsNoPdf) {
    const TempDir dir;
    writeFile(dir.path("empty.pdf"), "");
    EXPECT_EQ(refusal(dir.path("empty.pdf")), Kind::NotAPDF);
}

TEST(Opening, GarbageIsNoPdf) {
    const TempDir dir;
    QByteArray garbage;
    for (quint32 i = 0; i < 20'000; ++i)
        garbage += static_cast<char>(i * 2654435761U >> 24);
    writeFile(dir.path("garbage.pdf"), garbage);
    EXPECT_EQ(refusal(dir.path("garbage.pdf")), Kind::NotAPDF);
    writeFile(dir.path("garbage.pdf"), "%PDF-1.4\n" + garbage);
    EXPECT_EQ(refusal(dir.path("garbage.pdf")), Kind::NotAPDF);
}

TEST(Opening, FileMayHaveNoPages) {
    PdfBuilder pdf;
    test::addOutline(pdf, {{"(Start)", "null"}});
    const auto document = openPdf(pdf);
    EXPECT_EQ(document->pageCount(), 0);
    EXPECT_FALSE(document->isLocked());
    EXPECT_EQ(document->readProblem(), std::nullopt);
    ASSERT_EQ(document->outlineRoot().numberOfChildren(), 1);
    EXPECT_EQ(document->outlineRoot().childAtIndex(0).label(), "Start");
}

TEST(Opening, FileWhosePagesAreLostIsNoPdf) {
    const TempDir dir;
    threePages().save(dir.path("whole.pdf"));
    const QByteArray whole = test::contentOf(dir.path("whole.pdf"));
    for (const char *count : {"/Count 3", "/Count 0"}) {
        QByteArray bytes = whole;
        ASSERT_TRUE(bytes.contains("/Kids") && bytes.contains("/Count 3"));
        bytes.replace("/Kids", "/Kid_").replace("/Count 3", count);
        writeFile(dir.path("pageless.pdf"), bytes);
        EXPECT_EQ(refusal(dir.path("pageless.pdf")), Kind::NotAPDF) << count;
    }
}

TEST(Opening, BytesBeforeTheHeaderDoNotMatter) {
    const TempDir dir;
    threePages().save(dir.path("sound.pdf"));
    const auto document = openBytes("mail header\r\n\r\n" + test::contentOf(dir.path("sound.pdf")));
    EXPECT_EQ(document->pageCount(), 3);
    EXPECT_EQ(test::textOf(*document, 2), "Page 3\n");
}

TEST(Opening, TruncatedFileIsRepaired) {
    const TempDir dir;
    threePages().save(dir.path("whole.pdf"));
    const QByteArray whole = test::contentOf(dir.path("whole.pdf"));
    const auto document = openBytes(whole.left(whole.lastIndexOf("xref\n0 ") + 20));
    EXPECT_TRUE(document->wasRepaired());
    ASSERT_EQ(document->pageCount(), 3);
    EXPECT_EQ(test::textOf(*document, 2), "Page 3\n");
}

TEST(Opening, LockedFileOpensWithoutPages) {
    const auto document = openPdf(threePages(), {.userPassword = "secret"});
    EXPECT_TRUE(document->isLocked());
    EXPECT_TRUE(document->isEncrypted());
    EXPECT_EQ(document->pageCount(), 0);
    EXPECT_EQ(document->page(0), nullptr);
    EXPECT_EQ(document->outlineRoot().numberOfChildren(), 0);
}

TEST(Opening, OwnerPasswordEncryptsWithoutLocking) {
    const auto document = openPdf(threePages(), {.ownerPassword = "secret"});
    EXPECT_FALSE(document->isLocked());
    EXPECT_TRUE(document->isEncrypted());
    ASSERT_EQ(document->pageCount(), 3);
    EXPECT_EQ(test::textOf(*document, 1), "Page 2\n");
}

TEST(Opening, ObjectStreams) {
    PdfBuilder pdf = threePages();
    test::addOutline(pdf, {{"(Start)", "[" + pdf.pageReference(2) + " /Fit]"}});
    const auto document = openPdf(pdf, {.version = "1.5", .objectStreams = true});
    EXPECT_FALSE(document->wasRepaired());
    EXPECT_TRUE(document->hasOutline());
    ASSERT_EQ(document->pageCount(), 3);
    EXPECT_EQ(test::textOf(*document, 0), "Page 1\n");
    EXPECT_EQ(document->outlineRoot().childAtIndex(0).destination()->pageIndex, 2);
}

TEST(Opening, FileStaysReadableWhenAnotherTakesItsName) {
    const TempDir dir;
    threePages().save(dir.path("a.pdf"));
    const auto document = openPdf(dir.path("a.pdf"));
    ASSERT_TRUE(QFile::remove(dir.path("a.pdf")));
    writeFile(dir.path("a.pdf"), "something else");
    EXPECT_EQ(test::textOf(*document, 2), "Page 3\n");
}

TEST(Opening, PageOutOfRangeIsNull) {
    const auto document = openPdf(threePages());
    EXPECT_EQ(document->page(-1), nullptr);
    EXPECT_EQ(document->page(3), nullptr);
    ASSERT_NE(document->page(2), nullptr);
    EXPECT_EQ(document->page(2)->index(), 2);
    EXPECT_EQ(&document->page(2)->document(), document.get());
}

}  // namespace
}  // namespace leafwright
