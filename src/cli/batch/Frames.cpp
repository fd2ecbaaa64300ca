#include "cli/batch/Frames.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <sys/socket.h>

namespace leafwright::cli {

namespace {

bool sendWhole(int socket, const char *data, qsizetype size) {
    while (size > 0) {
        const ssize_t count = ::send(socket, data, static_cast<size_t>(size), MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        data += count;
        size -= count;
    }
    return true;
}

bool receiveWhole(int socket, char *data, qsizetype size) {
    while (size > 0) {
        const ssize_t count = ::recv(socket, data, static_cast<size_t>(size), 0);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        data += count;
        size -= count;
    }
    return true;
}

}  // namespace

bool sendFrame(int socket, const QByteArray &content) {
    const auto size = static_cast<std::uint32_t>(content.size());
    char head[sizeof size];
    std::memcpy(head, &size, sizeof size);
    return sendWhole(socket, head, sizeof head) && sendWhole(socket, content.constData(), content.size());
}

std::optional<QByteArray> receiveFrame(int socket) {
    std::uint32_t size = 0;
    char head[sizeof size];
    if (!receiveWhole(socket, head, sizeof head)) return std::nullopt;
    std::memcpy(&size, head, sizeof size);
    QByteArray content(static_cast<qsizetype>(size), Qt::Uninitialized);
    if (!receiveWhole(socket, content.data(), content.size())) return std::nullopt;
    return content;
}

}  // namespace leafwright::cli
