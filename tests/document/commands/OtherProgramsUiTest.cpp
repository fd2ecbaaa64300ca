#include "document/commands/OtherPrograms.h"
#include "support/OpenPdf.h"
#include "support/WindowFixture.h"
#include "widgets/NoticeBars.h"

#include <QDir>
#include <QPushButton>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::contentOf;
using test::PdfBuilder;
using testing::HasSubstr;

/// A document with an entry on its second page, whose file another program changes.
class OtherProgramsDo : public test::WindowFixture {
protected:
    void SetUp() override {
        open(pages(3, "A"));
        rename("Edited");
        other = savedAs("other.pdf", pages(5, "B"));
    }

    void rename(const QString &title) {
        document.edits().setPageTitle(*document.root().children()[0], title);
    }
    /// Pages with an entry on the second, which is labelled "2".
    static PdfBuilder pages(int count, const std::string &title) {
        PdfBuilder pdf;
        pdf.addNumberedPages(count);
        addOutline(pdf, {{"(" + title + ")", "[" + pdf.pageReference(1) + " /XYZ 72 700 null]"}});
        return pdf;
    }
    QByteArray savedAs(const QString &name, const PdfBuilder &pdf) const {
        pdf.save(dir.path(name));
        return contentOf(dir.path(name));
    }
    QString path() const { return dir.path("a.pdf"); }
    void overwrite() const { test::writeFile(path(), other); }
    void replace() const {
        ASSERT_EQ(::rename(QFile::encodeName(dir.path("other.pdf")).constData(),
                           QFile::encodeName(path()).constData()),
                  0);
    }
    void perform(const char *selector) { ASSERT_TRUE(document.actions().perform(selector)); }
    const NoticeBar *bar() { return document.myWindow()->notices()->bar("changedOnDisk"); }
    QStringList buttonsOfBar() {
        QStringList titles;
        for (const auto *button : bar()->findChildren<QPushButton *>())
            titles.append(button->text());
        return titles;
    }

    FileOnDisk::State state() const { return document.outline().stateOnDisk(); }
    void waitForBar() {
        ASSERT_TRUE(QTest::qWaitFor([&] { return bar() != nullptr; }, 10000));
    }
    QString edited() const { return QStringLiteral("+ [2] Edited (72,700)\n"); }

    QByteArray other;
};

TEST_F(OtherProgramsDo, AReplacedFileIsToldOfAtOnce) {
    replace();
    waitForBar();
    EXPECT_TRUE(bar()->text().contains("replaced “a.pdf”")) << bar()->text().toStdString();
    EXPECT_EQ(buttonsOfBar(), (QStringList{"Load New Pages", "Save As…"}));
}

TEST_F(OtherProgramsDo, AnOverwrittenFileIsToldOfAtOnce) {
    overwrite();
    waitForBar();
    EXPECT_TRUE(bar()->text().contains("written to “a.pdf”")) << bar()->text().toStdString();
    EXPECT_EQ(buttonsOfBar(), QStringList{"Load New Pages"}) << "there is nothing to save elsewhere";
}

TEST_F(OtherProgramsDo, ADeletedFileIsWrittenAnewWhenThatIsWanted) {
    ASSERT_TRUE(QFile::remove(path()));
    waitForBar();
    EXPECT_TRUE(bar()->text().contains("“a.pdf” is no longer where it was")) << bar()->text().toStdString();
    EXPECT_EQ(buttonsOfBar(), QStringList{"Save As…"});
    enum Answer { SaveAs, SaveHere, Cancel };
    platform.answers = {Cancel, SaveHere};
    perform("saveDocument:");
    EXPECT_FALSE(QFile::exists(path()));
    perform("saveDocument:");
    EXPECT_EQ(outlineOf(path()), edited());
    EXPECT_EQ(bar(), nullptr);
}

TEST_F(OtherProgramsDo, AFolderThatIsGoneIsToldOfAndAnotherPlaceIsOffered) {
    ASSERT_EQ(::rename(qPrintable(dir.path({})), qPrintable(dir.path({}).chopped(1) + "-away")), 0);
    waitForBar();
    platform.answers = {0};
    test::TempDir elsewhere;
    platform.filesToChoose = {elsewhere.path("b.pdf")};
    perform("saveDocument:");
    EXPECT_EQ(outlineOf(elsewhere.path("b.pdf")), edited());
    EXPECT_EQ(bar(), nullptr);
    ASSERT_EQ(::rename(qPrintable(dir.path({}).chopped(1) + "-away"), qPrintable(dir.path({}))), 0);
}

