#include "document/Recovery.h"
#include "document/ViewMemory.h"
#include "document/window/DocumentStatusBar.h"
#include "document/window/PasswordBar.h"
#include "support/LogRecorder.h"
#include "support/OpenPdf.h"
#include "support/WindowFixture.h"

#include <QAbstractButton>
#include <QDirIterator>
#include <QLabel>
#include <QLineEdit>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::PdfBuilder;
using testing::ElementsAre;

/// A file with an entry and five pages, the second of which has a heading, locked by the password "sesame".
class LockedFile : public test::WindowFixture {
protected:
    static PdfBuilder book() {
        PdfBuilder pdf;
        pdf.addNumberedPages(4);
        pdf.addPage(PdfBuilder::showText("F2", 24, 72, 700, "Chapter") +
                    PdfBuilder::showText("F1", 10, 72, 600, "Body text that fills the page."));
        addOutline(pdf, {{"(One)", "[1 /Fit]", {{"(Two)", "[2 /XYZ 72 700 null]"}}}});
        return pdf;
    }
    static PdfBuilder::Options options() {
        PdfBuilder::Options options;
        options.userPassword = "sesame";
        return options;
    }
    void openLocked() {
        open(book(), options());
        document.window()->activateWindow();
    }

    PasswordBar &bar() { return *document.myWindow()->passwordBar(); }
    QLineEdit &field() { return *bar().findChild<QLineEdit *>("passwordField"); }
    QString refusal() { return bar().findChild<QLabel *>("passwordRefusal")->text(); }
    void enter(const QString &password) {
        field().clear();
        QTest::keyClicks(&field(), password);
        QTest::keyClick(&field(), Qt::Key_Return);
    }
    /// What is in all files below the test's folder, but the PDF.
    QByteArray written() {
        QByteArray all;
        for (QDirIterator files(dir.path("."), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
             files.hasNext();) {
            const QString file = files.next();
            if (!file.endsWith(".pdf")) all += file.toUtf8() + test::contentOf(file);
        }
        return all;
    }
};

TEST_F(LockedFile, IsAskedForItsPasswordBehindTheAlerts) {
    openLocked();
    QStringList alerts;
    for (const Alert &alert : platform.alerts)
        alerts.append(alert.message);
    EXPECT_THAT(alerts, ElementsAre("This PDF is locked", "This PDF is encrypted"));
    EXPECT_TRUE(bar().isVisible());
    EXPECT_EQ(document.window()->focusWidget(), &field());
    EXPECT_EQ(field().echoMode(), QLineEdit::Password);
    EXPECT_EQ(field().accessibleName(), "Password");
    EXPECT_FALSE(bar().accessibleName().isEmpty());
}

TEST_F(LockedFile, OthersAreNotAskedForAny) {
    PdfBuilder::Options encrypted;
    encrypted.ownerPassword = "sesame";
    open(book(), encrypted);
    EXPECT_FALSE(bar().isOpen());
}

TEST_F(LockedFile, WithItsPasswordPagesAndOutlineAreShown) {
    openLocked();
    enter("sesame");
    EXPECT_FALSE(bar().isOpen());
    EXPECT_EQ(field().text(), "") << "nobody needs it any more";
    document.finishLoading();
    EXPECT_EQ(document.pdfDoc()->pageCount(), 5);
    EXPECT_EQ(document.pdfview()->document(), document.pdfDoc());
    EXPECT_EQ(document.pdfview()->currentPage()->index(), 0);
    EXPECT_EQ(document.pdfthumbs()->model()->rowCount(), 5);
    EXPECT_EQ(test::treeText(document.root()), "+ [2] One (0,0)\n++ [3] Two (72,700)\n");
    EXPECT_EQ(document.outlineview()->model()->rowCount(), 1);
    EXPECT_EQ(document.myWindow()->status().entriesText(),
              "2 entries, not to be changed as the file is encrypted");
    ASSERT_EQ(document.listH1H2H3Config().size(), 1U);
    EXPECT_EQ(document.listH1H2H3Config()[0].font->pointSize(), 24);
    EXPECT_EQ(document.window()->focusWidget(), document.pdfview());
    EXPECT_EQ(platform.alerts.size(), 2) << "none but those of the opening";
}

TEST_F(LockedFile, TheButtonDoesWhatReturnDoes) {
    openLocked();
    field().setText("sesame");
    bar().findChild<QAbstractButton *>("showPagesButton")->click();
    EXPECT_EQ(document.pdfDoc()->pageCount(), 5);
}

TEST_F(LockedFile, AWrongPasswordIsToldAndAnotherMayBeTyped) {
    openLocked();
    enter("Sesame");
    EXPECT_TRUE(bar().isVisible());
    EXPECT_EQ(refusal(), "This is not the password.");
    EXPECT_EQ(field().accessibleDescription(), refusal());
    EXPECT_EQ(field().selectedText().size(), 6) << "what is typed next takes its place";
    EXPECT_EQ(document.pdfDoc()->pageCount(), 0);
    EXPECT_EQ(platform.beeps, 2) << "those of the alerts";
    enter("sesame");
    EXPECT_EQ(document.pdfDoc()->pageCount(), 5);
}

TEST_F(LockedFile, CanBeLookedAtButNotEdited) {
    openLocked();
    enter("sesame");
    EXPECT_FALSE(document.isDocumentEdited()) << "an entry without a spot is no change that could be saved";
    EXPECT_FALSE(document.allowTOCediting());
    EXPECT_FALSE(document.outlineview()->isEnabled());
    const QString before = test::treeText(document.root());
    for (const char *command : {"addSiblingOutlineItem:", "addChildOutlineItem:", "importOutline:"})
        document.actions().perform(command);
    EXPECT_EQ(test::treeText(document.root()), before);
    const QByteArray file = test::contentOf(document.pdfURL());
    document.actions().perform("saveDocument:");
    EXPECT_EQ(test::contentOf(document.pdfURL()), file);
    EXPECT_TRUE(document.writeError());
}

TEST_F(LockedFile, ThePasswordIsWrittenNowhereNorIsTheOutline) {
    const test::LogRecorder log("leafwright.*=true");
    auto *recovery = new Recovery(document, dir.path("recovery"));
    new ViewMemory(document, dir.path("views"));
    openLocked();
    recovery->begin();
    enter("sesamum");
    enter("sesame");
    select({{0}});
    ASSERT_TRUE(document.actions().perform("changeCaseToUpperCase:")) << "as in any encrypted file";
    recovery->keepNow();
    EXPECT_FALSE(written().contains("/recovery/")) << "where it would be read after a crash";
    document.updateChangeCount(Document::Change::Cleared);
    EXPECT_TRUE(document.myWindow()->close());
    const QByteArray all = written() + log.messages().join('\n').toUtf8();
    EXPECT_FALSE(all.contains("sesam"));
    EXPECT_FALSE(written().contains("ONE")) << "who has no password is not to read it";
    EXPECT_TRUE(written().contains("/views/")) << "this test looks where files are";
}

TEST_F(LockedFile, IsShownAsItWasLeft) {
    new ViewMemory(document, dir.path("views"));
    openLocked();
    enter("sesame");
    document.pdfview()->goToPage(document.pdfDoc()->page(3));
    EXPECT_TRUE(document.myWindow()->close());
    MyDocument again(platform);
    new ViewMemory(again, dir.path("views"));
    ASSERT_TRUE(again.readFromURL(document.pdfURL()));
    again.makeWindowControllers();
    again.finishLoading();
    ASSERT_FALSE(again.unlock("sesame"));
    EXPECT_EQ(again.pdfview()->currentPage()->index(), 3);
}

}  // namespace
}  // namespace leafwright
