#pragma once

#include "platform/Platform.h"
#include "platform/UserDefaults.h"

#include <QList>
#include <QPointer>

#include <optional>
#include <variant>
#include <vector>

namespace leafwright::script {

class ScriptFiles;

/// What a document did to the world outside, as far as it can be told in a report.
struct Happenings {
    struct ShownAlert {
        Alert alert;
        QString answer;  ///< The title of the button that was pressed.
    };
    struct ShownPanel {
        FilePanel panel;
        bool saves = false;
        QString chosen;  ///< Null if it was cancelled.
    };
    /// Something that another program was asked to show.
    struct ShownElsewhere {
        enum class Kind { Reveal, Open, Address } kind;
        QString what;
    };

    int beeps = 0;
    std::vector<ShownAlert> alerts;
    std::vector<ShownPanel> panels;
    std::vector<ShownElsewhere> workspace;
    std::optional<QString> clipboard;
};

/// The platform that scripts are played on: nobody is asked, nothing leaves the program, and time is the
/// script's. Alerts and panels are answered from queues. An alert with a single button only tells something,
/// and is answered by that button; any other that finds no answer ends the script, since guessing what to do
/// with somebody's file is not for a program. Settings begin as the registered defaults, and are forgotten.
class ScriptPlatform final : public Platform {
public:
    /// @param files must outlive the platform
    explicit ScriptPlatform(ScriptFiles &files) : files_(files) {}

    /// The answer to the next alert: a button's title, or its number from 0.
    void queueAnswer(const std::variant<QString, int> &button) { answers_.append(button); }
    /// The answer to the next panel; nothing cancels it.
    void queueFile(const std::optional<QString> &path) { chosenFiles_.append(path); }
    void advanceClock(qint64 milliseconds) { clock_ += milliseconds; }
    /// Calls what was to be called later, as if the script waited that long. @return whether there was any
    bool runLater();

    /// What happened since the last time this was asked.
    Happenings takeHappenings() { return std::exchange(happenings_, {}); }
    /// The first question that found no answer; null if all did.
    const QString &unanswered() const { return unanswered_; }

    void beep() override { ++happenings_.beeps; }
    int runModal(const Alert &alert) override;
    std::optional<QString> runOpenPanel(const FilePanel &panel) override;
    std::optional<QString> runSavePanel(const FilePanel &panel) override;
    void setClipboardText(const QString &text) override { happenings_.clipboard = text; }
    void revealFile(const QString &path) override;
    void openFile(const QString &path) override;
    void openURL(const QUrl &url) override;
    QString temporaryDirectory() override;
    qint64 now() const override { return clock_; }
    void pause(int milliseconds) override { clock_ += milliseconds; }
    void performAfterDelay(int milliseconds, QObject *context, std::function<void()> function) override;
    UserDefaults &userDefaults() override { return defaults_; }

private:
    struct Later {
        qint64 due;
        QPointer<QObject> context;
        std::function<void()> function;
    };
    int buttonFor(const Alert &alert);
    std::optional<QString> chooseFile(const FilePanel &panel, bool saves);
    std::optional<QString> placeToSave(const QString &path, const FilePanel &panel);
    void stop(const QString &reason);

    ScriptFiles &files_;
    UserDefaults defaults_;
    qint64 clock_ = 1'000'000'000'000;  ///< In milliseconds; any moment will do.
    QList<std::variant<QString, int>> answers_;
    QList<std::optional<QString>> chosenFiles_;
    std::vector<Later> later_;
    Happenings happenings_;
    QString unanswered_;
};

}  // namespace leafwright::script
