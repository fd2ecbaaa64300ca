#include "app/AboutWindow.h"
#include "app/AppDelegate.h"
#include "app/Defaults.h"
#include "app/Endpoints.h"
#include "app/PreferencesWindow.h"
#include "app/Updater.h"
#include "document/MyDocument.h"
#include "document/window/DocumentWindow.h"
#include "outlineview/OKNSOutlineView.h"
#include "platform/UserDefaults.h"
#include "support/HttpServer.h"
#include "support/PdfBuilder.h"
#include "support/RecordingPlatform.h"
#include "support/TempDir.h"
#include "view/LabelPDFView.h"
#include "widgets/NoticeBars.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class Delegate : public testing::Test {
protected:
    QString file(const QString &name) const {
        test::PdfBuilder pdf;
        pdf.addNumberedPages(2);
        pdf.save(dir.path(name));
        return dir.path(name);
    }
    MyDocument &document(size_t index) {
        return static_cast<MyDocument &>(*delegate.documentController().documents().at(index));
    }
    /// Opens a document with one item, which leads to the third page, and double-clicks that.
    void doubleClickInDocument(Qt::KeyboardModifiers modifiers) {
        test::PdfBuilder pdf;
        pdf.addNumberedPages(3);
        addOutline(pdf, {{"(Three)", "[" + pdf.pageReference(2) + " /XYZ 72 400 null]"}});
        pdf.save(dir.path("a.pdf"));
        delegate.openFiles({dir.path("a.pdf")});
        OKNSOutlineView &outline = *document(0).outlineview();
        const QPoint title = outline.visualRect(outline.model()->index(0, 0)).center();
        QTest::mouseClick(outline.viewport(), Qt::LeftButton, modifiers, title);
        QTest::mouseDClick(outline.viewport(), Qt::LeftButton, modifiers, title);
    }

    test::TempDir dir;
    test::RecordingPlatform platform;
    AppDelegate delegate{platform};
};

TEST(DefaultSettings, AreTenInTheirOrder) {
    QStringList lines;
    for (const DefaultSetting &setting : defaultSettings())
        lines.append(setting.key + " " + setting.value.toString());
    EXPECT_EQ(lines, (QStringList{
                         "autotocMaxDepth 3",
                         "LeafwrightAllowPDFReadingInBackground false",
                         "autotocIgnoreHighFrequencyFonts true",
                         "LeafwrightShouldFindMOIPointInAutoTOC true",
                         "LeafwrightShowHelpOnStart true",
                         "LeafwrightEnableDoubleClickEditing false",
                         "LeafwrightAlwaysPreviewBeforeSave false",
                         "LeafwrightShouldWarnAboutPDFVersion false",
                         "LeafwrightShouldRedoMOIGenericPoints true",
                         "autotocIgnoreLowFrequencyFonts true",
                     }));
}

TEST_F(Delegate, KeepsWhatIsNotSavedForTheNextStart) {
    const QString folder = dir.path("recovery");
    delegate.openFiles({file("without.pdf")});
    delegate.setRecoveryFolder(folder);
    delegate.openFiles({file("with.pdf")});
    for (size_t i = 0; i < 2; ++i) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return !document(i).isBusy(); }));
        QCoreApplication::processEvents();
        document(i).edits().insert(document(i).root(), 0, std::make_unique<MyOutlineItem>());
    }
    delegate.keepUnsavedChanges();
    EXPECT_EQ(QDir(folder).entryList({"*.outline"}).size(), 1);
    platform.answers = {1};
    EXPECT_TRUE(document(1).myWindow()->close());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(QDir(folder).entryList(QDir::Files).size(), 0) << "it was discarded";
}

TEST_F(Delegate, RegistersTheDefaultsBeforeAnyDocumentOpens) {
    UserDefaults &defaults = platform.userDefaults();
    for (const DefaultSetting &setting : defaultSettings())
        EXPECT_EQ(defaults.integerForKey(setting.key), setting.value.toInt()) << setting.key.toStdString();
}

