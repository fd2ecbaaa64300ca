#pragma once

#include <QString>

#include <stdexcept>

namespace leafwright::script {

/// Why a step can't be played: a path that leads nowhere, a field that its sheet does not have. It ends the
/// script. Thrown from the script's own code only, never through Qt's.
class StepFailure : public std::runtime_error {
public:
    explicit StepFailure(const QString &reason) : std::runtime_error(reason.toStdString()), reason_(reason) {}

    const QString &reason() const { return reason_; }

private:
    QString reason_;
};

}  // namespace leafwright::script
