#pragma once

#include "cli/Console.h"
#include "document/MyDocument.h"
#include "platform/UserDefaults.h"

#include <QCommandLineOption>
#include <QDateTime>
#include <QDir>

#include <memory>

namespace leafwright::cli {

/// A platform for running without a display: what would be shown is left unsaid, since commands report
/// failures in their own words, with the file's name and the reason. Nobody can be asked, so every panel is
/// cancelled; nothing leaves the program; settings are none.
class SilentPlatform final : public Platform {
public:
    void beep() override {}
    int runModal(const Alert & /*alert*/) override { return 0; }
    std::optional<QString> runOpenPanel(const FilePanel & /*panel*/) override { return std::nullopt; }
    std::optional<QString> runSavePanel(const FilePanel & /*panel*/) override { return std::nullopt; }
    void setClipboardText(const QString & /*text*/) override {}
    void revealFile(const QString & /*path*/) override {}
    void openFile(const QString & /*path*/) override {}
    void openURL(const QUrl & /*url*/) override {}
    QString temporaryDirectory() override { return QDir::tempPath(); }
    qint64 now() const override { return QDateTime::currentMSecsSinceEpoch(); }
    void pause(int /*milliseconds*/) override {}
    void performAfterDelay(int /*milliseconds*/, QObject *context, std::function<void()> function) override {
        QMetaObject::invokeMethod(context, std::move(function), Qt::QueuedConnection);
    }
    UserDefaults &userDefaults() override { return userDefaults_; }

private:
    UserDefaults userDefaults_;
};

/// Opens a PDF for reading. When it can't be opened, or not all of it can be read, or it is locked, says so
/// and returns null.
std::unique_ptr<PDFDocument> openForReading(const QString &path, Console &console);

/// The reason why a file that can't be opened, in a line with its name and what to do.
QString openFailure(const QString &path, const PDFError &error);

/// Why not all could be read of a file that has been asked for: the reason in a line with its name. Commands
/// ask this before they print or write what they have made of it.
std::optional<QString> readFailure(const QString &path, const PDFDocument &document);

/// Opens a PDF for writing its outline; the outline that it has is not imported yet. Nothing is said here:
/// `failure` gets the line to say when the result is false: it can't be opened, or not all of it can be read,
/// or it is locked or encrypted, which refuses editing.
bool openForEditing(MyDocument &document, const QString &path, QString &failure);

/// The option "--keep-pages", which every command has that may write entries of the file again.
QCommandLineOption keepPagesOption();
/// Lets a document say what it could not keep of a file that it replaced, and keep pages if the option is
/// given, or else say, before it writes, which entries lead elsewhere then. @param file the document's name
/// in that message
void observeWriting(MyDocument &document, const QString &file, bool keepsPages, Console &console);

}  // namespace leafwright::cli
