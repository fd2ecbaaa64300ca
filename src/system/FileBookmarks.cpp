#include "system/FileBookmarks.h"

#include "formats/KeyedArchive.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace leafwright {

namespace {

const QString pathKey = QStringLiteral("path");
const QString deviceKey = QStringLiteral("device");
const QString inodeKey = QStringLiteral("inode");

/// Which file it is that a path leads to.
struct Identity {
    QString device;
    QString inode;

    bool operator==(const Identity &) const = default;
};

std::optional<Identity> identityAt(const QString &path) {
    struct stat status {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0) return std::nullopt;
    return Identity{QString::number(status.st_dev), QString::number(status.st_ino)};
}

}  // namespace

QByteArray FileBookmarks::bookmarkDataForURL(const QUrl &url) {
    const QString path = url.toLocalFile();
    const auto identity = identityAt(path);
    if (!identity) return {};
    KeyedArchive archive;
    archive.encode(path, pathKey);
    archive.encode(identity->device, deviceKey);
    archive.encode(identity->inode, inodeKey);
    return archive.data();
}

SecurityScopedBookmarks::Resolution FileBookmarks::resolveBookmarkData(const QByteArray &data) {
    const auto archive = KeyedArchive::unarchive(data);
    if (!archive) return {};
    const QString path = archive->decode(pathKey);
    const auto identity = identityAt(path);
    if (!identity) return {};
    const Identity marked{archive->decode(deviceKey), archive->decode(inodeKey)};
    return {QUrl::fromLocalFile(path), *identity != marked};
}

bool FileBookmarks::startAccessing(const QUrl &url) {
    return QFileInfo::exists(url.toLocalFile());
}

}  // namespace leafwright
