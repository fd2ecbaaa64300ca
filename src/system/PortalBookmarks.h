#pragma once

#include "system/SecurityScopedBookmarks.h"

#include <QDBusConnection>

namespace leafwright {

/// Bookmarks in a sandbox: the desktop's document portal (the D-Bus service org.freedesktop.portal.Documents)
/// keeps the file or folder as a document that this program may use, and shows it below a mount point of its
/// own. A bookmark is the document's place below it. It is never stale, for the portal follows the file
/// itself; once the leave is withdrawn or the file is gone, it leads nowhere.
class PortalBookmarks final : public SecurityScopedBookmarks {
public:
    /// @param bus where the portal is asked
    explicit PortalBookmarks(QDBusConnection bus);

    /// Null also if the portal can't be reached or refuses, which is logged.
    QByteArray bookmarkDataForURL(const QUrl &url) override;
    Resolution resolveBookmarkData(const QByteArray &data) override;
    /// The leave lasts: says whether something is there.
    bool startAccessing(const QUrl &url) override;
    void stopAccessing(const QUrl & /*url*/) override {}

private:
    QString mountPoint() const;
    QString addDocument(const QString &path) const;

    QDBusConnection bus_;
};

}  // namespace leafwright
