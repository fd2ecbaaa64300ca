#include "app/AppDelegate.h"

#include "app/AboutWindow.h"
#include "app/Defaults.h"
#include "app/Endpoints.h"
#include "app/PreferencesWindow.h"
#include "app/Resources.h"
#include "app/UpdateWindow.h"
#include "app/Updater.h"
#include "document/MyDocument.h"
#include "document/Recovery.h"
#include "document/ViewMemory.h"
#include "document/window/DocumentWindow.h"
#include "files/FileReading.h"
#include "platform/Settings.h"
#include "platform/UserDefaults.h"
#include "widgets/NoticeBars.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QLabel>
#include <QPointer>

namespace leafwright {

namespace {

const QString guideName = QStringLiteral("Leafwright User Guide.pdf");

void bringToFront(QWidget &window) {
    window.show();
    window.raise();
    window.activateWindow();
}

}  // namespace

void AppDelegate::initialize(UserDefaults &defaults) {
    registerDefaults(defaults);
}

AppDelegate::AppDelegate(Platform &platform)
    : platform_(platform), documentController_(platform, [this] { return makeDocument(); }) {
    initialize(platform.userDefaults());
    documentController_.leaveOutOfRecent(resourcePath(guideName));
    connect(&documentController_, &DocumentController::openingFailed, this,
            [this](Document *document) { tellWhyNotOpened(static_cast<const MyDocument &>(*document)); });
    preferences_ = std::make_unique<PreferencesWindow>(platform.userDefaults());
    connect(preferences_->doubleClickEditing(), &QCheckBox::toggled, this,
            [this] { changeLabelDoubleClickingMessage(preferences_->doubleClickEditing()); });
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
    sharedUpdater();
    if (platform_.userDefaults().boolForKey(setting::showHelpOnStart)) {
        const QString guide = resourcePath(guideName);
        if (!guide.isNull()) documentController_.openDocumentWithContentsOfURL(guide, true);
    }
    setDoubleClickMessage(platform_.userDefaults().boolForKey(setting::enableDoubleClickEditing));
}

void AppDelegate::openFiles(const QStringList &paths) {
    Document::whenNoneIsBusy([self = QPointer(this), paths] {
        for (const QString &path : paths)
            if (self) self->openFile(path);
    });
}

void AppDelegate::openFile(const QString &path) {
    if (fileExists(path)) {
        documentController_.openDocumentWithContentsOfURL(path, true);
        return;
    }
    // Reading a missing file fails in silence; who named it wants to know.
    platform_.beep();
    platform_.runModal(
        {tr("There is no file “%1”").arg(path), tr("It may have been moved or renamed."), {tr("OK")}});
}

/// An alert says that it could not be opened, and no more.
void AppDelegate::tellWhyNotOpened(const MyDocument &document) const {
    const auto documents = documentController_.documents();
    const DocumentWindow *window =
        documents.empty() ? nullptr : static_cast<const MyDocument &>(*documents.back()).myWindow();
    const auto &error = document.openError();
    if (!window || !error || error->kind == PDFError::Kind::FileMissing) return;
    window->notices()->setNotice(
        QStringLiteral("notOpened"),
        {tr("“%1” could not be opened: %2").arg(document.displayName(), error->message)});
}

void AppDelegate::comeToFront() {
    const auto documents = documentController_.documents();
    if (documents.empty()) return;
    bringToFront(*documents.back()->window());
}

void AppDelegate::terminate() {
    if (documentController_.closeAllDocuments()) QCoreApplication::quit();
}

void AppDelegate::keepUnsavedChanges() {
    keepChanges(&Recovery::keepNow);
}

void AppDelegate::keepEnteredChanges() {
    keepChanges(&Recovery::keepEntered);
}

void AppDelegate::keepChanges(void (Recovery::*keep)()) {
    for (const Document *document : documentController_.documents())
        for (Recovery *recovery : document->findChildren<Recovery *>(Qt::FindDirectChildrenOnly))
            (recovery->*keep)();
}

void AppDelegate::changeLabelDoubleClickingMessage(const QCheckBox *sender) {
    setDoubleClickMessage(sender->checkState() == Qt::Checked);
}

void AppDelegate::setDoubleClickMessage(bool editing) {
    const QString message =
        editing ? tr("To follow the TOC link and open the correct page in PDF, hold down CMD while "
                     "double-clicking.")
                : tr("Double-click to follow the TOC link. Hold down CMD while double-clicking TOC item to "
                     "edit the TOC item.");
    preferences_->labelDoubleClickEditingMessage()->setText(message);
    preferences_->doubleClickEditing()->setAccessibleDescription(message);
}

QLabel *AppDelegate::labelDoubleClickEditingMessage() const {
    return preferences_->labelDoubleClickEditingMessage();
}

void AppDelegate::showPreferences() {
    bringToFront(*preferences_);
}

void AppDelegate::orderFrontStandardAboutPanel() {
    if (!about_) {
        about_ = std::make_unique<AboutWindow>();
        connect(about_.get(), &AboutWindow::homePageRequested, this, &AppDelegate::openLeafwrightOnline);
    }
    bringToFront(*about_);
}

Updater &AppDelegate::sharedUpdater() {
    if (!sparkleUpdater_) sparkleUpdater_ = std::make_unique<Updater>();
    return *sparkleUpdater_;
}

void AppDelegate::appMenuCheckForUpdates() {
    if (!updateWindow_) updateWindow_ = std::make_unique<UpdateWindow>(sharedUpdater(), platform_);
    sharedUpdater().checkForUpdates(this);
}

void AppDelegate::openHelpFile() {
    const QString guide = resourcePath(guideName);
    if (guide.isNull()) {
        platform_.beep();
    } else {
        platform_.openFile(guide);
    }
}

void AppDelegate::openTutorial() {
    platform_.openURL(tutorialsPage());
}

void AppDelegate::openLeafwrightOnline() {
    platform_.openURL(homePage());
}

void AppDelegate::openLeafwrightMacAppStore() {
    platform_.openURL(storePage());
}

void AppDelegate::emailCustomerSupport() {
    platform_.openURL(supportMail(QStringLiteral("%1 (Direct)").arg(QCoreApplication::applicationVersion())));
}

void AppDelegate::emailFeedback() {
    platform_.openURL(feedbackMail());
}

std::unique_ptr<Document> AppDelegate::makeDocument() {
    auto document = std::make_unique<MyDocument>(platform_);
    registerActions(*document);
    if (!recoveryFolder_.isNull()) new Recovery(*document, recoveryFolder_);
    if (!viewFolder_.isNull()) new ViewMemory(*document, viewFolder_);
    return document;
}

void AppDelegate::registerActions(MyDocument &document) {
    ActionTable &actions = document.actions();
    actions.handle("performClose:",
                   [this, &document](QObject *) { documentController_.closeDocument(document); });
    actions.handle("openDocument:",
                   [this, &document](QObject *) { documentController_.openDocument(&document); });
    const auto handle = [&](const char *selector, void (AppDelegate::*command)()) {
        actions.handle(selector, [this, command](QObject *) { (this->*command)(); });
    };
    handle("terminate:", &AppDelegate::terminate);
    handle("showPreferences:", &AppDelegate::showPreferences);
    handle("openHelpFile:", &AppDelegate::openHelpFile);
    handle("openTutorial:", &AppDelegate::openTutorial);
    handle("openLeafwrightOnline:", &AppDelegate::openLeafwrightOnline);
    handle("openLeafwrightMacAppStore:", &AppDelegate::openLeafwrightMacAppStore);
    handle("emailCustomerSupport:", &AppDelegate::emailCustomerSupport);
    handle("emailFeedback:", &AppDelegate::emailFeedback);
    handle("appMenuCheckForUpdates:", &AppDelegate::appMenuCheckForUpdates);
    handle("orderFrontStandardAboutPanel:", &AppDelegate::orderFrontStandardAboutPanel);
    connect(&document, &MyDocument::windowMade, this,
            [this, &document] { adoptWindow(*document.myWindow()); });
}

void AppDelegate::adoptWindow(DocumentWindow &window) {
    connect(&window, &DocumentWindow::filesDropped, this, &AppDelegate::openFiles);
    window.setRecentDocuments(documentController_);
    menuItemCheckForUpdates_ = window.findChild<QAction *>(QStringLiteral("appMenuCheckForUpdates:"));
}

}  // namespace leafwright
