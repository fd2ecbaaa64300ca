#include "document/Recovery.h"
#include "document/commands/SavingCommands.h"
#include "document/commands/StructuralEdits.h"
#include "support/CliFiles.h"
#include "support/WindowFixture.h"
#include "widgets/NoticeBars.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::PdfBuilder;
using testing::HasSubstr;

/// A document with the entries "One" and "Two" in its file, and a folder for what is not saved.
class Recovering : public test::WindowFixture {
protected:
    enum Answer { Later, Recover, Discard, Keep };

    void SetUp() override {
        new Recovery(document, folder);
        open(book("One"));
        keeper(document).begin();
        showing = &document;
    }
    static PdfBuilder book(const std::string &firstTitle, int pages = 2) {
        PdfBuilder pdf;
        pdf.addNumberedPages(pages);
        test::addOutline(
            pdf, {{"(" + firstTitle + ")", "[0 /XYZ 72 700 null]"}, {"(Two)", "[1 /XYZ 72 700 null]"}});
        return pdf;
    }
    static Recovery &keeper(MyDocument &of) { return *of.findChild<Recovery *>(); }
    void rename(size_t position, const QString &title) {
        document.edits().setPageTitle(*document.root().children().at(position), title);
    }
    QStringList kept() { return QDir(folder).entryList({"*.outline"}, QDir::Files); }
    QStringList names() { return QDir(folder).entryList(QDir::Files | QDir::Hidden); }

