#include "document/commands/AutoTOCCommands.h"
#include "document/window/DocumentStatusBar.h"
#include "document/window/HeadingMapView.h"
#include "document/window/OutlineFilter.h"
#include "support/TreeWindowFixture.h"

#include <QLabel>
#include <QLineEdit>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class StatusBar : public test::TreeWindowFixture {
protected:
    void SetUp() override {
        TreeWindowFixture::SetUp();
        setOutline("a (x y) b");
    }
    DocumentStatusBar &status() { return document.myWindow()->status(); }
    QString told() { return status().currentMessage(); }
    QString entries() {
        QCoreApplication::processEvents();
        return status().findChild<QLabel *>("entryStatus")->text();
    }
    void fillIn(const char *field, const QString &text) {
        qobject_cast<QLineEdit *>(document.openSheet()->field(field))->setText(text);
    }
    void press(int tag) {
        ASSERT_TRUE(document.openSheet()->pressButton(tag));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

TEST_F(StatusBar, TellsHowManyEntriesThereAreAndAreSelected) {
    EXPECT_EQ(entries(), "4 entries");
    select({{0}, {1}});
    EXPECT_EQ(entries(), "4 entries, 2 selected");
    select({});
    EXPECT_EQ(entries(), "4 entries");
    document.edits().remove(document.root(), 0);
    EXPECT_EQ(entries(), "1 entry");
    document.edits().remove(document.root(), 0);
    EXPECT_EQ(entries(), "0 entries");
}

TEST_F(StatusBar, TellsHowManyTheFilterLeaves) {
    document.myWindow()->outlineFilter()->findChild<QLineEdit *>()->setText("x");
    document.finishSearches();
    EXPECT_EQ(entries(), "2 of 4 entries shown") << "with the one that it is below";
    document.myWindow()->outlineFilter()->clear();
    EXPECT_EQ(entries(), "4 entries");
}

TEST_F(StatusBar, TellsHowManyTitlesHaveChanged) {
    select({{0}, {0, 0}, {1}});
    perform("renameFindReplace:");
    fillIn("findReplaceFindTermText", "x");
    fillIn("findReplaceReplaceTermText", "z");
    press(1);
    EXPECT_EQ(told(), "1 of 3 titles changed");
    perform("changeCaseToUpperCase:");
    EXPECT_EQ(told(), "3 of 3 titles changed");
    perform("changeCaseToUpperCase:");
    EXPECT_EQ(told(), "0 of 3 titles changed");
}

TEST_F(StatusBar, TellsHowManyEntriesWereRemovedAndWhatWasTakenBack) {
    select({{0}});
    perform("removeOutlineItems:");
    EXPECT_EQ(told(), "3 entries removed");
    perform("stepBack:");
    EXPECT_EQ(told(), "Taken back: Remove 3 Entries");
    perform("stepForward:");
    EXPECT_EQ(told(), "Done again: Remove 3 Entries");
    EXPECT_EQ(status().accessibleDescription(), told()) << "for who can't see it";
}

TEST_F(StatusBar, TellsWhatWasSavedAndWhatWasNot) {
    perform("saveDocument:");
    EXPECT_EQ(told(), "Saved, 4 entries");
    status().clearMessage();
    document.setPdfURL(dir.path("no folder/a.pdf"));
    perform("saveDocument:");
    EXPECT_EQ(told(), "") << "a bar says why";
}

TEST_F(StatusBar, TellsWhatWasReverted) {
    perform("saveDocument:");
    select({{0}});
    perform("removeOutlineItems:");
    perform("revertOutlineToSaved:");
    EXPECT_EQ(told(), "Reverted, 4 entries");
}

TEST_F(StatusBar, TellsWhatCameAndWent) {
    platform.filesToChoose = {dir.path("outline.json")};
    perform("exportOutline:");
    EXPECT_EQ(told(), "Exported, 4 entries");
    constexpr int add = 1;
    platform.answers = {add};
    platform.filesToChoose = {dir.path("outline.json")};
    perform("importOutline:");
    EXPECT_EQ(told(), "Imported, 4 entries");
    EXPECT_EQ(entries(), "8 entries");
}

TEST_F(StatusBar, TellsWhereAnEntryWasPointed) {
    document.pdfview()->goToPage(document.pdfDoc()->page(2));
    select({{1}});
    perform("pointSelectedEntryHere:");
    EXPECT_EQ(told(), "“b” leads to page 3");
}

class StatusBarOfHeadings : public test::WindowFixture {};

TEST_F(StatusBarOfHeadings, TellsHowManyHeadingsWereFound) {
    test::PdfBuilder pdf;
    for (int i = 0; i < 3; ++i)
        pdf.addPage(
            test::PdfBuilder::showText("F2", 24, 72, 700, "Chapter title") +
            test::PdfBuilder::showText("F1", 10, 72, 600, "Body text that fills the page, and more of it."));
    open(pdf);
    document.autoTOCCommands().runAutoTOCwithH1H2H3Map();
    EXPECT_EQ(document.myWindow()->status().currentMessage(), "AutoTOC3: 3 entries");
}

class StatusBarOfALockedFile : public test::WindowFixture {};

TEST_F(StatusBarOfALockedFile, TellsWhyNothingIsToBeSeen) {
    test::PdfBuilder pdf;
    pdf.addNumberedPages(2);
    test::PdfBuilder::Options locked;
    locked.userPassword = "secret";
    open(pdf, locked);
    EXPECT_EQ(document.myWindow()->status().entriesText(), "Locked by a password");
    EXPECT_EQ(document.pdfview()->accessibleDescription(),
              "This PDF is locked by a password, so its pages can’t be shown.");
    EXPECT_EQ(document.myWindow()->tableViewH1H2H3Config()->accessibleDescription(),
              "This PDF is locked by a password, so its fonts can’t be counted.");
}

TEST_F(StatusBarOfALockedFile, TellsThatAnEncryptedOneCantBeChanged) {
    test::PdfBuilder pdf;
    pdf.addNumberedPages(2);
    test::PdfBuilder::Options encrypted;
    encrypted.ownerPassword = "secret";
    open(pdf, encrypted);
    EXPECT_EQ(document.myWindow()->status().entriesText(),
              "0 entries, not to be changed as the file is encrypted");
    EXPECT_EQ(document.pdfview()->accessibleDescription(), "") << "its pages are shown";
}

}  // namespace
}  // namespace leafwright
