#include "app/SingleInstance.h"

#include "files/FileName.h"

#include <QDir>
#include <QLocalSocket>
#include <QStandardPaths>

#include <unistd.h>

namespace leafwright {

namespace {

constexpr int patience = 5000;  // milliseconds
/// Bytes of a message: more than the longest command line has (6 MB), with each byte percent-encoded.
constexpr qsizetype longest = 32 << 20;

// A message is a path a line, percent-encoded, and an empty line at the end; the answer is one line.
const QByteArray taken = QByteArrayLiteral("ok\n");

}  // namespace

SingleInstance::SingleInstance(QString name) : name_(std::move(name)) {
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server_, &QLocalServer::newConnection, this, &SingleInstance::receive);
}

QString SingleInstance::nameForUser() {
    const QString directory = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return QDir(directory).filePath(QStringLiteral("leafwright-%1").arg(getuid()));
}

bool SingleInstance::handOver(const QStringList &paths) const {
    QLocalSocket socket;
    socket.connectToServer(name_);
    if (!socket.waitForConnected(patience)) return false;
    QByteArray message;
    for (const QString &path : paths)
        message += fileNameBytes(path).toPercentEncoding("/") + '\n';
    socket.write(message + '\n');
    // What goes out at once is a part of it.
    while (socket.bytesToWrite() > 0)
        if (!socket.waitForBytesWritten(patience)) return false;
    return socket.waitForReadyRead(patience) && socket.readAll() == taken;
}

bool SingleInstance::listen() {
    if (server_.listen(name_)) return true;
    if (server_.serverError() != QAbstractSocket::AddressInUseError) return false;
    // Nobody answered there (see handOver), so it was left behind by a crash.
    QLocalServer::removeServer(name_);
    return server_.listen(name_);
}

void SingleInstance::receive() {
    QLocalSocket *socket = server_.nextPendingConnection();
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QLocalSocket::readyRead, this, [this, socket, message = QByteArray()]() mutable {
        message += socket->readAll();
        if (message.size() > longest) return socket->abort();
        if (!message.endsWith("\n\n") && message != "\n") return;
        QStringList paths;
        for (const QByteArray &line : message.split('\n'))
            if (!line.isEmpty()) paths.append(fileNameText(QByteArray::fromPercentEncoding(line)));
        message.clear();
        socket->write(taken);
        socket->flush();
        Q_EMIT filesReceived(paths);
    });
}

}  // namespace leafwright
