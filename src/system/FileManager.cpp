#include "system/FileManager.h"

#include "files/FileName.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QUrl>

namespace leafwright {

void showInFileManager(const QString &path, const QDBusConnection &bus,
                       const std::function<void()> &otherwise) {
    // A call over no bus at all would not even fail.
    if (!bus.isConnected()) {
        otherwise();
        return;
    }
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    const QString address = QString::fromLatin1(urlOfFile(path).toEncoded());
    message << QStringList{address} << QString();  // Addresses; no startup notification.
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, otherwise] {
        if (watcher->isError()) otherwise();
        watcher->deleteLater();
    });
}

}  // namespace leafwright