TEST_F(OtherProgramsDo, WhatWeSaveOurselvesIsNoChange) {
    for (const char *title : {"One", "Two"}) {
        rename(title);
        perform("saveDocument:");
        perform("saveDocument:");
        EXPECT_EQ(state(), FileOnDisk::State::Unchanged);
    }
    EXPECT_EQ(outlineOf(path()), "+ [2] Two (72,700)\n");
    EXPECT_TRUE(platform.alerts.isEmpty());
}

TEST_F(OtherProgramsDo, PreviewsAreNobodysBusiness) {
    perform("openPDFInDefaultApp:");
    ASSERT_EQ(platform.openedFiles.size(), 1);
    test::writeFile(platform.openedFiles[0], "what a viewer has written");
    perform("openPDFInDefaultApp:");
    EXPECT_EQ(outlineOf(platform.openedFiles[0]), edited());
    EXPECT_EQ(state(), FileOnDisk::State::Unchanged);
    perform("saveDocument:");
    EXPECT_EQ(outlineOf(path()), edited());
    EXPECT_TRUE(platform.alerts.isEmpty());
}

TEST_F(OtherProgramsDo, SaveAsksBeforeAReplacedFileIsReplaced) {
    replace();
    enum Answer { SaveAs, Replace, Cancel };
    platform.answers = {Cancel, SaveAs, Replace};
    platform.filesToChoose = {std::nullopt};
    perform("saveDocument:");
    EXPECT_EQ(contentOf(path()), other);
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].buttons, (QStringList{"Save As…", "Replace", "Cancel"}));
    EXPECT_NE(bar(), nullptr);
    perform("saveDocument:");
    EXPECT_EQ(platform.savePanels.size(), 1) << "the panel is cancelled";
    EXPECT_EQ(contentOf(path()), other);
    EXPECT_TRUE(document.isDocumentEdited());
    perform("saveDocument:");
    EXPECT_EQ(outlineOf(path()), edited());
    EXPECT_FALSE(document.isDocumentEdited());
    EXPECT_EQ(state(), FileOnDisk::State::Unchanged);
    EXPECT_EQ(bar(), nullptr);
}

