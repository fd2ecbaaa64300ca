#pragma once

#include <QProcess>

namespace leafwright::test {

/// An X server without a screen, for as long as this lives, and the display that it makes this program's
/// own. Each program has one of its own, so that tests can run beside each other.
class XServer {
public:
    /// Throws std::runtime_error if there is no server to be had.
    XServer();
    ~XServer();
    XServer(const XServer &) = delete;
    XServer &operator=(const XServer &) = delete;

private:
    QProcess process_;
};

}  // namespace leafwright::test
