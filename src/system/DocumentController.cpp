#include "system/DocumentController.h"

#include "files/FileReading.h"
#include "platform/Settings.h"
#include "platform/UserDefaults.h"

#include <QFileInfo>
#include <QWidget>

#include <algorithm>

namespace leafwright {

namespace {

constexpr int mostRecentDocuments = 10;

/// Two paths to one file, through links for instance, give the same.
QString identityOfFile(const QString &path) {
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? path : canonical;
}

}  // namespace

DocumentController::DocumentController(Platform &platform, Factory makeDocument)
    : platform_(platform), makeDocument_(std::move(makeDocument)) {}

DocumentController::~DocumentController() = default;

Document *DocumentController::openDocumentWithContentsOfURL(const QString &path, bool display) {
    const auto absolute = absolutePath(path);
    if (!absolute) {
        platform_.beep();
        platform_.runModal({tr("“%1” can’t be opened").arg(path), noWorkingFolder(), {tr("OK")}});
        return nullptr;
    }
    for (const auto &document : documents_) {
        if (identityOfFile(document->fileURL()) != identityOfFile(*absolute)) continue;
        if (QWidget *window = document->window(); window && display) {
            window->raise();
            window->activateWindow();
        }
        return document.get();
    }
    auto document = makeDocument_();
    if (!document->readFromURL(*absolute)) {
        Q_EMIT openingFailed(document.get());
        return nullptr;
    }
    Document *opened = documents_.emplace_back(std::move(document)).get();
    connect(opened, &Document::closed, this, [this, opened] { remove(opened); });
    connect(opened, &Document::fileURLChanged, this,
            [this, opened] { noteRecentDocument(opened->fileURL()); });
    noteRecentDocument(*absolute);
    Q_EMIT documentOpened(opened);
    if (display) opened->makeWindowControllers();
    return opened;
}

std::vector<Document *> DocumentController::documents() const {
    std::vector<Document *> result;
    for (const auto &document : documents_)
        result.push_back(document.get());
    return result;
}

void DocumentController::openDocument(Document *asking) {
    const FilePanel panel{.title = tr("Open PDF"), .allowedFileTypes = {QStringLiteral("pdf")}};
    const auto path = asking ? asking->runOpenPanel(panel) : platform_.runOpenPanel(panel);
    if (path) openDocumentWithContentsOfURL(*path, true);
}

bool DocumentController::closeDocument(Document &document) {
    // The window asks, as it does when the user closes it.
    if (QWidget *window = document.window()) return window->close();
    if (document.prepareToClose() == Document::Closing::Refused) return false;
    remove(&document);
    return true;
}

bool DocumentController::closeAllDocuments() {
    const std::vector<Document *> open = documents();
    return std::ranges::all_of(open, [this](Document *document) { return closeDocument(*document); });
}

QStringList DocumentController::recentDocuments() const {
    QStringList paths =
        platform_.userDefaults().stringForKey(setting::recentDocuments).split(u'\n', Qt::SkipEmptyParts);
    paths.removeIf([this](const QString &path) { return path == leftOut_ || !fileExists(path); });
    return paths;
}

void DocumentController::clearRecentDocuments() {
    platform_.userDefaults().removeValue(setting::recentDocuments);
    Q_EMIT recentDocumentsChanged();
}

void DocumentController::noteRecentDocument(const QString &path) {
    // The list is kept with a path a line.
    if (path.contains(u'\n') || path == leftOut_) return;
    QStringList paths = recentDocuments();
    paths.removeAll(path);
    paths.prepend(path);
    paths = paths.first(std::min<qsizetype>(paths.size(), mostRecentDocuments));
    platform_.userDefaults().setValue(setting::recentDocuments, paths.join(u'\n'));
    Q_EMIT recentDocumentsChanged();
}

void DocumentController::remove(Document *document) {
    const auto found =
        std::ranges::find_if(documents_, [&](const auto &each) { return each.get() == document; });
    if (found == documents_.end()) return;
    // Its window may be the one whose closing is being handled.
    found->release()->deleteLater();
    documents_.erase(found);
    if (documents_.empty()) Q_EMIT lastDocumentClosed();
}

}  // namespace leafwright