TEST_F(Delegate, TheDepthOfAutoTOCIsThreeUntilTheUserChangesIt) {
    EXPECT_EQ(platform.userDefaults().integerForKey("autotocMaxDepth"), 3);
    platform.userDefaults().setValue("autotocMaxDepth", 5);
    EXPECT_EQ(platform.userDefaults().integerForKey("autotocMaxDepth"), 5);
}

TEST_F(Delegate, NoHeadingMapIsTheLastUsedOneUntilTheFirstIsSaved) {
    EXPECT_TRUE(platform.userDefaults().stringForKey("LastUsedH1H2H3MapString").isNull());
}

TEST_F(Delegate, AFirstLaunchOpensTheGuideAsADocument) {
    delegate.applicationDidFinishLaunching();
    ASSERT_EQ(delegate.documentController().documents().size(), 1U);
    EXPECT_EQ(document(0).displayName(), "Leafwright User Guide.pdf");
    EXPECT_TRUE(document(0).window()->isVisible());
    EXPECT_TRUE(platform.openedFiles.isEmpty()) << "not elsewhere";
    EXPECT_TRUE(delegate.documentController().recentDocuments().isEmpty()) << "it is always at hand";
}

TEST_F(Delegate, WhyAFileCantBeOpenedStandsInTheWindowThatIsThere) {
    QFile bad(dir.path("bad.pdf"));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write("this is no PDF");
    bad.close();
    delegate.openFiles({bad.fileName()});
    delegate.openFiles({file("good.pdf")});
    const NoticeBars &notices = *document(0).myWindow()->notices();
    EXPECT_EQ(notices.bar("notOpened"), nullptr) << "there was no window yet";
    delegate.openFiles({bad.fileName()});
    ASSERT_NE(notices.bar("notOpened"), nullptr);
    EXPECT_TRUE(notices.bar("notOpened")->text().startsWith("“bad.pdf” could not be opened: "));
    ASSERT_EQ(platform.alerts.size(), 2);
    EXPECT_EQ(platform.alerts[1].message, "Unable to open PDF");
    EXPECT_EQ(platform.alerts[1].title, "bad.pdf");
}

TEST_F(Delegate, AfterAFirstLaunchADoubleClickJumpsToThePage) {
    doubleClickInDocument({});
    EXPECT_EQ(document(0).pdfview()->currentPage()->index(), 2);
    EXPECT_FALSE(document(0).isDocumentEdited());
}

TEST_F(Delegate, AfterAFirstLaunchEditingNeedsTheCommandKey) {
    doubleClickInDocument(Qt::ControlModifier);
    EXPECT_EQ(document(0).pdfview()->currentPage()->index(), 0);
    EXPECT_NE(document(0).outlineview()->findChild<QLineEdit *>(), nullptr);
}

TEST_F(Delegate, WithoutTheGuideALaunchShowsNoWindowAtAll) {
    platform.userDefaults().setValue("LeafwrightShowHelpOnStart", false);
    delegate.applicationDidFinishLaunching();
    EXPECT_TRUE(delegate.documentController().documents().empty());
    for (const QWidget *window : QApplication::topLevelWidgets())
        EXPECT_FALSE(window->isVisible()) << window->objectName().toStdString();
}

TEST_F(Delegate, NoDocumentIsWithoutAFile) {
    EXPECT_FALSE(AppDelegate::applicationShouldOpenUntitledFile());
}

TEST_F(Delegate, ALaunchMakesTheUpdateCheckerButAsksNobody) {
    platform.userDefaults().setValue("LeafwrightShowHelpOnStart", false);
    EXPECT_EQ(delegate.sparkleUpdater(), nullptr);
    delegate.applicationDidFinishLaunching();
    ASSERT_NE(delegate.sparkleUpdater(), nullptr);
    EXPECT_EQ(delegate.sparkleUpdater(), &delegate.sharedUpdater());
    EXPECT_FALSE(delegate.sparkleUpdater()->isChecking());
}

