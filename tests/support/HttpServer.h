#pragma once

#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include <map>

namespace leafwright::test {

/// A web server on this machine, for one test: answers each path with what was set for it.
class HttpServer {
public:
    HttpServer() {
        QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] { serve(); });
        if (!server_.listen(QHostAddress::LocalHost)) qFatal("no port to listen on");
    }

    QUrl url(const QString &path) const {
        return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(server_.serverPort()).arg(path));
    }
    /// Sets the whole answer to a path: status line, headers, body. An empty one is never sent.
    void answerRaw(const QString &path, const QByteArray &answer) { answers_[path] = answer; }
    void answer(const QString &path, const QByteArray &body) {
        answerRaw(path, "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) +
                            "\r\nConnection: close\r\n\r\n" + body);
    }
    void redirect(const QString &path, const QByteArray &to) {
        answerRaw(path, "HTTP/1.1 302 Found\r\nContent-Length: 0\r\nConnection: close\r\nLocation: " + to +
                            "\r\n\r\n");
    }
    /// Nobody listens any more.
    void close() { server_.close(); }

    QList<QByteArray> requests;  ///< With their headers.

private:
    void serve() {
        QTcpSocket *socket = server_.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
            if (!socket->peek(1 << 16).contains("\r\n\r\n")) return;
            const QByteArray request = socket->readAll();
            requests.append(request);
            const auto answer = answers_.find(QString::fromLatin1(request.split(' ').value(1)));
            if (answer == answers_.end()) {
                socket->write("HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
            } else if (answer->second.isEmpty()) {
                return;
            } else {
                socket->write(answer->second);
            }
            socket->disconnectFromHost();
        });
    }

    QTcpServer server_;
    std::map<QString, QByteArray> answers_;
};

}  // namespace leafwright::test
