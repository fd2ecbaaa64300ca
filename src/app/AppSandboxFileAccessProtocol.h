#pragma once

#include <QByteArray>
#include <QUrl>

namespace leafwright {

/// Keeps bookmarks, the leave to use files and folders, from one run of the program to the next. Called on
/// the thread of whoever asks for a file.
class AppSandboxFileAccessProtocol {
public:
    virtual ~AppSandboxFileAccessProtocol() = default;

    /// The bookmark by which a file URL can be reached, be it its own or a folder's above it; null if there
    /// is none.
    virtual QByteArray bookmarkDataForURL(const QUrl &url) = 0;
    virtual void setBookmarkDataForURL(const QByteArray &data, const QUrl &url) = 0;
    /// Forgets the URL's own bookmark.
    virtual void clearBookmarkDataForURL(const QUrl &url) = 0;
};

}  // namespace leafwright
