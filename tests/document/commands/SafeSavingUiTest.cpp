#include "support/CliFiles.h"
#include "support/Corpus.h"
#include "support/OpenPdf.h"
#include "support/Paths.h"
#include "support/Unprivileged.h"
#include "support/WindowFixture.h"
#include "widgets/NoticeBars.h"

#include <QDir>
#include <QFileInfo>
#include <QPushButton>
#include <QRegularExpression>

#include <cerrno>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// Whether the disk confirms no folder that it has what is in it.
bool foldersFailToSync = false;

}  // namespace

/// Takes the place of the system's.
extern "C" int fsync(int descriptor) {
    struct stat status = {};
    if (foldersFailToSync && ::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
        errno = EIO;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

namespace leafwright {
namespace {

using test::contentOf;
using test::PdfBuilder;
using testing::SizeIs;

/// What a person's files must live through when the document is saved over them.
class SafeSaving : public test::WindowFixture {
protected:
    void SetUp() override {
        open(threePages());
        original = contentOf(path());
    }

    static PdfBuilder threePages() {
        PdfBuilder pdf;
        pdf.addNumberedPages(3);
        addOutline(pdf, {{"(One)", "[" + pdf.pageReference(0) + " /XYZ 72 700 null]"}});
        return pdf;
    }
    QString path() const { return dir.path("a.pdf"); }
    QStringList files() const {
        return QDir(dir.path(".")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    void editAndSave(const QString &title) {
        document.root().children()[0]->setPageTitle(title);
        document.updateChangeCount(Document::Change::Done);
        ASSERT_TRUE(document.actions().perform("saveDocument:"));
    }
    void expectOldFileAndEditedDocument() {
        EXPECT_EQ(contentOf(path()), original);
        EXPECT_EQ(files(), QStringList{"a.pdf"}) << "nothing is left lying about";
        EXPECT_TRUE(document.isDocumentEdited());
    }

    QByteArray original;
};

TEST_F(SafeSaving, PermissionsAreKept) {
    const auto permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser |
                             QFile::ReadGroup | QFile::WriteGroup;
    ASSERT_TRUE(QFile::setPermissions(path(), permissions));
    editAndSave("New");
    EXPECT_EQ(outlineOf(path()), "+ [1] New (72,700)\n");
    EXPECT_EQ(QFile::permissions(path()), permissions);
}

TEST_F(SafeSaving, ALinkGoesOnLeadingToTheFile) {
    const QString link = dir.path("link.pdf");
    ASSERT_TRUE(QFile::link(path(), link));
    document.setPdfURL(link);
    editAndSave("New");
    EXPECT_EQ(QFileInfo(link).symLinkTarget(), path());
    EXPECT_EQ(outlineOf(path()), "+ [1] New (72,700)\n");
}

TEST_F(SafeSaving, AFullDiskLeavesTheOldFile) {
    {
        const test::FileSizeLimit limit(static_cast<unsigned long>(original.size()) + 10);
        editAndSave("New");
    }
    expectOldFileAndEditedDocument();
}

TEST_F(SafeSaving, WhatTheDiskDoesNotConfirmIsTold) {
    foldersFailToSync = true;
    editAndSave("New");
    foldersFailToSync = false;
    EXPECT_EQ(outlineOf(path()), "+ [1] New (72,700)\n");
    EXPECT_TRUE(document.isDocumentEdited()) << "it is still to be saved, for certain";
    ASSERT_TRUE(document.writeError());
    EXPECT_EQ(document.writeError()->kind, PDFError::Kind::NotDurable);
    const NoticeBar *bar = document.myWindow()->notices()->bar("failedWrite");
    ASSERT_TRUE(bar);
    EXPECT_EQ(bar->text(), path() + " was written, but may not outlive a power failure: Input/output error");

    auto *saveAs = bar->findChild<QPushButton *>();
    ASSERT_TRUE(saveAs);
    EXPECT_EQ(saveAs->text(), "Save As…");
    platform.filesToChoose = {dir.path("elsewhere.pdf")};
    saveAs->click();
    EXPECT_EQ(outlineOf(dir.path("elsewhere.pdf")), "+ [1] New (72,700)\n");
    EXPECT_FALSE(document.isDocumentEdited());
    EXPECT_EQ(document.myWindow()->notices()->bar("failedWrite"), nullptr);
}

TEST_F(SafeSaving, AReadOnlyFolderLeavesTheOldFile) {
    const auto everyone = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup |
                          QFile::ReadOther | QFile::ExeOther;
    ASSERT_TRUE(QFile::setPermissions(dir.path("."), everyone));
    {
        const test::Unprivileged nobody;
        editAndSave("New");
    }
    ASSERT_TRUE(QFile::setPermissions(dir.path("."), everyone | QFile::WriteOwner));
    expectOldFileAndEditedDocument();
}

TEST_F(SafeSaving, AReadOnlyFileIsNotReplaced) {
    if (geteuid() == 0) GTEST_SKIP() << "to root no file is read-only";
    ASSERT_TRUE(QFile::setPermissions(path(), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    editAndSave("New");
    expectOldFileAndEditedDocument();
}

TEST_F(SafeSaving, TenSavesAppendOneSection) {
    for (int i = 0; i < 10; ++i)
        editAndSave(QString::number(i));
    const QByteArray saved = contentOf(path());
    EXPECT_TRUE(saved.startsWith(original));
    EXPECT_EQ(saved.mid(original.size()).count("startxref"), 1);
    EXPECT_EQ(outlineOf(path()), "+ [1] 9 (72,700)\n");
}

/// The pairs of offset and length that a file's signatures say they cover (ISO 32000-1, 12.8.1).
std::vector<std::pair<qsizetype, qsizetype>> signedRanges(const QByteArray &file) {
    std::vector<std::pair<qsizetype, qsizetype>> result;
    static const QRegularExpression arrays(R"(/ByteRange\s*\[\s*(\d+)\s+(\d+)\s+(\d+)\s+(\d+))");
    for (const auto &match : arrays.globalMatch(QString::fromLatin1(file))) {
        result.emplace_back(match.captured(1).toLongLong(), match.captured(2).toLongLong());
        result.emplace_back(match.captured(3).toLongLong(), match.captured(4).toLongLong());
    }
    return result;
}

TEST_F(SafeSaving, SignedBytesStayWhereTheyAre) {
    const QString signedFile = test::corpusPath("160F-2019.pdf");
    if (!QFile::exists(signedFile)) GTEST_SKIP() << "160F-2019.pdf is not at hand";
    ASSERT_TRUE(QFile::copy(signedFile, dir.path("signed.pdf")));
    const QByteArray before = contentOf(signedFile);
    const auto ranges = signedRanges(before);
    ASSERT_THAT(ranges, SizeIs(2));

    MyDocument signedDocument(platform);
    load(signedDocument, dir.path("signed.pdf"));
    test::addItems(signedDocument.root(), {{"New"}});
    ASSERT_FALSE(signedDocument.writeNewPDFOutline(dir.path("signed.pdf"), MyDocument::saveFinalPDF));
    const QByteArray after = contentOf(dir.path("signed.pdf"));
    EXPECT_TRUE(outlineOf(dir.path("signed.pdf")).contains("] New ("));
    for (const auto &[offset, length] : ranges)
        EXPECT_EQ(after.mid(offset, length), before.mid(offset, length));
}

}  // namespace
}  // namespace leafwright
