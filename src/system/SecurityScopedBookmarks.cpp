#include "system/SecurityScopedBookmarks.h"

#include "system/FileBookmarks.h"
#include "system/PortalBookmarks.h"

#include <QFileInfo>

namespace leafwright {

std::shared_ptr<SecurityScopedBookmarks> SecurityScopedBookmarks::ofThisProcess() {
    if (isSandboxed()) return std::make_shared<PortalBookmarks>(QDBusConnection::sessionBus());
    return std::make_shared<FileBookmarks>();
}

bool isSandboxed() {
    return QFileInfo::exists(QStringLiteral("/.flatpak-info")) || qEnvironmentVariableIsSet("SNAP");
}

}  // namespace leafwright
