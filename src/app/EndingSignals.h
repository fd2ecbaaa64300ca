#pragma once

#include <QObject>

#include <chrono>
#include <functional>

class QSocketNotifier;

namespace leafwright {

/// While it lives, something is done before the program ends because the system tells it to: SIGTERM,
/// SIGHUP and SIGINT, where it was not started to ignore them. It ends as the signal would have ended it, and
/// so it does at once by a signal that comes some time after the first: who sends one right after another has
/// not waited in vain. One may live at a time, on the main thread.
class EndingSignals : public QObject {
    Q_OBJECT

public:
    /// @param before called when events are handled
    /// @param patience how long after the first signal another one ends nothing at once
    explicit EndingSignals(std::function<void()> before,
                           std::chrono::nanoseconds patience = std::chrono::seconds(1));
    ~EndingSignals() override;

private:
    void end();

    std::function<void()> before_;
    QSocketNotifier *notifier_;
};

}  // namespace leafwright
