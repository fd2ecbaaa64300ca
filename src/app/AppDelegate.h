#pragma once

#include "system/DocumentController.h"

#include <QAction>
#include <QPointer>

class QCheckBox;
class QLabel;

namespace leafwright {

class AboutWindow;
class DocumentWindow;
class MyDocument;
class PreferencesWindow;
class Recovery;
class UpdateWindow;
class Updater;

/// The application: its settings' defaults, what it opens at the start, and the commands that belong to no
/// document in particular. They are registered in every document's action table, so that each window's menus
/// have them.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    /// Registers the value that each setting has until the user changes it.
    static void initialize(UserDefaults &defaults);

    /// Initializes, before any document opens. @param platform must outlive the delegate
    explicit AppDelegate(Platform &platform);
    ~AppDelegate() override;

    /// Never: there are no empty documents.
    static bool applicationShouldOpenUntitledFile() { return false; }
    /// Makes the update checker, opens the user guide if the setting says so, and explains the double click.
    void applicationDidFinishLaunching();
    /// Opens files; those that can't be opened are told of one by one. While a document is busy, that waits.
    void openFiles(const QStringList &paths);
    /// Shows the newest window, for a second start without files.
    void comeToFront();
    /// Closes all documents and ends the program, unless the user keeps one open.
    void terminate();

    /// Has every document that is opened from now on keep what is not saved in a folder, and offer what was
    /// left there. Until then none does.
    void setRecoveryFolder(const QString &folder) { recoveryFolder_ = folder; }
    /// Has every document that is opened from now on remember how it is looked at in a folder. Until then
    /// none does.
    void setViewFolder(const QString &folder) { viewFolder_ = folder; }
    /// Keeps what is not saved of any document, and waits until it is; for when the program is about to be
    /// ended by others, and nobody can be asked.
    void keepUnsavedChanges();
    /// The same without what is being typed, for where windows can be used no more.
    void keepEnteredChanges();

    /// Explains what a double click does. @param sender the check box that decides it
    void changeLabelDoubleClickingMessage(const QCheckBox *sender);
    void showPreferences();
    void orderFrontStandardAboutPanel();
    /// Asks the feed of versions whether there is a newer one.
    void appMenuCheckForUpdates();
    /// Opens the user guide with the system's application for it, not in this one. Beeps if there is none.
    void openHelpFile();
    void openTutorial();
    void openLeafwrightOnline();
    void openLeafwrightMacAppStore();
    void emailCustomerSupport();
    void emailFeedback();

    /// The text beside the setting for double clicks, in the preferences.
    QLabel *labelDoubleClickEditingMessage() const;
    /// The update checker made at launch; null before.
    Updater *sparkleUpdater() const { return sparkleUpdater_.get(); }
    /// The newest window's item for the update check; null if that window is gone.
    QAction *menuItemCheckForUpdates() const { return menuItemCheckForUpdates_; }

    DocumentController &documentController() { return documentController_; }
    PreferencesWindow &preferences() { return *preferences_; }
    /// The one update checker; made if there is none yet.
    Updater &sharedUpdater();

private:
    std::unique_ptr<Document> makeDocument();
    void tellWhyNotOpened(const MyDocument &document) const;
    void keepChanges(void (Recovery::*keep)());
    void openFile(const QString &path);
    void registerActions(MyDocument &document);
    void adoptWindow(DocumentWindow &window);
    void setDoubleClickMessage(bool editing);

    Platform &platform_;
    DocumentController documentController_;
    std::unique_ptr<PreferencesWindow> preferences_;
    std::unique_ptr<AboutWindow> about_;
    std::unique_ptr<Updater> sparkleUpdater_;
    std::unique_ptr<UpdateWindow> updateWindow_;
    QPointer<QAction> menuItemCheckForUpdates_;
    QString recoveryFolder_;  ///< Null for none.
    QString viewFolder_;      ///< Likewise.
};

}  // namespace leafwright
