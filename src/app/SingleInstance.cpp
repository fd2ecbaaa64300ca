#include "app/SingleInstance.h"

#include <QDir>
#include <QFile>
#include <QLocalSocket>
#include <QStandardPaths>

#include <unistd.h>

namespace leafwright {

namespace {

constexpr int patience = 5000;       // milliseconds
constexpr qint64 longest = 1 << 20;  // bytes of a message

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
        message += QFile::encodeName(path).toPercentEncoding("/") + '\n';
    socket.write(message + '\n');
    return socket.waitForBytesWritten(patience) && socket.waitForReadyRead(patience) &&
           socket.readAll() == taken;
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
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
        if (socket->bytesAvailable() > longest) return socket->abort();
        if (!socket->peek(longest).endsWith("\n\n") && socket->peek(longest) != "\n") return;
        QStringList paths;
        for (const QByteArray &line : socket->readAll().split('\n'))
            if (!line.isEmpty()) paths.append(QFile::decodeName(QByteArray::fromPercentEncoding(line)));
        socket->write(taken);
        socket->flush();
        Q_EMIT filesReceived(paths);
    });
}

}  // namespace leafwright
