#pragma once

#include "platform/Platform.h"
#include "platform/UserDefaults.h"

#include <QList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace leafwright::test {

/// Records what a document shows and sends out, and answers from queues. An alert with a single button only
/// tells something, and is answered by that button; any other question that finds no answer fails the test,
/// and gets the last button, or a cancelled panel. Time stands still until the test moves it.
class RecordingPlatform final : public Platform {
public:
    void beep() override { ++beeps; }
    int runModal(const Alert &alert) override {
        alerts.append(alert);
        if (whenAsked) whenAsked();
        if (alert.buttons.size() <= 1) return 0;
        if (!answers.isEmpty()) return answers.takeFirst();
        ADD_FAILURE() << "the alert \"" << alert.message.toStdString() << "\" finds no answer";
        return static_cast<int>(alert.buttons.size()) - 1;
    }
    std::optional<QString> runOpenPanel(const FilePanel &panel) override {
        openPanels.append(panel);
        if (whenAsked) whenAsked();
        return nextFile(panel);
    }
    std::optional<QString> runSavePanel(const FilePanel &panel) override {
        savePanels.append(panel);
        if (whenAsked) whenAsked();
        return nextFile(panel);
    }
    void setClipboardText(const QString &text) override { clipboardTexts.append(text); }
    void revealFile(const QString &path) override { revealedFiles.append(path); }
    void openFile(const QString &path) override { openedFiles.append(path); }
    void openURL(const QUrl &url) override { openedURLs.append(url); }
    QString temporaryDirectory() override { return temporary.path(); }
    qint64 now() const override { return clock; }
    void pause(int milliseconds) override {
        if (whenPaused) whenPaused();
        clock += milliseconds;
    }
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
    std::function<void()> whenPaused;             ///< Called when a pause begins.
    qint64 clock = 1'000'000'000'000;             ///< What now() tells, in milliseconds.
    UserDefaults defaults;                        ///< In memory.
    QTemporaryDir temporary;

private:
    std::optional<QString> nextFile(const FilePanel &panel) {
        if (!filesToChoose.isEmpty()) return filesToChoose.takeFirst();
        ADD_FAILURE() << "the panel \"" << panel.title.toStdString() << "\" finds no file";
        return std::nullopt;
    }
};

}  // namespace leafwright::test
