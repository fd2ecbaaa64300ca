#include "system/PortalBookmarks.h"

#include "formats/KeyedArchive.h"

#include <QDBusMetaType>
#include <QDBusReply>
#include <QDBusUnixFileDescriptor>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

namespace leafwright {

namespace {

const QString placeKey = QStringLiteral("placeBelowDocuments");
constexpr int patience = 5000;  // milliseconds

// Flags of AddFull.
constexpr uint reuseExisting = 1;
constexpr uint persistent = 2;
constexpr uint exportDirectory = 8;

QDBusMessage portalCall(const QString &method) {
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Documents"),
                                          QStringLiteral("/org/freedesktop/portal/documents"),
                                          QStringLiteral("org.freedesktop.portal.Documents"), method);
}

/// A descriptor that proves that we can reach a file; closed with this.
class PathDescriptor {
public:
    explicit PathDescriptor(const QString &path)
        : descriptor_(open(QFile::encodeName(path).constData(), O_PATH | O_CLOEXEC)) {}
    ~PathDescriptor() {
        if (descriptor_ >= 0) close(descriptor_);
    }
    PathDescriptor(const PathDescriptor &) = delete;
    PathDescriptor &operator=(const PathDescriptor &) = delete;

    int get() const { return descriptor_; }

private:
    int descriptor_;
};

bool failed(const QDBusMessage &reply) {
    if (reply.type() == QDBusMessage::ReplyMessage) return false;
    qWarning().noquote() << "leafwright: the document portal:" << reply.errorMessage();
    return true;
}

/// A path below a folder, relative to it; null if it is not below.
QString relativePlace(const QString &path, const QString &folder) {
    for (const QString &root : {folder, QFileInfo(folder).canonicalFilePath()})
        if (!root.isEmpty() && path.startsWith(root + u'/')) return path.mid(root.size() + 1);
    return {};
}

}  // namespace

PortalBookmarks::PortalBookmarks(QDBusConnection bus) : bus_(std::move(bus)) {
    qDBusRegisterMetaType<QList<QDBusUnixFileDescriptor>>();
}

QString PortalBookmarks::mountPoint() const {
    const QDBusMessage reply = bus_.call(portalCall(QStringLiteral("GetMountPoint")), QDBus::Block, patience);
    if (failed(reply)) return {};
    // Paths go over the bus with the zero that ends them in C.
    const QByteArray path = reply.arguments().value(0).toByteArray();
    return QDir::cleanPath(QFile::decodeName(path.constData()));
}

QString PortalBookmarks::addDocument(const QString &path) const {
    const PathDescriptor descriptor(path);
    if (descriptor.get() < 0) return {};
    QDBusMessage message = portalCall(QStringLiteral("AddFull"));
    const uint kind = QFileInfo(path).isDir() ? exportDirectory : 0;
    message << QVariant::fromValue(QList{QDBusUnixFileDescriptor(descriptor.get())})
            << (reuseExisting | persistent | kind) << QString() << QStringList();
    const QDBusMessage reply = bus_.call(message, QDBus::Block, patience);
    return failed(reply) ? QString() : reply.arguments().value(0).toStringList().value(0);
}

QByteArray PortalBookmarks::bookmarkDataForURL(const QUrl &url) {
    const QString path = QDir::cleanPath(url.toLocalFile());
    const QString mount = mountPoint();
    const QString document = mount.isEmpty() ? QString() : addDocument(path);
    if (document.isEmpty()) return {};
    // What lies in a folder that is a document belongs to that document.
    const QString place = relativePlace(path, mount);
    KeyedArchive archive;
    archive.encode(place.startsWith(document + u'/') ? place : document + u'/' + QFileInfo(path).fileName(),
                   placeKey);
    return archive.data();
}

SecurityScopedBookmarks::Resolution PortalBookmarks::resolveBookmarkData(const QByteArray &data) {
    const auto archive = KeyedArchive::unarchive(data);
    const QString place = archive ? archive->decode(placeKey) : QString();
    const QString mount = place.isEmpty() ? QString() : mountPoint();
    if (mount.isEmpty()) return {};
    const QString path = mount + u'/' + place;
    if (!QFileInfo::exists(path)) return {};
    return {QUrl::fromLocalFile(path), false};
}

bool PortalBookmarks::startAccessing(const QUrl &url) {
    return QFileInfo::exists(url.toLocalFile());
}

}  // namespace leafwright