class DoubleClickMessage : public Delegate {
protected:
    DoubleClickMessage() { platform.userDefaults().setValue("LeafwrightShowHelpOnStart", false); }

    QString shown() { return delegate.labelDoubleClickEditingMessage()->text(); }
    void set(bool editing) {
        platform.userDefaults().setValue("LeafwrightEnableDoubleClickEditing", editing);
    }

    const QString follows =
        "Double-click to follow the TOC link. Hold down CMD while double-clicking TOC item to edit the TOC "
        "item.";
    const QString edits =
        "To follow the TOC link and open the correct page in PDF, hold down CMD while double-clicking.";
};

TEST_F(DoubleClickMessage, IsSetAtLaunchFromTheSetting) {
    for (const bool editing : {false, true}) {
        set(editing);
        delegate.applicationDidFinishLaunching();
        EXPECT_EQ(shown(), editing ? edits : follows);
    }
}

TEST_F(DoubleClickMessage, ChangesAtOnceWithTheCheckBox) {
    delegate.applicationDidFinishLaunching();
    QCheckBox *box = delegate.preferences().doubleClickEditing();
    box->click();
    EXPECT_EQ(shown(), edits);
    EXPECT_EQ(box->accessibleDescription(), edits);
    EXPECT_TRUE(platform.userDefaults().boolForKey("LeafwrightEnableDoubleClickEditing"));
    box->click();
    EXPECT_EQ(shown(), follows);
    EXPECT_EQ(box->accessibleDescription(), follows);
}

TEST_F(DoubleClickMessage, ChangesAtOnceWithTheSettingItself) {
    delegate.applicationDidFinishLaunching();
    set(true);
    EXPECT_EQ(shown(), edits);
    set(false);
    EXPECT_EQ(shown(), follows);
}

TEST_F(DoubleClickMessage, OnlyACheckBoxThatIsOnEdits) {
    QCheckBox box;
    box.setTristate();
    box.setCheckState(Qt::Checked);
    delegate.changeLabelDoubleClickingMessage(&box);
    EXPECT_EQ(shown(), edits);
    for (const auto state : {Qt::Unchecked, Qt::PartiallyChecked}) {
        box.setCheckState(state);
        delegate.changeLabelDoubleClickingMessage(&box);
        EXPECT_EQ(shown(), follows) << state;
    }
}

TEST_F(Delegate, EachFileGetsAWindow) {
    delegate.openFiles({file("a.pdf"), file("b.pdf")});
    ASSERT_EQ(delegate.documentController().documents().size(), 2U);
    EXPECT_TRUE(document(0).window()->isVisible());
    EXPECT_EQ(document(1).displayName(), "b.pdf");
}

TEST_F(Delegate, AMissingFileIsToldOfAndTheOthersAreOpened) {
    delegate.openFiles({dir.path("nowhere.pdf"), file("b.pdf")});
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_TRUE(platform.alerts[0].message.contains("nowhere.pdf"));
    EXPECT_EQ(delegate.documentController().documents().size(), 1U);
}

TEST_F(Delegate, FilesWaitWhileADocumentIsBusy) {
    delegate.openFiles({file("a.pdf")});
    {
        const Document::Busy busy(document(0));
        delegate.openFiles({file("b.pdf")});
        EXPECT_EQ(delegate.documentController().documents().size(), 1U);
    }
    QCoreApplication::processEvents();
    ASSERT_EQ(delegate.documentController().documents().size(), 2U);
    EXPECT_EQ(document(1).displayName(), "b.pdf");
}

TEST_F(Delegate, FilesDroppedOnAWindowAreOpened) {
    delegate.openFiles({file("a.pdf")});
    Q_EMIT document(0).myWindow()->filesDropped({file("b.pdf")});
    EXPECT_EQ(delegate.documentController().documents().size(), 2U);
}

