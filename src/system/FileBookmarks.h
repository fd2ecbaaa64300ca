#pragma once

#include "system/SecurityScopedBookmarks.h"

namespace leafwright {

/// Bookmarks where no sandbox is in the way: the path, with the device and the number of the file (inode)
/// that was there. When something else is at the path now, the bookmark is stale; when nothing is, it leads
/// nowhere.
class FileBookmarks final : public SecurityScopedBookmarks {
public:
    QByteArray bookmarkDataForURL(const QUrl &url) override;
    Resolution resolveBookmarkData(const QByteArray &data) override;
    /// Nothing has to be opened up: says whether something is there.
    bool startAccessing(const QUrl &url) override;
    void stopAccessing(const QUrl & /*url*/) override {}
};

}  // namespace leafwright
