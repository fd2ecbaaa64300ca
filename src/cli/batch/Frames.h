#pragma once

#include <QByteArray>

#include <optional>

namespace leafwright::cli {

// What a batch and the processes that start its workers say to each other: bytes with their number in front.

/// Sends a frame over a socket. @return false where the other side is gone
bool sendFrame(int socket, const QByteArray &content);
/// Waits for one. @return nothing where the other side is gone
std::optional<QByteArray> receiveFrame(int socket);

}  // namespace leafwright::cli
