#pragma once

#include "platform/Platform.h"

#include <QList>

namespace leafwright::test {

/// Records what a document shows and answers from a queue; an alert without an answer in the queue gets 0.
class RecordingPlatform final : public Platform {
public:
    void beep() override { ++beeps; }
    int runModal(const Alert &alert) override {
        alerts.append(alert);
        return answers.isEmpty() ? 0 : answers.takeFirst();
    }

    int beeps = 0;
    QList<Alert> alerts;
    QList<int> answers;
};

}  // namespace leafwright::test
