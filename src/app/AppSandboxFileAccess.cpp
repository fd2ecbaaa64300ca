#include "app/AppSandboxFileAccess.h"

#include "app/AppSandboxFileAccessOpenSavePanelDelegate.h"
#include "app/AppSandboxFileAccessPersist.h"
#include "platform/Assertion.h"
#include "platform/Platform.h"
#include "system/MainThread.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>

#include <filesystem>

namespace leafwright {

namespace {

/// The same with a path that begins at the root, as a file URL has it.
QUrl absolute(const QUrl &url) {
    const QString path = url.toLocalFile();
    if (!url.isLocalFile() || path.startsWith(u'/')) return url;
    return QUrl::fromLocalFile(QDir::currentPath() + u'/' + path);
}

/// The path without ".", ".." and symbolic links, as far as it exists. Links come first: the way up from one
/// begins where it leads.
QUrl resolved(const QUrl &url) {
    const std::filesystem::path path = QFile::encodeName(absolute(url).toLocalFile()).toStdString();
    std::filesystem::path result = "/";
    for (const std::filesystem::path &name : path.relative_path()) {
        if (name.empty() || name == ".") continue;
        if (name == "..") {
            result = result.parent_path();
            continue;
        }
        std::error_code error;
        const auto real = std::filesystem::canonical(result / name, error);
        result = error ? result / name : real;
    }
    return QUrl::fromLocalFile(QFile::decodeName(result.c_str()));
}

/// Where a panel that asks for a path starts: at what is there, or at the nearest folder above that exists.
QString nearestExistingPath(QString path) {
    while (path.size() >= 2 && !QFileInfo::exists(path))
        path = QFileInfo(path).path();
    return path;
}

/// Keeps a resource in use.
class Access {
public:
    Access(SecurityScopedBookmarks &bookmarks, QUrl url) : bookmarks_(bookmarks), url_(std::move(url)) {
        bookmarks_.startAccessing(url_);
    }
    ~Access() { bookmarks_.stopAccessing(url_); }
    Access(const Access &) = delete;
    Access &operator=(const Access &) = delete;

private:
    SecurityScopedBookmarks &bookmarks_;
    QUrl url_;
};

}  // namespace

AppSandboxFileAccess::AppSandboxFileAccess(Platform &platform,
                                           std::shared_ptr<SecurityScopedBookmarks> bookmarks)
    : platform_(platform),
      bookmarks_(std::move(bookmarks)),
      title_(tr("Allow Access")),
      message_(tr("%1 needs to access this path to continue. Click Allow to continue.")
                   .arg(QGuiApplication::applicationDisplayName())),
      prompt_(tr("Allow")),
      defaultDelegate_(std::make_shared<AppSandboxFileAccessPersist>(platform.userDefaults())),
      bookmarkPersistanceDelegate_(defaultDelegate_) {}

AppSandboxFileAccess::~AppSandboxFileAccess() = default;

std::unique_ptr<AppSandboxFileAccess> AppSandboxFileAccess::fileAccess(Platform &platform) {
    return std::make_unique<AppSandboxFileAccess>(platform);
}

void AppSandboxFileAccess::setBookmarkPersistanceDelegate(
    const std::shared_ptr<AppSandboxFileAccessProtocol> &store) {
    if (store) {
        bookmarkPersistanceDelegate_ = store;
    } else {
        bookmarkPersistanceDelegate_ = defaultDelegate_;
    }
}

bool AppSandboxFileAccess::accessFilePath(const QString &path, const Block &block, bool persist) {
    return accessFilePath(path, persist, block);
}

bool AppSandboxFileAccess::accessFileURL(const QUrl &fileURL, const Block &block, bool persist) {
    return accessFileURL(fileURL, persist, block);
}

bool AppSandboxFileAccess::accessFilePath(const QString &path, bool persist, const Block &block) {
    return accessFileURL(QUrl::fromLocalFile(path), persist, block);
}

bool AppSandboxFileAccess::accessFileURL(const QUrl &fileURL, bool persist, const Block &block) {
    assertParameter(!fileURL.isEmpty(), "fileURL");
    assertParameter(block != nullptr, "block");
    return requestAccessPermissionsForFileURL(fileURL, persist,
                                              [&](const QUrl &url, const QByteArray & /*bookmarkData*/) {
                                                  const Access access(*bookmarks_, url);
                                                  block();
                                              });
}

bool AppSandboxFileAccess::requestAccessPermissionsForFilePath(const QString &filePath, bool persist,
                                                               const SecurityScopedBlock &block) {
    assertParameter(!filePath.isEmpty(), "filePath");
    return requestAccessPermissionsForFileURL(QUrl::fromLocalFile(filePath), persist, block);
}

bool AppSandboxFileAccess::requestAccessPermissionsForFileURL(const QUrl &fileURL, bool persist,
                                                              const SecurityScopedBlock &block) {
    assertParameter(!fileURL.isEmpty(), "fileURL");
    const QUrl url = resolved(fileURL);
    auto [allowed, data] = keptPermission(url);
    if (!allowed) {
        allowed = askPermissionForURL(url);
        if (!allowed) return false;
        // A bookmark that led nowhere is handed on as it is.
        if (persist && data.isNull()) data = persistPermissionURL(*allowed);
    }
    if (block) block(*allowed, data);
    return true;
}

AppSandboxFileAccess::Kept AppSandboxFileAccess::keptPermission(const QUrl &url) {
    const auto store = bookmarkPersistanceDelegate();
    const QByteArray data = store ? store->bookmarkDataForURL(url) : QByteArray();
    if (data.isNull()) return {};
    const auto resolution = bookmarks_->resolveBookmarkData(data);
    if (!resolution.isStale) return {resolution.url, data};
    store->clearBookmarkDataForURL(url);
    // Made anew whether or not the caller wants the leave remembered: it was remembered before.
    const QByteArray fresh = resolution.url ? persistPermissionURL(*resolution.url) : QByteArray();
    return fresh.isNull() ? Kept() : Kept{resolution.url, fresh};
}

QByteArray AppSandboxFileAccess::persistPermissionPath(const QString &path) {
    assertParameter(!path.isEmpty(), "path");
    return persistPermissionURL(QUrl::fromLocalFile(path));
}

QByteArray AppSandboxFileAccess::persistPermissionURL(const QUrl &lasting) {
    assertParameter(!lasting.isEmpty(), "url");
    const QUrl url = absolute(lasting);
    QByteArray data = bookmarks_->bookmarkDataForURL(url);
    const auto store = bookmarkPersistanceDelegate();
    if (!data.isNull() && store) store->setBookmarkDataForURL(data, url);
    return data;
}

std::optional<QUrl> AppSandboxFileAccess::askPermissionForURL(const QUrl &wanted) {
    assertParameter(!wanted.isEmpty(), "url");
    const QUrl url = absolute(wanted);
    const AppSandboxFileAccessOpenSavePanelDelegate delegate(url);
    const FilePanel panel{.title = title_,
                          .message = message_,
                          .prompt = prompt_,
                          .path = nearestExistingPath(url.toLocalFile()),
                          .canChooseFiles = true,
                          .canChooseDirectories = true,
                          .canCreateDirectories = false,
                          .shouldEnablePath = [delegate](const QString &path) {
                              return !path.isEmpty() &&
                                     delegate.panelShouldEnableURL(QUrl::fromLocalFile(path));
                          }};
    const auto path = onMainThread([&] { return platform_.runOpenPanel(panel); });
    return path ? std::optional(QUrl::fromLocalFile(*path)) : std::nullopt;
}

}  // namespace leafwright
