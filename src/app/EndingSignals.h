#pragma once

#include <QObject>

#include <functional>

class QSocketNotifier;

namespace leafwright {

/// While it lives, something is done before the program ends because the system tells it to: SIGTERM,
/// SIGHUP and SIGINT, where it was not started to ignore them. It ends as the signal would have ended it, and
/// a second signal does so at once. One may live at a time, on the main thread.
class EndingSignals : public QObject {
    Q_OBJECT

public:
    /// @param before called when events are handled
    explicit EndingSignals(std::function<void()> before);
    ~EndingSignals() override;

private:
    void end();

    std::function<void()> before_;
    QSocketNotifier *notifier_;
};

}  // namespace leafwright
