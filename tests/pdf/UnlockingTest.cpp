#include "pageview/DrawnPage.h"
#include "pdf/ReadAhead.h"
#include "support/LogRecorder.h"
#include "support/OpenPdf.h"
#include "support/TempDir.h"

#include <QColor>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;
using Document = std::unique_ptr<PDFDocument>;

/// Two pages with links and an entry, encrypted by each revision that files have.
class Unlocking : public testing::TestWithParam<int> {
protected:
    static Document locked(const std::string &user = "user", int revision = GetParam()) {
        PdfBuilder pdf;
        pdf.addNumberedPages(1);
        pdf.addPage("0 1 0 rg 0 0 1000 1000 re f " + PdfBuilder::showText("F1", 10, 72, 500, "Secret"),
                    "/Annots [<< /Type /Annot /Subtype /Link /Rect [0 0 99 99] /Dest [0 /Fit] >>]");
        addOutline(pdf, {{"(One)", "[1 /XYZ 72 700 null]"}});
        PdfBuilder::Options options;
        options.userPassword = user;
        options.ownerPassword = "owner";
        options.encryption = revision;
        return openPdf(pdf, options);
    }
    static Document unlocked(const PDFDocument &document, const QString &password) {
        auto result = document.unlocked(password);
        auto *opened = std::get_if<Document>(&result);
        return opened ? std::move(*opened) : nullptr;
    }
};

TEST_P(Unlocking, ItsPasswordShowsAllOfAFile) {
    const Document document = locked();
    ASSERT_TRUE(document->isLocked());
    EXPECT_FALSE(document->isUnlocked());
    for (const char *password : {"user", "owner"}) {
        SCOPED_TRACE(password);
        const Document opened = unlocked(*document, password);
        ASSERT_TRUE(opened);
        EXPECT_FALSE(opened->isLocked());
        EXPECT_TRUE(opened->isEncrypted());
        EXPECT_TRUE(opened->isUnlocked());
        ASSERT_EQ(opened->pageCount(), 2);
        EXPECT_EQ(opened->outlineRoot().childAtIndex(0).label(), "One");
        EXPECT_EQ(test::textOf(*opened, 1), "Secret\n");
        EXPECT_EQ(opened->engine().characterBoxes(1).size(), 7U);
        EXPECT_EQ(opened->engine().links(1).size(), 1U);
        EXPECT_EQ(drawnPage(*opened, {1, 1, QRect(0, 0, 50, 50)}).pixelColor(20, 20), QColor("#00ff00"));
        EXPECT_FALSE(opened->readProblem());
    }
    EXPECT_TRUE(document->isLocked()) << "stays as it is";
}

TEST_P(Unlocking, AnythingElseIsRefused) {
    const Document document = locked();
    for (const char *password : {"", "User", "user ", "use"}) {
        const auto result = document->unlocked(QString::fromLatin1(password));
        const auto *error = std::get_if<PDFError>(&result);
        ASSERT_TRUE(error) << password;
        EXPECT_EQ(error->kind, PDFError::Kind::Locked);
        EXPECT_EQ(error->message, "This is not the password.");
    }
}

TEST_P(Unlocking, AFileThatWasUnlockedIsNotWritten) {
    const test::TempDir dir;
    const Document opened = unlocked(*locked(), "user");
    const auto error = opened->writeToFile(dir.path("out.pdf"));
    ASSERT_TRUE(error);
    EXPECT_THAT(error->message.toStdString(), testing::HasSubstr("it is encrypted"));
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
}

TEST_P(Unlocking, ThePasswordIsNotLogged) {
    const test::LogRecorder log("leafwright.*=true");
    const Document document = locked("sesame");
    EXPECT_FALSE(unlocked(*document, "sesamum"));
    const Document opened = unlocked(*document, "sesame");
    readAllPages(*opened);
    EXPECT_FALSE(log.messages().join('\n').contains("sesam")) << log.messages().join('\n').toStdString();
}

INSTANTIATE_TEST_SUITE_P(ByRevision, Unlocking, testing::Values(3, 4, 6));

using UnlockingByLetters = Unlocking;

TEST_P(UnlockingByLetters, BeyondAsciiThatAreUtf8) {
    const Document document = locked("Gr\xC3\xBC\xC3\x9F Gott");
    EXPECT_TRUE(unlocked(*document, QString::fromUtf8("Gr\xC3\xBC\xC3\x9F Gott")));
    EXPECT_FALSE(unlocked(*document, "Gruss Gott"));
}

INSTANTIATE_TEST_SUITE_P(ByRevision, UnlockingByLetters, testing::Values(6));

}  // namespace
}  // namespace leafwright
