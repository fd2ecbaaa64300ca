#pragma once

#include "platform/Platform.h"
#include "platform/UserDefaults.h"

#include <QList>
#include <QTemporaryDir>

namespace leafwright::test {

/// Records what a document shows and sends out, and answers from queues: an alert without an answer in its
/// queue gets 0, a panel without a file in its queue is cancelled. Time stands still until the test moves it.
class RecordingPlatform final : public Platform {
public:
    void beep() override { ++beeps; }
    int runModal(const Alert &alert) override {
        alerts.append(alert);
        if (whenAsked) whenAsked();
        return answers.isEmpty() ? 0 : answers.takeFirst();
    }
    std::optional<QString> runOpenPanel(const FilePanel &panel) override {
        openPanels.append(panel);
        if (whenAsked) whenAsked();
        return nextFile();
    }
    std::optional<QString> runSavePanel(const FilePanel &panel) override {
        savePanels.append(panel);
        if (whenAsked) whenAsked();
        return nextFile();
    }
    void setClipboardText(const QString &text) override { clipboardTexts.append(text); }
    void revealFile(const QString &path) override { revealedFiles.append(path); }
    void openFile(const QString &path) override { openedFiles.append(path); }
    void openURL(const QUrl &url) override { openedURLs.append(url); }
    QString temporaryDirectory() override { return hasTemporaryDirectory ? temporary.path() : QString(); }
    qint64 now() const override { return clock; }
    void pause(int milliseconds) override { clock += milliseconds; }
    /// Later means once events are handled, whatever the delay.
    void performAfterDelay(int milliseconds, QObject *context, std::function<void()> function) override {
        delays.append(milliseconds);
        QMetaObject::invokeMethod(context, std::move(function), Qt::QueuedConnection);
    }
    UserDefaults &userDefaults() override { return defaults; }

    int beeps = 0;
    QList<Alert> alerts;
    QList<FilePanel> openPanels;
    QList<FilePanel> savePanels;
    QStringList clipboardTexts;
    QStringList revealedFiles;
    QStringList openedFiles;
    QList<QUrl> openedURLs;
    QList<int> delays;  ///< Of what was to be done later, in milliseconds.

    QList<int> answers;                           ///< For alerts, in order.
    QList<std::optional<QString>> filesToChoose;  ///< For panels, in order; nothing is a cancelled one.
    std::function<void()> whenAsked;              ///< Called while an alert or a panel is up.
    qint64 clock = 1'000'000'000'000;             ///< What now() tells, in milliseconds.
    UserDefaults defaults;                        ///< In memory.
    QTemporaryDir temporary;
    bool hasTemporaryDirectory = true;

private:
    std::optional<QString> nextFile() {
        return filesToChoose.isEmpty() ? std::nullopt : filesToChoose.takeFirst();
    }
};

}  // namespace leafwright::test
