#pragma once

#include <QString>
#include <QStringList>

namespace leafwright {

/// A question or a message that stops until it is answered.
struct Alert {
    QString message;
    QString informativeText;
    QStringList buttons;  ///< The first is the default.
};

/// Everything by which a document reaches out of itself: what stops and asks, makes noise, or leaves the
/// program. A document is given one; the real ones talk to a desktop or a terminal, those of tests record
/// and answer from a queue, so that no test ever waits for a person.
class Platform {
public:
    virtual ~Platform() = default;

    /// Sounds the system's beep.
    virtual void beep() = 0;
    /// Shows an alert and waits for the answer. @return the index of the button pressed
    virtual int runModal(const Alert &alert) = 0;
};

}  // namespace leafwright
