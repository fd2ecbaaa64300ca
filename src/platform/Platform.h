#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <optional>

namespace leafwright {

class UserDefaults;

/// A question or a message that stops until it is answered.
struct Alert {
    enum class Style { Warning, Informational };

    QString message = {};
    QString informativeText = {};
    QStringList buttons =
        {};  ///< One to three. The first is the default; the last of several is what Escape means.
    Style style = Style::Warning;
    bool escapable = true;  ///< Whether Escape presses the last button; else one must be chosen.
    QString title = {};     ///< What it is about, such as a file's name; may be empty.
};

/// A panel that asks for one file or folder.
struct FilePanel {
    QString title = {};
    QString message = {};  ///< A sentence that says what is asked for and why; may be empty.
    QString prompt = {};   ///< The title of the confirming button; empty for the usual one.
    QString path = {};  ///< Where to start: a folder, or a file to propose. Empty for wherever it was last.
    QStringList allowedFileTypes =
        {};  ///< Extensions without dots; empty for any. The first is added to new names without one of them.
    bool canChooseFiles = true;
    bool canChooseDirectories = false;  ///< Of open panels only.
    bool canCreateDirectories = true;
    /// Whether a path may be chosen or entered; null if all may.
    std::function<bool(const QString &path)> shouldEnablePath = {};
};

/// Everything by which a document reaches out of itself: what stops and asks, makes noise, leaves the
/// program or tells the time. A document is given one; the real ones talk to a desktop or a terminal, those
/// of tests record and answer from a queue, so that no test ever waits for a person. For the main thread
/// only.
class Platform {
public:
    virtual ~Platform() = default;

    /// Sounds the system's beep.
    virtual void beep() = 0;
    /// Shows an alert and waits for the answer. @return the index of the button pressed
    virtual int runModal(const Alert &alert) = 0;
    /// Asks for something that exists. @return its absolute path; nothing if the user cancelled
    virtual std::optional<QString> runOpenPanel(const FilePanel &panel) = 0;
    /// Asks where to save a file; what is there already may be replaced, the panel has asked.
    /// @return an absolute path; nothing if the user cancelled
    virtual std::optional<QString> runSavePanel(const FilePanel &panel) = 0;

    /// Replaces the clipboard's content by a text.
    virtual void setClipboardText(const QString &text) = 0;
    /// Shows a file, selected, in the system's file viewer.
    virtual void revealFile(const QString &path) = 0;
    /// Opens a file with the system's default application for it.
    virtual void openFile(const QString &path) = 0;
    /// Opens an address with what the system has for it: the browser, the mail program.
    virtual void openURL(const QUrl &url) = 0;

    /// An existing folder for files that need not last, which nobody else can write to; null if none can be
    /// made.
    virtual QString temporaryDirectory() = 0;

    /// Milliseconds since the start of 1970, UTC.
    virtual qint64 now() const = 0;
    /// Waits; meanwhile windows are drawn, but what the user types and clicks waits.
    virtual void pause(int milliseconds) = 0;
    /// Calls a function later, unless an object is gone by then. Returns at once.
    virtual void performAfterDelay(int milliseconds, QObject *context, std::function<void()> function) = 0;
    /// The user's settings; they live as long as the platform.
    virtual UserDefaults &userDefaults() = 0;
};

}  // namespace leafwright