    /// What is left when the program is ended: its files, and none of what would tidy up.
    void crash() {
        keeper(document).keepNow();
        const QString copies = dir.path("copies");
        QDir().mkpath(copies);
        for (const QString &name : kept())
            QFile::copy(folder + '/' + name, copies + '/' + name);
        document.updateChangeCount(Document::Change::Cleared);
        keeper(document).keepNow();
        document.myWindow()->close();
        for (const QString &name : QDir(copies).entryList(QDir::Files))
            ASSERT_TRUE(QFile::rename(copies + '/' + name, folder + '/' + name));
    }
    /// The next start of the program.
    void openAgain(const QString &name = "a.pdf") {
        next = std::make_unique<MyDocument>(platform);
        ASSERT_TRUE(next->readFromURL(dir.path(name)));
        new Recovery(*next, folder);
        next->makeWindowControllers();
        next->finishLoading();
        keeper(*next).begin();
        showing = next.get();
    }
    std::string textOfSheet() {
        if (!showing->openSheet()) return "no sheet";
        QString text;
        for (const QLabel *label : showing->openSheet()->findChildren<QLabel *>())
            text += label->text() + '\n';
        return text.toStdString();
    }
    void press(Answer answer) {
        ASSERT_TRUE(showing->openSheet());
        ASSERT_TRUE(showing->openSheet()->pressButton(answer));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QString title(size_t position) { return showing->root().children().at(position)->pageTitle(); }
    static NoticeBar *notice(MyDocument &document, const QString &name = "notKept") {
        return document.myWindow()->notices()->bar(name);
    }
    /// Has what was kept changed by hand, or by a disk.
    void changeKept(const QByteArray &before, const QByteArray &after) {
        const QString path = folder + '/' + kept().value(0);
        QByteArray content = test::bytesOf(path);
        ASSERT_TRUE(content.contains(before)) << content.constData();
        test::saveBytes(path, content.replace(before, after));
    }

    /// Saves, and starts again as if the program had ended before it removed what it had kept.
    void expectNothingOfferedAfterASave() {
        keeper(document).keepNow();
        ASSERT_EQ(kept().size(), 1);
        const QString path = folder + '/' + kept()[0];
        const QByteArray content = test::bytesOf(path);
        ASSERT_TRUE(document.saving().saveFinal());
        keeper(document).keepNow();
        document.myWindow()->close();
        test::saveBytes(path, content);
        openAgain();
        EXPECT_EQ(textOfSheet(), "no sheet");
        EXPECT_EQ(names(), QStringList());
    }

    QString folder = dir.path("state/recovery");
    std::unique_ptr<MyDocument> next;
    MyDocument *showing = nullptr;
};

TEST_F(Recovering, NothingIsKeptOfWhatIsNotChanged) {
    keeper(document).keepNow();
    EXPECT_FALSE(QDir(folder).exists());
    openAgain();
    EXPECT_EQ(textOfSheet(), "no sheet");
}

TEST_F(Recovering, WhatIsChangedIsKeptByItself) {
    rename(0, "Changed");
    EXPECT_TRUE(QTest::qWaitFor([this] { return kept().size() == 1; }, 30'000));
    const auto readAgain = [this] {
        return QString::fromUtf8(test::bytesOf(folder + '/' + kept().value(0)));
    };
    EXPECT_TRUE(readAgain().contains("Changed"));
    rename(0, "Changed again");
    EXPECT_TRUE(QTest::qWaitFor([&] { return readAgain().contains("Changed again"); }, 30'000));
    EXPECT_EQ(kept().size(), 1);
}

TEST_F(Recovering, OffersWhatWasNotSaved) {
    rename(0, "Changed");
    crash();
    openAgain();
    EXPECT_EQ(title(0), "One") << "nothing happens unasked";
    EXPECT_THAT(textOfSheet(), HasSubstr("“a.pdf”"));
    EXPECT_THAT(textOfSheet(), HasSubstr("2 entries"));
    EXPECT_THAT(textOfSheet(), HasSubstr(QDate::currentDate().toString("yyyy").toStdString()));
    EXPECT_THAT(textOfSheet(), Not(HasSubstr("has changed since")));
    const auto entry = showing->root().children()[1]->entry();
    ASSERT_TRUE(entry.number);
    const QStringList before = kept();
    press(Recover);
    EXPECT_EQ(title(0), "Changed");
    EXPECT_EQ(showing->root().children()[1]->entry(), entry) << "the entry of the file";
    EXPECT_EQ(showing->root().children()[1]->importedPage(), 1);
    EXPECT_TRUE(showing->isDocumentEdited());
    EXPECT_EQ(kept(), before) << "until it is saved";
    keeper(*showing).keepNow();
    EXPECT_EQ(kept(), before) << "in the same file";
    ASSERT_TRUE(showing->saving().saveFinal());
    keeper(*showing).keepNow();
    EXPECT_EQ(kept().size(), 0);
    EXPECT_EQ(outlineOf(dir.path("a.pdf")), test::treeText(showing->root()));
}

TEST_F(Recovering, WhatIsRecoveredIsAStepThatCanBeTakenBack) {
    rename(0, "Changed");
    crash();
    openAgain();
    press(Recover);
    EXPECT_EQ(showing->edits().undoSummary().name, "recoverOutline");
    ASSERT_TRUE(showing->actions().perform("stepBack:"));
    EXPECT_EQ(title(0), "One");
    EXPECT_FALSE(showing->isDocumentEdited());
    ASSERT_TRUE(showing->actions().perform("stepForward:"));
    EXPECT_EQ(title(0), "Changed");
    keeper(*showing).keepNow();
    EXPECT_EQ(kept().size(), 1);
}

TEST_F(Recovering, WhatIsRecoveredAndTakenBackIsThereForLater) {
    rename(0, "Changed");
    crash();
    openAgain();
    press(Recover);
    keeper(*showing).keepNow();
    ASSERT_TRUE(showing->actions().perform("stepBack:"));
    EXPECT_EQ(kept().size(), 1);
    EXPECT_FALSE(showing->isDocumentEdited());
    ASSERT_TRUE(showing->myWindow()->close());
    EXPECT_EQ(kept().size(), 1);
    openAgain();
    press(Recover);
    EXPECT_EQ(title(0), "Changed");
    ASSERT_TRUE(showing->saving().saveFinal());
    keeper(*showing).keepNow();
    EXPECT_EQ(names(), QStringList());
}

TEST_F(Recovering, WhatIsDoneInsteadOfWhatWasTakenBackIsKeptBesideIt) {
    rename(0, "Changed");
    crash();
    openAgain();
    press(Recover);
    ASSERT_TRUE(showing->actions().perform("stepBack:"));
    showing->edits().setPageTitle(*showing->root().children()[0], "Other");
    keeper(*showing).keepNow();
    EXPECT_EQ(kept().size(), 2);
    ASSERT_TRUE(showing->saving().saveFinal());
    keeper(*showing).keepNow();
    ASSERT_EQ(kept().size(), 1);
    EXPECT_THAT(test::bytesOf(folder + '/' + kept()[0]).toStdString(), HasSubstr("\"Changed\""));
}

TEST_F(Recovering, WhatIsChangedThenIsKeptInItsPlace) {
    rename(0, "Changed");
    crash();
    openAgain();
    press(Recover);
    showing->edits().setPageTitle(*showing->root().children()[0], "Changed more");
    keeper(*showing).keepNow();
    ASSERT_EQ(kept().size(), 1);
    EXPECT_THAT(test::bytesOf(folder + '/' + kept()[0]).toStdString(), HasSubstr("Changed more"));
}

TEST_F(Recovering, WhatIsDiscardedIsGone) {
    rename(0, "Changed");
    crash();
    openAgain();
    press(Discard);
    EXPECT_EQ(title(0), "One");
    EXPECT_FALSE(showing->isDocumentEdited());
    EXPECT_EQ(textOfSheet(), "no sheet");
    EXPECT_EQ(names(), QStringList());
}

TEST_F(Recovering, WhatIsLeftForLaterIsOfferedAgainAndNotWrittenOver) {
    rename(0, "Changed");
    crash();
    openAgain();
    press(Later);
    showing->edits().setPageTitle(*showing->root().children()[0], "Other");
    keeper(*showing).keepNow();
    EXPECT_EQ(kept().size(), 2);
    next.reset();
    openAgain();
    EXPECT_THAT(textOfSheet(), HasSubstr("the latest of 2"));
    press(Discard);
    EXPECT_THAT(textOfSheet(), HasSubstr("2 entries")) << "the next";
    EXPECT_THAT(textOfSheet(), Not(HasSubstr("the latest of")));
    press(Recover);
    EXPECT_EQ(title(0), "Changed");
}

TEST_F(Recovering, SaysThatTheFileHasChanged) {
    rename(1, "Second");
    crash();
    // Another page in front, and other entries.
    PdfBuilder other = book("New", 3);
    other.setCatalogEntry("/PageLabels", "<< /Nums [0 << /S /r >> 1 << /S /D >>] >>");
    save(other);
    openAgain();
    EXPECT_THAT(textOfSheet(), HasSubstr("has changed since"));
    press(Recover);
    EXPECT_EQ(title(0), "One");
    EXPECT_EQ(title(1), "Second");
    const MyOutlineItem &first = *showing->root().children()[0];
    EXPECT_FALSE(first.entry().number) << "the entry that had that number is another now";
    EXPECT_FALSE(first.importedPage());
    EXPECT_EQ(showing->outline().knownPageIndexOfItem(first), 1) << "by its label";
    EXPECT_EQ(showing->root().children()[1]->entry().number,
              showing->pdfDoc()->outlineRoot().childAtIndex(1).entry().number)
        << "which has the title that it had";
}

TEST_F(Recovering, AFileThatWasOnlyTouchedHasNotChanged) {
    rename(0, "Changed");
    crash();
    const QByteArray bytes = test::bytesOf(dir.path("a.pdf"));
    QFile::remove(dir.path("a.pdf"));
    test::saveBytes(dir.path("a.pdf"), bytes);
    openAgain();
    EXPECT_THAT(textOfSheet(), Not(HasSubstr("has changed since")));
}

TEST_F(Recovering, AFileThatWeHaveSavedSinceItWasReadIsTheOneKnown) {
    rename(0, "Saved");
    ASSERT_TRUE(document.saving().saveFinal());
    rename(0, "Changed");
    crash();
    openAgain();
    EXPECT_EQ(title(0), "Saved");
    EXPECT_THAT(textOfSheet(), Not(HasSubstr("has changed since")));
}

TEST_F(Recovering, ASaveLeavesNothing) {
    rename(0, "Changed");
    keeper(document).keepNow();
    EXPECT_EQ(kept().size(), 1);
    ASSERT_TRUE(document.saving().saveFinal());
    keeper(document).keepNow();
    EXPECT_EQ(kept().size(), 0);
    EXPECT_EQ(names(), QStringList()) << "nor a lock";
}

TEST_F(Recovering, AFailedSaveLeavesAll) {
    rename(0, "Changed");
    keeper(document).keepNow();
    QFile::remove(dir.path("a.pdf"));
    EXPECT_TRUE(document.writeNewPDFOutline(dir.path("nowhere/a.pdf"), MyDocument::saveFinalPDF));
    keeper(document).keepNow();
    EXPECT_EQ(kept().size(), 1);
}

TEST_F(Recovering, ARevertLeavesNothing) {
    rename(0, "Changed");
    keeper(document).keepNow();
    ASSERT_TRUE(document.actions().perform("revertOutlineToSaved:"));
    keeper(document).keepNow();
    EXPECT_EQ(kept().size(), 0);
    ASSERT_TRUE(document.actions().perform("stepBack:"));
    keeper(document).keepNow();
    EXPECT_EQ(kept().size(), 1) << "what was reverted is there again";
}

TEST_F(Recovering, ARevertToWhatOnlyAPreviewHasIsKept) {
    rename(0, "Previewed");
    document.saving().openPDFInDefaultApp();
    rename(0, "Changed");
    keeper(document).keepNow();
    ASSERT_TRUE(document.actions().perform("revertOutlineToSaved:"));
    EXPECT_EQ(title(0), "Previewed");
    crash();
    openAgain();
    press(Recover);
    EXPECT_EQ(title(0), "Previewed");
}

TEST_F(Recovering, ARevertAfterASaveThatFailedIsKept) {
    rename(0, "Not saved");
    EXPECT_TRUE(document.writeNewPDFOutline(dir.path("nowhere/a.pdf"), MyDocument::saveFinalPDF));
    rename(0, "Changed");
    ASSERT_TRUE(document.actions().perform("revertOutlineToSaved:"));
    crash();
    openAgain();
    press(Recover);
    EXPECT_EQ(title(0), "Not saved");
}

TEST_F(Recovering, AStepBackToWhatIsSavedLeavesNothing) {
    rename(0, "Changed");
    keeper(document).keepNow();
    ASSERT_TRUE(document.actions().perform("stepBack:"));
    keeper(document).keepNow();
    EXPECT_EQ(kept().size(), 0);
}

TEST_F(Recovering, ClosingWithoutSavingLeavesNothing) {
    rename(0, "Changed");
    keeper(document).keepNow();
    platform.answers = {1};
    ASSERT_TRUE(document.myWindow()->close());
    keeper(document).keepNow();
    EXPECT_EQ(kept().size(), 0);
}

TEST_F(Recovering, ACancelledCloseLeavesAll) {
    rename(0, "Changed");
    keeper(document).keepNow();
    platform.answers = {2};
    ASSERT_FALSE(document.myWindow()->close());
    keeper(document).keepNow();
    EXPECT_EQ(kept().size(), 1);
}

TEST_F(Recovering, GoesWithThePdfToAnotherPlace) {
    rename(0, "Changed");
    keeper(document).keepNow();
    platform.filesToChoose = {dir.path("b.pdf")};
    document.saving().saveDocumentAs();
    rename(0, "Changed more");
    keeper(document).keepNow();
    EXPECT_EQ(kept().size(), 1);
    EXPECT_EQ(RecoveryFile::leftBehindFor(folder, dir.path("a.pdf")).files.size(), 0);
    openAgain();
    EXPECT_EQ(textOfSheet(), "no sheet");
}

TEST_F(Recovering, WhatCantBeKeptIsToldOnceAndHoldsNobodyUp) {
    test::saveBytes(dir.path("state"), "a file where a folder is needed");
    const auto settle = [this] {
        keeper(document).keepNow();
        QCoreApplication::processEvents();
    };
    rename(0, "Changed");
    settle();
    ASSERT_TRUE(notice(document));
    EXPECT_THAT(notice(document)->text().toStdString(), HasSubstr("can’t be kept"));
    EXPECT_FALSE(document.isBusy());
    document.myWindow()->notices()->removeNotice("notKept");  // as by its button
    rename(0, "Changed more");
    settle();
    EXPECT_FALSE(notice(document)) << "once is enough";
    QFile::remove(dir.path("state"));
    settle();
    EXPECT_EQ(kept().size(), 1) << "tried again, though nothing has changed since";
}

TEST_F(Recovering, WhatStaysAfterASaveIsTold) {
    rename(0, "Changed");
    keeper(document).keepNow();
    const QString path = folder + '/' + kept().value(0);
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QDir().mkpath(path));  // which can't be unlinked
    ASSERT_TRUE(document.saving().saveFinal());
    keeper(document).keepNow();
    QCoreApplication::processEvents();
    ASSERT_TRUE(notice(document, "notRemoved"));
    EXPECT_THAT(notice(document, "notRemoved")->text().toStdString(), HasSubstr("can’t be removed"));
    ASSERT_TRUE(QDir().rmdir(path));
}

TEST_F(Recovering, WhatIsDamagedIsToldAndNotOffered) {
    rename(0, "Changed");
    crash();
    changeKept("\"depth\"", "\"depht\"");
    openAgain();
    EXPECT_EQ(textOfSheet(), "no sheet");
    ASSERT_TRUE(notice(*showing, "notRecovered"));
    EXPECT_THAT(notice(*showing, "notRecovered")->text().toStdString(), HasSubstr(".damaged"));
    EXPECT_EQ(title(0), "One");
}

TEST_F(Recovering, TakesNoPagesAndEntriesThatTheFileDoesNotHave) {
    rename(0, "Changed");
    const int number = document.root().children()[1]->entry().number.value();
    crash();
    changeKept("\"page\": 1,", "\"page\": 2000000000,");
    changeKept("\"entry\": " + QByteArray::number(number), "\"entry\": 1");
    openAgain();
    press(Recover);
    const MyOutlineItem &second = *showing->root().children()[1];
    EXPECT_FALSE(second.importedPage());
    EXPECT_FALSE(second.entry().number) << "which is the file's catalog, or a page";
    EXPECT_TRUE(showing->saving().saveFinal());
}

TEST_F(Recovering, TellsOfActionsThatTheFileHasNoMore) {
    MyOutlineItem &first = *document.root().children()[0];
    document.edits().setPageLabel(first, QString());
    OutlineEntry entry = first.entry();
    const int there = entry.number.value();
    entry.action = OutlineEntry::Action{"JavaScript"};
    document.edits().setEntry(first, entry);
    crash();
    for (const bool isThere : {true, false}) {
        if (!isThere) changeKept("\"entry\": " + QByteArray::number(there), "\"entry\": 1");
        openAgain();
        EXPECT_THAT(textOfSheet(), Not(HasSubstr("has changed since")));
        press(Recover);
        const NoticeBar *told = notice(*showing, "lostTargets");
        ASSERT_EQ(told == nullptr, isThere);
        if (told) {
            EXPECT_THAT(told->text().toStdString(), HasSubstr("1 entries that did something else"));
        }
        showing->actions().perform("stepBack:");  // which leaves what was kept
        next.reset();
    }
}

TEST_F(Recovering, WhatWasSavedIsNotOfferedThoughItWasNotRemoved) {
    rename(0, "Changed");
    document.edits().insert(document.root(), 0, std::make_unique<MyOutlineItem>("New", PageTarget{"2"}));
    expectNothingOfferedAfterASave();
}

TEST_F(Recovering, FollowsAFileThatWasRenamed) {
    rename(0, "Changed");
    crash();
    ASSERT_TRUE(QFile::rename(dir.path("a.pdf"), dir.path("b.pdf")));
    openAgain("b.pdf");
    EXPECT_THAT(textOfSheet(), HasSubstr("“b.pdf”"));
    EXPECT_THAT(textOfSheet(), Not(HasSubstr("has changed since")));
    press(Recover);
    EXPECT_EQ(title(0), "Changed");
    keeper(*showing).keepNow();
    ASSERT_EQ(kept().size(), 1);
    EXPECT_THAT(test::bytesOf(folder + '/' + kept()[0]).toStdString(), HasSubstr("b.pdf"));
}

TEST_F(Recovering, FollowsAFileThatWasRenamedBeforeTheFirstChange) {
    ASSERT_TRUE(QFile::rename(dir.path("a.pdf"), dir.path("b.pdf")));
    rename(0, "Changed");
    crash();
    openAgain("b.pdf");
    EXPECT_THAT(textOfSheet(), HasSubstr("“b.pdf”"));
    EXPECT_THAT(textOfSheet(), Not(HasSubstr("has changed since")));
}

TEST_F(Recovering, FollowsAFileThatWasMovedFromWhereAnotherIsNow) {
    rename(0, "Changed");
    crash();
    ASSERT_TRUE(QFile::rename(dir.path("a.pdf"), dir.path("b.pdf")));
    save(book("New edition", 3));
    openAgain("b.pdf");
    EXPECT_THAT(textOfSheet(), HasSubstr(dir.path("a.pdf").toStdString())) << "whose it was";
    EXPECT_THAT(textOfSheet(), Not(HasSubstr("has changed since")));
}

TEST_F(Recovering, WhatIsForAnotherFileIsNotDiscardedUnasked) {
    rename(0, "Changed");
    crash();
    ASSERT_TRUE(QFile::copy(dir.path("a.pdf"), dir.path("copy.pdf")));
    ASSERT_TRUE(QFile::rename(dir.path("a.pdf"), dir.path("away.pdf")));
    openAgain("copy.pdf");
    press(Discard);
    EXPECT_THAT(textOfSheet(), HasSubstr(dir.path("a.pdf").toStdString()));
    EXPECT_EQ(kept().size(), 1);
    press(Keep);
    EXPECT_EQ(textOfSheet(), "no sheet");
    EXPECT_EQ(kept().size(), 1);
    openAgain("away.pdf");
    press(Discard);
    press(Discard);
    EXPECT_EQ(names(), QStringList());
}

TEST_F(Recovering, WhatMayBeForAnEditionThatWasMovedIsNotDiscardedUnasked) {
    rename(0, "Changed");
    crash();
    save(book("New edition", 3));
    openAgain();
    press(Discard);
    EXPECT_EQ(kept().size(), 1);
    press(Discard);
    EXPECT_EQ(names(), QStringList());
}

TEST_F(Recovering, SaysThatItCantBePutIntoAnEncryptedFile) {
    rename(0, "Changed");
    crash();
    test::saveEncryptedPdf(dir, "a.pdf");
    openAgain();
    EXPECT_EQ(textOfSheet(), "no sheet");
    ASSERT_TRUE(notice(*showing, "notOffered"));
    EXPECT_THAT(notice(*showing, "notOffered")->text().toStdString(),
                HasSubstr("can’t be put into this file"));
    EXPECT_EQ(kept().size(), 1);
}

TEST_F(Recovering, KnowsWhatWasSavedBeforeAPreview) {
    rename(0, "Saved");
    ASSERT_TRUE(document.saving().saveFinal());
    rename(0, "Previewed");
    document.saving().openPDFInDefaultApp();
    ASSERT_TRUE(document.actions().perform("stepBack:"));
    keeper(document).keepNow();
    rename(0, "Changed");
    crash();
    openAgain();
    EXPECT_THAT(textOfSheet(), HasSubstr("2 entries"));
    EXPECT_THAT(textOfSheet(), Not(HasSubstr("has changed since")));
}

TEST_F(Recovering, DoesNotOfferALabelOfNoPageThatWasSavedAsTheFirst) {
    document.edits().setPageLabel(*document.root().children().at(1), "99");
    expectNothingOfferedAfterASave();
}

TEST_F(Recovering, OffersWhatDiffersInNothingButWhichEntryIsWhich) {
    MyOutlineItem &item = *document.root().children().at(0);
    OutlineEntry entry = item.entry();
    entry.number = document.root().children().at(1)->entry().number;
    document.edits().setEntry(item, entry);
    crash();
    openAgain();
    EXPECT_THAT(textOfSheet(), HasSubstr("2 entries"));
}

TEST_F(Recovering, DoesNotOfferAColorThatWasSavedInTheDigitsOfAFile) {
    MyOutlineItem &item = *document.root().children().at(0);
    OutlineEntry entry = item.entry();
    entry.color = OutlineEntry::Color{0.6901960968971252, 0, 0.1254902};
    document.edits().setEntry(item, entry);
    expectNothingOfferedAfterASave();
}

TEST_F(Recovering, MakesTheFolderAgainThatSomebodyRemoved) {
    rename(0, "Changed");
    keeper(document).keepNow();
    ASSERT_TRUE(QDir(folder).removeRecursively());
    rename(0, "Changed again");
    keeper(document).keepNow();
    EXPECT_EQ(kept().size(), 1);
    EXPECT_EQ(QDir(folder).entryList({"*.lock"}).size(), 1) << "and keeps others out";
}

TEST_F(Recovering, KnowsTheFileOfWhichPagesWereLoaded) {
    rename(0, "Changed");
    keeper(document).keepNow();
    save(book("One", 3));
    ASSERT_TRUE(document.reload(MyDocument::Reload::KeepOutline));
    crash();
    openAgain();
    EXPECT_THAT(textOfSheet(), HasSubstr("2 entries"));
    EXPECT_THAT(textOfSheet(), Not(HasSubstr("has changed since")));
}

TEST_F(Recovering, KeepsWhatWasChangedBeforeItBegan) {
    document.updateChangeCount(Document::Change::Cleared);
    document.myWindow()->close();
    next = std::make_unique<MyDocument>(platform);
    ASSERT_TRUE(next->readFromURL(dir.path("a.pdf")));
    new Recovery(*next, folder);
    next->makeWindowControllers();
    next->finishLoading();
    next->edits().setPageTitle(*next->root().children()[0], "Early");
    keeper(*next).begin();
    keeper(*next).keepNow();
    EXPECT_EQ(kept().size(), 1);
}

TEST_F(Recovering, WhatIsBeingTypedIsKeptWhenTheProgramIsToldToEnd) {
    document.outlineview()->editColumn(TreeController::TitleColumn, 0);
    auto *editor = document.outlineview()->findChild<QLineEdit *>();
    ASSERT_TRUE(editor);
    editor->setText("Typed");
    keeper(document).keepNow();
    ASSERT_EQ(kept().size(), 1);
    EXPECT_THAT(test::bytesOf(folder + '/' + kept()[0]).toStdString(), HasSubstr("Typed"));
}

}  // namespace
}  // namespace leafwright
