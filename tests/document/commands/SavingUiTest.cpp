#include "document/commands/SavingCommands.h"
#include "document/window/SaveProgress.h"
#include "support/OpenPdf.h"
#include "support/WindowFixture.h"
#include "widgets/BusySheet.h"
#include "widgets/NoticeBars.h"

#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include <gmock/gmock.h>
#include <unistd.h>

namespace leafwright {
namespace {

using test::contentOf;
using test::PdfBuilder;
using testing::ElementsAre;
using testing::IsEmpty;

class Saving : public test::WindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(3);
        addOutline(pdf, {{"(One)", "[" + pdf.pageReference(0) + " /XYZ 72 700 null]"}});
        open(pdf);
        original = contentOf(document.pdfURL());
    }

    void edit(const QString &title) {
        document.root().children()[0]->setPageTitle(title);
        document.updateChangeCount(Document::Change::Done);
    }
    void previewBeforeSaving() {
        platform.userDefaults().setValue("LeafwrightAlwaysPreviewBeforeSave", true);
    }
    void perform(const char *selector) { ASSERT_TRUE(document.actions().perform(selector)); }
    const NoticeBar *failureBar() { return document.myWindow()->notices()->bar("failedWrite"); }
    QString preview() { return document.saving().previewPath(); }
    bool fileIsUntouched() const { return contentOf(document.pdfURL()) == original; }
    bool fileHolds(const QString &path, const QString &title) { return outlineOf(path).contains(title); }

    enum Answer { GenerateTemporaryPDF, SavePDF };
    QByteArray original;
};

TEST_F(Saving, TheOfferHasTheRightWordsAndButtons) {
    previewBeforeSaving();
    platform.answers = {SavePDF};
    perform("saveDocument:");
    EXPECT_EQ(platform.beeps, 1);
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].message, "Would you like to preview the TOC?");
    EXPECT_EQ(
        platform.alerts[0].informativeText,
        "Before saving changes to original PDF, do you want to generate a temporary PDF to review the TOC "
        "created by Leafwright?");
    EXPECT_THAT(platform.alerts[0].buttons, ElementsAre("Generate Temporary PDF", "Save PDF"));
    EXPECT_FALSE(platform.alerts[0].escapable) << "neither button gives up";
}

TEST_F(Saving, APreviewLeavesTheFileAndTheEditedStateAndIsRevealed) {
    previewBeforeSaving();
    edit("Changed");
    platform.answers = {GenerateTemporaryPDF};
    perform("saveDocument:");
    EXPECT_TRUE(fileIsUntouched());
    EXPECT_TRUE(document.isDocumentEdited());
    EXPECT_TRUE(fileHolds(preview(), "Changed"));
    EXPECT_EQ(platform.revealedFiles, QStringList{preview()});
    EXPECT_THAT(platform.openedFiles, IsEmpty());
}

TEST_F(Saving, ThePreviewHasTheDocumentsNameAndStandsInTheTemporaryDirectory) {
    EXPECT_EQ(preview(), platform.temporaryDirectory() + "/a.pdf");
}

TEST_F(Saving, ALaterPreviewOverwritesTheEarlierOne) {
    edit("First");
    perform("openPDFInDefaultApp:");
    edit("Second");
    perform("openPDFInDefaultApp:");
    EXPECT_TRUE(fileHolds(preview(), "Second"));
    EXPECT_FALSE(fileHolds(preview(), "First"));
}

TEST_F(Saving, WithoutATemporaryDirectoryNoPreviewIsWrittenAnywhere) {
    ASSERT_TRUE(QDir(dir.path(".")).mkdir("elsewhere"));
    test::writeFile(dir.path("elsewhere/a.pdf"), "somebody's");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(dir.path("elsewhere")));
    platform.hasTemporaryDirectory = false;
    edit("Changed");
    perform("openPDFInDefaultApp:");
    QDir::setCurrent(before);
    EXPECT_EQ(contentOf(dir.path("elsewhere/a.pdf")), "somebody's");
    EXPECT_THAT(platform.openedFiles, IsEmpty());
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].message, "The preview could not be made");
}