TEST_F(OtherProgramsDo, WhatComesWhileTheQuestionIsUpIsNotMeantByItsAnswer) {
    ASSERT_TRUE(QFile::remove(path()));
    enum Answer { SaveAs, SaveHere, Cancel };
    platform.answers = {SaveHere};
    platform.whenAsked = [this] { replace(); };
    perform("saveDocument:");
    EXPECT_EQ(contentOf(path()), other);
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(OtherProgramsDo, SaveAsMayTakeItsOwnPlace) {
    replace();
    platform.filesToChoose = {path()};
    perform("saveDocumentAs:");
    EXPECT_EQ(outlineOf(path()), edited()) << "the panel has asked";
    EXPECT_EQ(state(), FileOnDisk::State::Unchanged);
}

TEST_F(OtherProgramsDo, AnOverwrittenFileIsNeverWrittenTo) {
    overwrite();
    enum Answer { LoadNewPages, Cancel };
    platform.answers = {Cancel};
    perform("saveDocument:");
    EXPECT_EQ(platform.alerts.last().buttons, (QStringList{"Load New Pages", "Cancel"}));
    platform.filesToChoose = {dir.path("elsewhere.pdf")};
    perform("saveDocumentAs:");
    perform("openPDFInDefaultApp:");
    EXPECT_EQ(contentOf(path()), other);
    EXPECT_FALSE(QFile::exists(dir.path("elsewhere.pdf"))) << "the pages that were read are gone";
    EXPECT_TRUE(platform.openedFiles.isEmpty());
    EXPECT_TRUE(document.isDocumentEdited());
    ASSERT_TRUE(document.writeError());
    EXPECT_EQ(document.writeError()->kind, PDFError::Kind::FileChanged);
}

TEST_F(OtherProgramsDo, AFileThatIsCutShortIsOverwritten) {
    ASSERT_TRUE(QFile::resize(path(), 100));
    platform.answers = {1};
    perform("saveDocument:");
    EXPECT_EQ(QFileInfo(path()).size(), 100);
    EXPECT_TRUE(bar()->text().contains("written to “a.pdf”")) << bar()->text().toStdString();
}

TEST_F(OtherProgramsDo, ClosingAsksAsSavingDoes) {
    replace();
    enum Answer { SaveBeforeClosing, CancelReplacing = 2 };
    platform.answers = {SaveBeforeClosing, CancelReplacing};
    EXPECT_FALSE(document.window()->close());
    EXPECT_EQ(platform.alerts.size(), 2);
    EXPECT_EQ(contentOf(path()), other);
}

TEST_F(OtherProgramsDo, LoadingTheNewPagesKeepsTheOutline) {
    for (const bool inPlace : {true, false}) {
        inPlace ? overwrite() : replace();
        waitForBar();
        bar()->findChild<QPushButton *>()->click();
        EXPECT_EQ(bar(), nullptr);
        EXPECT_EQ(document.pdfDoc()->pageCount(), 5);
        EXPECT_EQ(document.pdfview()->document(), document.pdfDoc());
        EXPECT_EQ(test::treeText(document.root()), edited());
        EXPECT_TRUE(document.isDocumentEdited());
        perform("saveDocument:");
        EXPECT_TRUE(contentOf(path()).startsWith(other));
        EXPECT_EQ(outlineOf(path()), edited());
        EXPECT_TRUE(platform.alerts.isEmpty());
        other = savedAs("other.pdf", pages(5, "C"));
    }
}

TEST_F(OtherProgramsDo, ThePageThatIsShownStaysByItsLabel) {
    document.pdfview()->goToPage(document.pdfDoc()->page(1));
    replace();
    document.otherPrograms().loadNewPages();
    EXPECT_EQ(document.pdfview()->currentPage(), document.pdfDoc()->page(1));
}

TEST_F(OtherProgramsDo, NothingBeforeNewPagesCanBeTakenBack) {
    document.edits().remove(document.root(), 0);
    replace();
    document.otherPrograms().loadNewPages();
    EXPECT_FALSE(document.edits().canUndo()) << "what is away stands for an entry of the file before";
    EXPECT_EQ(test::treeText(document.root()), "");
}

TEST_F(OtherProgramsDo, LabelsThatNoNewPageHasAreTold) {
    document.edits().insert(document.root(), 1, test::makeItem({"Third", "3", {1, 1}}));
    other = savedAs("other.pdf", pages(2, "B"));
    replace();
    document.otherPrograms().loadNewPages();
    const NoticeBar *lost = document.myWindow()->notices()->bar("lostTargets");
    ASSERT_NE(lost, nullptr);
    EXPECT_THAT(lost->text().toStdString(),
                HasSubstr("1 entries have page labels that no page has any more (3)"));
}

TEST_F(OtherProgramsDo, ReloadingAsksWhatBecomesOfAnEditedOutline) {
    replace();
    enum Answer { Keep, Take, Cancel };
    platform.answers = {Cancel, Keep, Take};
    perform("reloadFromDisk:");
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].buttons, (QStringList{"Keep Outline", "Take Outline of File", "Cancel"}));
    EXPECT_EQ(document.pdfDoc()->pageCount(), 3);
    perform("reloadFromDisk:");
    EXPECT_EQ(document.pdfDoc()->pageCount(), 5);
    EXPECT_EQ(test::treeText(document.root()), edited());
    perform("reloadFromDisk:");
    EXPECT_EQ(test::treeText(document.root()), "+ [2] B (72,700)\n");
    EXPECT_FALSE(document.isDocumentEdited());
    perform("reloadFromDisk:");
    EXPECT_EQ(platform.alerts.size(), 3) << "nothing could be lost";
    EXPECT_EQ(test::treeText(document.root()), "+ [2] B (72,700)\n");
}

TEST_F(OtherProgramsDo, ReloadingAsksForAnOutlineThatOnlyTheFileBeforeHas) {
    perform("saveDocument:");
    replace();
    platform.answers = {0};
    perform("reloadFromDisk:");
    EXPECT_EQ(test::treeText(document.root()), edited());
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(OtherProgramsDo, WhatCannotBeLoadedIsToldAndAllStays) {
    test::writeFile(dir.path("other.pdf"), "no PDF");
    replace();
    document.otherPrograms().loadNewPages();
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].message, "Unable to load “a.pdf”");
    ASSERT_TRUE(QFile::remove(path()));
    document.otherPrograms().loadNewPages();
    EXPECT_EQ(platform.alerts.size(), 2);
    EXPECT_EQ(document.pdfDoc()->pageCount(), 3);
    EXPECT_EQ(test::treeText(document.root()), edited());
}

TEST_F(OtherProgramsDo, WithoutAWindowTheWriteFailsWithAMessage) {
    MyDocument plain(platform);
    load(plain, path());
    replace();
    const auto error = plain.writeNewPDFOutline(path(), MyDocument::saveFinalPDF);
    ASSERT_TRUE(error);
    EXPECT_THAT(error->message.toStdString(), HasSubstr("another program has put another file there"));
    EXPECT_EQ(contentOf(path()), other);
    EXPECT_FALSE(plain.writeNewPDFOutline(dir.path("out.pdf"), MyDocument::saveFinalPDF)) << "another place";
    EXPECT_EQ(outlineOf(dir.path("out.pdf")), "+ [2] A (72,700)\n");
}

}  // namespace
}  // namespace leafwright
