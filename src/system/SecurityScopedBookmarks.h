#pragma once

#include <QByteArray>
#include <QUrl>

#include <memory>
#include <optional>

namespace leafwright {

/// Leave to use a file or folder, as data that can be kept: made when the user has allowed it, and good for
/// other runs of the program. To be called from any thread.
class SecurityScopedBookmarks {
public:
    /// What a bookmark leads to.
    struct Resolution {
        std::optional<QUrl> url;  ///< Absent if it leads nowhere any more.
        bool isStale = false;     ///< Whether it should be replaced by a fresh one.
    };

    virtual ~SecurityScopedBookmarks() = default;

    /// The bookmark of what is at a file URL; null if there can't be one.
    virtual QByteArray bookmarkDataForURL(const QUrl &url) = 0;
    /// Follows a bookmark, without asking the user anything. What is no bookmark leads nowhere.
    virtual Resolution resolveBookmarkData(const QByteArray &data) = 0;
    /// Makes the URL of a bookmark usable until stopAccessing() was called as often. @return whether it is
    virtual bool startAccessing(const QUrl &url) = 0;
    virtual void stopAccessing(const QUrl &url) = 0;

    /// Those that fit this process: the document portal's in a sandbox, else ones that trust the file system.
    static std::shared_ptr<SecurityScopedBookmarks> ofThisProcess();
};

/// Whether the program was started in a sandbox of Flatpak or Snap.
bool isSandboxed();

}  // namespace leafwright
