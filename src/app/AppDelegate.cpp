#include "app/AppDelegate.h"

#include "app/Defaults.h"
#include "app/Resources.h"
#include "document/DocumentWindow.h"
#include "document/MyDocument.h"
#include "platform/UserDefaults.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace leafwright {

namespace {

const QString guideName = QStringLiteral("Leafwright User Guide.pdf");

}  // namespace

AppDelegate::AppDelegate(Platform &platform)
    : platform_(platform), documentController_(platform, [this] { return makeDocument(); }) {
    registerDefaults(platform.userDefaults());
}

void AppDelegate::applicationDidFinishLaunching() {
    if (!platform_.userDefaults().boolForKey(QStringLiteral("LeafwrightShowHelpOnStart"))) return;
    const QString guide = resourcePath(guideName);
    if (!guide.isNull()) documentController_.openDocumentWithContentsOfURL(guide, true);
}

void AppDelegate::openFiles(const QStringList &paths) {
    for (const QString &path : paths) {
        if (!QFileInfo::exists(path)) {
            // Reading a missing file fails in silence; who named it wants to know.
            platform_.beep();
            platform_.runModal({tr("There is no file “%1”").arg(path),
                                tr("It may have been moved or renamed."),
                                {tr("OK")}});
            continue;
        }
        documentController_.openDocumentWithContentsOfURL(path, true);
    }
}

void AppDelegate::comeToFront() {
    const auto documents = documentController_.documents();
    if (documents.empty()) return;
    QWidget *window = documents.back()->window();
    window->raise();
    window->activateWindow();
}

void AppDelegate::terminate() {
    if (documentController_.closeAllDocuments()) QCoreApplication::quit();
}

std::unique_ptr<Document> AppDelegate::makeDocument() {
    auto document = std::make_unique<MyDocument>(platform_);
    registerActions(*document);
    return document;
}

void AppDelegate::registerActions(MyDocument &document) {
    ActionTable &actions = document.actions();
    actions.handle("openDocument:", [this](QObject *) { documentController_.openDocument(); });
    actions.handle("performClose:",
                   [this, &document](QObject *) { documentController_.closeDocument(document); });
    actions.handle("terminate:", [this](QObject *) { terminate(); });
    actions.handle("openHelpFile:", [this](QObject *) { platform_.openFile(resourcePath(guideName)); });
    connect(&document, &MyDocument::windowMade, this, [this, &document] {
        connect(document.myWindow(), &DocumentWindow::filesDropped, this, &AppDelegate::openFiles);
        document.myWindow()->setRecentDocuments(documentController_);
    });
}

}  // namespace leafwright