TEST_F(Saving, HardLinksThatAreLostAreTold) {
    ASSERT_EQ(::link(QFile::encodeName(document.pdfURL()), QFile::encodeName(dir.path("other.pdf"))), 0);
    edit("Changed");
    perform("saveDocument:");
    const NoticeBar *bar = document.myWindow()->notices()->bar("losses");
    ASSERT_TRUE(bar);
    EXPECT_EQ(bar->text(),
              document.pdfURL() + ": it had other names (hard links), which still lead to the old file");
    edit("Again");
    perform("saveDocument:");
    EXPECT_FALSE(document.myWindow()->notices()->bar("losses")) << "the new file has one name";
}

TEST_F(Saving, OfAChangedDocumentAFreshPreviewIsOpened) {
    edit("Changed");
    perform("openPDFInDefaultApp:");
    EXPECT_EQ(platform.openedFiles, QStringList{preview()});
    EXPECT_TRUE(fileHolds(preview(), "Changed"));
    EXPECT_TRUE(fileIsUntouched());
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Saving, SaveAsWritesToTheChosenPlaceWhichIsTheDocumentsFromThenOn) {
    const QString first = document.pdfURL();
    edit("Changed");
    platform.filesToChoose = {dir.path("other.pdf")};
    perform("saveDocumentAs:");
    ASSERT_EQ(platform.savePanels.size(), 1);
    EXPECT_EQ(platform.savePanels[0].allowedFileTypes, QStringList{"pdf"});
    EXPECT_EQ(document.pdfURL(), dir.path("other.pdf"));
    EXPECT_TRUE(fileHolds(dir.path("other.pdf"), "Changed"));
    EXPECT_EQ(contentOf(first), original);
    EXPECT_FALSE(document.isDocumentEdited());
    EXPECT_TRUE(document.window()->windowTitle().startsWith("other.pdf"));

    edit("Again");
    perform("saveDocument:");
    EXPECT_TRUE(fileHolds(dir.path("other.pdf"), "Again"));
    EXPECT_EQ(contentOf(first), original);
}

TEST_F(Saving, SaveAsThatFailsLeavesThePlaceAndTellsTheCaller) {
    const QString first = document.pdfURL();
    int places = 0;  // each is noted among the files opened lately
    QObject::connect(&document, &Document::fileURLChanged, &document, [&] { ++places; });
    edit("Changed");
    platform.filesToChoose = {dir.path("no folder/other.pdf"), dir.path("other.pdf")};
    perform("saveDocumentAs:");
    EXPECT_EQ(document.pdfURL(), first);
    EXPECT_EQ(places, 0);
    EXPECT_TRUE(document.isDocumentEdited());
    ASSERT_TRUE(document.writeError());
    EXPECT_EQ(document.writeError()->kind, PDFError::Kind::WriteFailed);
    EXPECT_TRUE(document.writeError()->message.contains("no folder/other.pdf"));

    perform("saveDocumentAs:");
    EXPECT_EQ(document.pdfURL(), dir.path("other.pdf"));
    EXPECT_EQ(places, 1);
    EXPECT_FALSE(document.writeError()) << "of the last write only";
}

TEST_F(Saving, AfterARevertTheWindowShowsTheDocumentAsEditedThoughNothingDiffers) {
    ASSERT_FALSE(document.window()->isWindowModified());
    perform("revertOutlineToSaved:");
    EXPECT_TRUE(document.window()->isWindowModified());
}

TEST_F(Saving, AFailedWriteLeavesTheFileAndTheEditedState) {
    document.setPdfURL(dir.path("no folder/a.pdf"));
    edit("Changed");
    perform("saveDocument:");
    EXPECT_THAT(platform.alerts, IsEmpty());
    EXPECT_TRUE(document.isDocumentEdited());
    EXPECT_EQ(document.saveProgress()->saveWindow(), nullptr) << "the sheet ends all the same";
}

TEST_F(Saving, AFailedSaveIsToldAboveThePagesUntilTheNext) {
    const QString there = document.pdfURL();
    document.setPdfURL(dir.path("no folder/a.pdf"));
    perform("saveDocument:");
    ASSERT_NE(failureBar(), nullptr);
    EXPECT_EQ(failureBar()->text(), document.writeError()->message);
    document.setPdfURL(there);
    perform("saveDocument:");
    EXPECT_EQ(failureBar(), nullptr);
}

