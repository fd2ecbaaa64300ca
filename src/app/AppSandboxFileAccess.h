#pragma once

#include "app/AppSandboxFileAccessProtocol.h"
#include "system/SecurityScopedBookmarks.h"

#include <QCoreApplication>

#include <functional>
#include <memory>
#include <optional>

namespace leafwright {

class AppSandboxFileAccessPersist;
class Platform;

/// Gets the user's leave to use a file or folder that a sandbox keeps from the program, remembers it, and has
/// a block run while it is in force. May be called from any thread: the panel that asks is shown on the main
/// one, while the caller waits; blocks run on the caller's. The main thread must not be waiting for the
/// caller then. Arguments that are needed are asserted: an empty URL or path, or a null block, is none.
///
/// Uncalled, but fixed from outside: so far the desktop's own dialogs give all the leave that the program
/// needs.
class AppSandboxFileAccess {
    Q_DECLARE_TR_FUNCTIONS(leafwright::AppSandboxFileAccess)

public:
    using Block = std::function<void()>;
    /// @param bookmarkData null if there is none
    using SecurityScopedBlock =
        std::function<void(const QUrl &securityScopedURL, const QByteArray &bookmarkData)>;

    /// @param platform shows the panel and keeps the settings; must outlive this
    explicit AppSandboxFileAccess(Platform &platform, std::shared_ptr<SecurityScopedBookmarks> bookmarks =
                                                          SecurityScopedBookmarks::ofThisProcess());
    ~AppSandboxFileAccess();
    AppSandboxFileAccess(const AppSandboxFileAccess &) = delete;
    AppSandboxFileAccess &operator=(const AppSandboxFileAccess &) = delete;
    static std::unique_ptr<AppSandboxFileAccess> fileAccess(Platform &platform);

    // What the panel says: its title, why it asks, and its confirming button.
    const QString &title() const { return title_; }
    void setTitle(const QString &title) { title_ = title; }
    const QString &message() const { return message_; }
    void setMessage(const QString &message) { message_ = message; }
    const QString &prompt() const { return prompt_; }
    void setPrompt(const QString &prompt) { prompt_ = prompt; }

    /// Where bookmarks are kept. Null if that is gone by now; then none is found, and none kept.
    std::shared_ptr<AppSandboxFileAccessProtocol> bookmarkPersistanceDelegate() const {
        return bookmarkPersistanceDelegate_.lock();
    }
    /// Sets where bookmarks are kept, which stays the caller's; null for the default again.
    void setBookmarkPersistanceDelegate(const std::shared_ptr<AppSandboxFileAccessProtocol> &store);
    /// Where bookmarks are kept unless another place is set: in the user's settings.
    const std::shared_ptr<AppSandboxFileAccessPersist> &defaultDelegate() const { return defaultDelegate_; }

    /// Sees to it that a file may be used, by a bookmark or by asking, and then calls the block (which may be
    /// null) with the URL to use, which can be that of a folder above. It is the block that starts and stops
    /// the use. @param persist whether to remember the user's leave
    /// @return false if the user refused; the block is not called then
    bool requestAccessPermissionsForFileURL(const QUrl &fileURL, bool persist,
                                            const SecurityScopedBlock &block);
    bool requestAccessPermissionsForFilePath(const QString &filePath, bool persist,
                                             const SecurityScopedBlock &block);

    /// The same, and runs the block while the file is in use; what the block throws reaches the caller.
    bool accessFileURL(const QUrl &fileURL, bool persist, const Block &block);
    bool accessFilePath(const QString &path, bool persist, const Block &block);
    // An older order of arguments.
    bool accessFileURL(const QUrl &fileURL, const Block &block, bool persist);
    bool accessFilePath(const QString &path, const Block &block, bool persist);

    /// Makes a bookmark of what may be used now, and keeps it. @return null if there can't be one
    QByteArray persistPermissionURL(const QUrl &url);
    QByteArray persistPermissionPath(const QString &path);

    /// Asks the user to allow the use of a file or folder. @return what the user chose, it or a folder above;
    /// nothing if refused
    std::optional<QUrl> askPermissionForURL(const QUrl &url);

private:
    /// A bookmark that was kept, and what it is good for now.
    struct Kept {
        std::optional<QUrl> url;  ///< Absent if the user has to be asked.
        QByteArray data;
    };
    Kept keptPermission(const QUrl &url);

    Platform &platform_;
    std::shared_ptr<SecurityScopedBookmarks> bookmarks_;
    QString title_;
    QString message_;
    QString prompt_;
    std::shared_ptr<AppSandboxFileAccessPersist> defaultDelegate_;
    std::weak_ptr<AppSandboxFileAccessProtocol> bookmarkPersistanceDelegate_;
};

}  // namespace leafwright
