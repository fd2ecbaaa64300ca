#include "document/commands/OtherProgramsFixture.h"
#include "support/Unprivileged.h"

#include <QGuiApplication>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::contentOf;
using testing::HasSubstr;

using OtherProgramsDo = test::OtherProgramsFixture;

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
    // The system tells nobody in the folder; coming back to the program does.
    Q_EMIT qobject_cast<QGuiApplication *>(QCoreApplication::instance())
        ->applicationStateChanged(Qt::ApplicationActive);
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

TEST_F(OtherProgramsDo, WhatCannotBeToldIsNotWritten) {
    ASSERT_TRUE(QFile::setPermissions(dir.path({}), {}));
    {
        const test::Unprivileged nobody;
        perform("saveDocument:");
        EXPECT_EQ(document.writeError().value().kind, PDFError::Kind::FileChanged);
    }
    ASSERT_TRUE(QFile::setPermissions(dir.path({}), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    EXPECT_TRUE(document.isDocumentEdited());
    EXPECT_THAT(document.writeError()->message.toStdString(), HasSubstr("can't be told: Permission denied"));
    EXPECT_NE(bar(), nullptr);
    perform("saveDocument:");
    EXPECT_EQ(outlineOf(path()), edited());
    EXPECT_EQ(bar(), nullptr);
}

TEST_F(OtherProgramsDo, ClosingAsksAsSavingDoes) {
    replace();
    enum Answer { SaveBeforeClosing, CancelReplacing = 2 };
    platform.answers = {SaveBeforeClosing, CancelReplacing};
    EXPECT_FALSE(document.window()->close());
    EXPECT_EQ(platform.alerts.size(), 2);
    EXPECT_EQ(contentOf(path()), other);
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