TEST_F(Saving, TheBarOfAFailedSaveOffersAnotherPlace) {
    document.setPdfURL(dir.path("no folder/a.pdf"));
    edit("Changed");
    perform("saveDocument:");
    auto *saveAs = failureBar()->findChild<QPushButton *>();
    ASSERT_NE(saveAs, nullptr);
    EXPECT_EQ(saveAs->text(), "Save As…");
    platform.filesToChoose = {dir.path("other.pdf")};
    saveAs->click();
    EXPECT_TRUE(fileHolds(dir.path("other.pdf"), "Changed"));
    EXPECT_EQ(failureBar(), nullptr);
}

TEST_F(Saving, ALockedDocumentSaysWhyItIsNotSaved) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    pdf.save(dir.path("locked.pdf"), {.userPassword = "secret"});
    MyDocument locked(platform);
    ASSERT_TRUE(locked.readFromURL(dir.path("locked.pdf")));
    locked.makeWindowControllers();
    const QByteArray before = contentOf(dir.path("locked.pdf"));
    ASSERT_TRUE(locked.actions().perform("saveDocument:"));
    const NoticeBar *bar = locked.myWindow()->notices()->bar("failedWrite");
    ASSERT_NE(bar, nullptr);
    EXPECT_TRUE(bar->text().contains("locked")) << bar->text().toStdString();
    EXPECT_EQ(bar->findChild<QPushButton *>(), nullptr) << "another place is no help";
    EXPECT_EQ(contentOf(dir.path("locked.pdf")), before);
}

TEST_F(Saving, APreviewThatCannotBeWrittenIsNeitherShownNorOpened) {
    previewBeforeSaving();
    ASSERT_TRUE(QDir().mkpath(preview()));  // a folder is in the way
    edit("Changed");
    platform.answers = {GenerateTemporaryPDF};
    perform("saveDocument:");
    perform("openPDFInDefaultApp:");
    EXPECT_THAT(platform.revealedFiles, IsEmpty());
    EXPECT_THAT(platform.openedFiles, IsEmpty());
    EXPECT_TRUE(document.isDocumentEdited());
    EXPECT_TRUE(fileIsUntouched());
}

TEST_F(Saving, ThereIsNoAutosave) {
    EXPECT_FALSE(MyDocument::autosavesInPlace());
}

class Progress : public testing::Test {
protected:
    QString text() const {
        return progress.saveWindow()->findChild<QLabel *>("savePDFProgressPanelText")->text();
    }

    QWidget window;
    SaveProgress progress{&window};
};

TEST_F(Progress, TheSheetFollowsTheWriting) {
    window.show();
    progress.setText("Saving PDF...");
    progress.documentBeginWrite(500);
    ASSERT_NE(progress.saveWindow(), nullptr);
    EXPECT_TRUE(progress.saveWindow()->isVisible());
    EXPECT_EQ(progress.saveWindow()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(text(), "Saving PDF...");
    const auto *label = progress.saveWindow()->findChild<QLabel *>("savePDFProgressPanelText");
    EXPECT_TRUE(label && label->isVisible());
    EXPECT_TRUE(progress.saveProgressBar()->isVisible());
    EXPECT_EQ(progress.saveProgressBar()->maximum(), 500);
    EXPECT_EQ(progress.saveProgressBar()->value(), 0);
    progress.documentEndPageWrite(123);
    EXPECT_EQ(progress.saveProgressBar()->value(), 123);
    progress.documentEndWrite();
    EXPECT_EQ(progress.saveWindow(), nullptr);
}

TEST_F(Saving, TheSheetSaysWhatIsWritten) {
    class Listener : public PDFWriteObserver {
    public:
        explicit Listener(SaveProgress &sheet) : progress(sheet) {}
        void documentBeginWrite(int pages) override { progress.documentBeginWrite(pages); }
        void documentEndPageWrite(int page) override {
            progress.documentEndPageWrite(page);
            texts.append(progress.saveWindow()->findChild<QLabel *>()->text());
        }
        void documentEndWrite() override { progress.documentEndWrite(); }
        SaveProgress &progress;
        QStringList texts;
    } listener(*document.saveProgress());
    document.setWriteObserver(&listener);
    edit("Changed");
    perform("openPDFInDefaultApp:");
    perform("saveDocument:");
    document.setWriteObserver(nullptr);
    listener.texts.removeDuplicates();
    EXPECT_THAT(listener.texts, ElementsAre("Generating Temporary PDF...", "Saving PDF..."));
}

}  // namespace
}  // namespace leafwright
