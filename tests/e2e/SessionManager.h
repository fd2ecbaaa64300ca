#pragma once

#include <QByteArray>

#include <memory>

namespace leafwright::test {

/// The desktop's session as programs know it by X's protocol for that (XSMP), and nothing of it but its end.
/// It does something only while it is called. One may live at a time.
class SessionManager {
public:
    /// Throws std::runtime_error where it can't be had.
    SessionManager();
    ~SessionManager();
    SessionManager(const SessionManager &) = delete;
    SessionManager &operator=(const SessionManager &) = delete;

    /// Where a program finds it that is started with this in its environment.
    static constexpr const char *variable = "SESSION_MANAGER";
    QByteArray address() const;

    /// Speaks with whoever has something to say. @return whether a program has joined the session
    bool hasProgram();
    /// Tells all programs to save what they have, because the session is to end.
    void end();
    /// Speaks with them. @return whether all have said that it is saved
    bool isSaved();

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace leafwright::test
