#pragma once

#include "app/AppSandboxFileAccessProtocol.h"

namespace leafwright {

class UserDefaults;

/// Keeps bookmarks in the user's settings. May be called from any thread; the settings are used on the main
/// one.
class AppSandboxFileAccessPersist final : public AppSandboxFileAccessProtocol {
public:
    /// @param defaults must outlive this
    explicit AppSandboxFileAccessPersist(UserDefaults &defaults) : defaults_(defaults) {}

    /// The setting that holds a URL's bookmark: "bd_" and the URL as a whole.
    static QString keyForBookmarkDataForURL(const QUrl &url);

    /// Looks for the URL's bookmark, then for its folder's, and so on up to those just below the root.
    QByteArray bookmarkDataForURL(const QUrl &url) override;
    void setBookmarkDataForURL(const QByteArray &data, const QUrl &url) override;
    void clearBookmarkDataForURL(const QUrl &url) override;

private:
    UserDefaults &defaults_;
};

}  // namespace leafwright
