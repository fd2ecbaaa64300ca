#pragma once

#include "platform/Platform.h"
#include "platform/UserDefaults.h"

#include <QTemporaryDir>

#include <memory>

namespace leafwright {

/// The desktop that the program runs on. Needs an application object.
class QtPlatform final : public Platform {
public:
    /// @param settingsPath the file that keeps the user's settings
    explicit QtPlatform(const QString &settingsPath = standardSettingsPath());

    /// The settings file of the application, in the user's configuration folder.
    static QString standardSettingsPath();

    void beep() override;
    int runModal(const Alert &alert) override;
    std::optional<QString> runOpenPanel(const FilePanel &panel) override;
    std::optional<QString> runSavePanel(const FilePanel &panel) override;
    void setClipboardText(const QString &text) override;
    /// Opens the folder instead where no file viewer can select a file. What fails here and below is logged.
    void revealFile(const QString &path) override;
    void openFile(const QString &path) override;
    void openURL(const QUrl &url) override;
    QString temporaryDirectory() override;
    qint64 now() const override;
    void pause(int milliseconds) override;
    void performAfterDelay(int milliseconds, QObject *context, std::function<void()> function) override;
    UserDefaults &userDefaults() override { return userDefaults_; }

private:
    FilePanel withFolder(const FilePanel &panel) const;
    /// Notes where a file was chosen. @return the path
    std::optional<QString> noted(const std::optional<QString> &path);

    UserDefaults userDefaults_;
    /// Where the usual place is not ours; what is in it may be open in another program for long.
    std::unique_ptr<QTemporaryDir> ownTemporaryDirectory_;
};

}  // namespace leafwright