TEST_F(Delegate, TheCloseCommandClosesItsDocument) {
    delegate.openFiles({file("a.pdf"), file("b.pdf")});
    EXPECT_TRUE(document(0).actions().perform("performClose:"));
    ASSERT_EQ(delegate.documentController().documents().size(), 1U);
    EXPECT_EQ(document(0).displayName(), "b.pdf");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(Delegate, TheGuideOpensWithTheSystemsApplication) {
    delegate.openFiles({file("a.pdf")});
    ASSERT_TRUE(document(0).actions().perform("openHelpFile:"));
    ASSERT_EQ(platform.openedFiles.size(), 1);
    EXPECT_TRUE(platform.openedFiles[0].endsWith("Leafwright User Guide.pdf"));
    EXPECT_EQ(delegate.documentController().documents().size(), 1U) << "not in this program";
}

class Commands : public Delegate {
protected:
    Commands() { delegate.openFiles({file("a.pdf")}); }

    bool perform(const QString &selector) { return document(0).actions().perform(selector); }
    static bool isShown(const QString &name) {
        return std::ranges::any_of(QApplication::topLevelWidgets(), [&](const QWidget *window) {
            return window->isVisible() && window->objectName() == name;
        });
    }
};

TEST_F(Commands, EveryWindowsMenusHaveTheApplications) {
    delegate.openFiles({file("b.pdf")});
    for (const size_t index : {0, 1}) {
        for (const ActionDescription &each : actionDescriptions()) {
            const bool isApplications =
                each.menu == Menu::Help || each.selector == QString("showPreferences:");
            if (!isApplications) continue;
            EXPECT_TRUE(document(index).actions().isHandled(each.selector)) << each.selector;
            const auto *item = document(index).window()->findChild<QAction *>(QString(each.selector));
            ASSERT_NE(item, nullptr) << each.selector;
            EXPECT_TRUE(item->isEnabled()) << each.selector;
        }
    }
}

TEST_F(Commands, RecentFilesAreInTheFileMenuRightAfterOpen) {
    const QString second = file("b & c.pdf");
    delegate.openFiles({second});
    const auto fileMenu = [&] {
        auto *menu = qobject_cast<QMenu *>(document(0).myWindow()->menuBar()->actions().first()->menu());
        Q_EMIT menu->aboutToShow();
        return menu->actions();
    };
    ASSERT_EQ(fileMenu().at(0)->objectName(), "openDocument:");
    EXPECT_EQ(fileMenu().at(1)->text(), "Open Recent");
    EXPECT_TRUE(fileMenu().at(2)->isSeparator());
    EXPECT_EQ(fileMenu().at(3)->objectName(), "performClose:");
    const auto recent = fileMenu().at(1)->menu()->actions();
    ASSERT_EQ(recent.size(), 4) << "two files, a line, and the command";
    EXPECT_EQ(recent[0]->text(), "b && c.pdf") << "no mnemonic";
    EXPECT_EQ(recent[0]->toolTip(), second);
    EXPECT_TRUE(recent[2]->isSeparator());
    EXPECT_EQ(recent[3]->text(), "Clear List");

    document(1).actions().perform("performClose:");
    ASSERT_EQ(delegate.documentController().documents().size(), 1U);
    recent[0]->trigger();
    EXPECT_EQ(document(1).pdfURL(), second);
    recent[3]->trigger();
    EXPECT_FALSE(fileMenu().at(1)->menu()->isEnabled());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(Commands, QuittingClosesAllDocumentsUnlessOneIsKept) {
    delegate.openFiles({file("b.pdf")});
    document(1).updateChangeCount(Document::Change::Done);
    constexpr int cancel = 2;
    platform.answers = {cancel};
    EXPECT_TRUE(perform("terminate:"));
    EXPECT_FALSE(delegate.documentController().documents().empty());
    constexpr int discard = 1;
    platform.answers = {discard};
    EXPECT_TRUE(perform("terminate:"));
    EXPECT_TRUE(delegate.documentController().documents().empty());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(Commands, TheItemOfTheUpdateCheckIsTheNewestWindows) {
    EXPECT_EQ(delegate.menuItemCheckForUpdates(),
              document(0).window()->findChild<QAction *>("appMenuCheckForUpdates:"));
    document(0).actions().perform("performClose:");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(delegate.menuItemCheckForUpdates(), nullptr);
}

TEST_F(Commands, PagesAreOpenedInTheBrowser) {
    EXPECT_TRUE(perform("openTutorial:"));
    EXPECT_TRUE(perform("openLeafwrightOnline:"));
    EXPECT_TRUE(perform("openLeafwrightMacAppStore:"));
    EXPECT_EQ(platform.openedURLs, (QList{tutorialsPage(), homePage(), storePage()}));
}

TEST_F(Commands, MailsAreBegunInTheMailProgram) {
    QCoreApplication::setApplicationVersion("4.2");
    EXPECT_TRUE(perform("emailCustomerSupport:"));
    EXPECT_TRUE(perform("emailFeedback:"));
    QCoreApplication::setApplicationVersion({});
    ASSERT_EQ(platform.openedURLs.size(), 2);
    EXPECT_EQ(platform.openedURLs[0].toEncoded(),
              "mailto:support@leafwright.org?subject=Help%20Using%20Leafwright%204.2%20(Direct)");
    EXPECT_EQ(platform.openedURLs[1].toEncoded(),
              "mailto:feedback@leafwright.org?subject=Feedback%20on%20Leafwright%20v1.5.1");
}

TEST_F(Commands, ThePreferencesAreShownOnce) {
    EXPECT_TRUE(perform("showPreferences:"));
    EXPECT_TRUE(perform("showPreferences:"));
    EXPECT_TRUE(delegate.preferences().isVisible());
    EXPECT_FALSE(delegate.preferences().isModal());
}

TEST_F(Commands, AboutIsShownAndItsButtonLeadsToTheWebPage) {
    EXPECT_FALSE(isShown("about"));
    EXPECT_TRUE(perform("orderFrontStandardAboutPanel:"));
    EXPECT_TRUE(isShown("about"));
    for (QWidget *window : QApplication::topLevelWidgets())
        if (auto *about = qobject_cast<AboutWindow *>(window)) Q_EMIT about->homePageRequested();
    EXPECT_EQ(platform.openedURLs, QList{homePage()});
}

TEST_F(Commands, TheUpdateCheckAsksTheFeed) {
    test::HttpServer server;
    server.answer("/feed", "<rss><channel><item><version>99</version></item></channel></rss>");
    delegate.sharedUpdater().setFeedURL(server.url("/feed"));
    QSignalSpy checking(&delegate.sharedUpdater(), &Updater::checkingChanged);
    delegate.sharedUpdater().setCurrentVersion("1");
    EXPECT_TRUE(perform("appMenuCheckForUpdates:"));
    while (delegate.sharedUpdater().isChecking() && checking.wait())
        continue;
    EXPECT_EQ(server.requests.size(), 1);
    EXPECT_TRUE(isShown("updates"));
}

TEST_F(Commands, WhatTheUpdateCheckFindsWaitsWhileADocumentIsBusy) {
    test::HttpServer server;
    delegate.sharedUpdater().setFeedURL(server.url("/feed"));
    delegate.sharedUpdater().setCurrentVersion("1");
    for (const char *version : {"1", "none"}) {
        server.answer("/feed", "<rss><channel><item><version>" + QByteArray(version) +
                                   "</version></item></channel></rss>");
        platform.alerts.clear();
        QSignalSpy checking(&delegate.sharedUpdater(), &Updater::checkingChanged);
        EXPECT_TRUE(perform("appMenuCheckForUpdates:"));
        {
            const Document::Busy busy(document(0));
            while (delegate.sharedUpdater().isChecking() && checking.wait())
                continue;
            QCoreApplication::processEvents();
            EXPECT_TRUE(platform.alerts.isEmpty()) << version << ": an alert would hold up a save";
        }
        QCoreApplication::processEvents();
        EXPECT_EQ(platform.alerts.size(), 1) << version;
    }
}

}  // namespace
}  // namespace leafwright
