#pragma once

#include "app/AppDelegate.h"
#include "pdf/PDFError.h"
#include "script/ScriptReport.h"

#include <functional>

namespace leafwright::script {

class ScriptFiles;

/// Plays steps on a document as the application has it: the real document, its real window, all commands, on
/// a platform that answers by itself. Needs a QApplication; nothing is shown where it runs offscreen.
///
/// After each step the player waits until nothing is left to be done: what a command puts off is done before
/// the step counts as over, and the clock stands where it would then stand.
class ScriptPlayer {
public:
    using Recorder = std::function<void(const StepRecord &record, MyDocument *document)>;

    /// @param files must outlive the player @param record told of every record, the loading's first; may be
    /// null
    ScriptPlayer(ScriptFiles &files, Recorder record);
    ~ScriptPlayer();

    /// Opens a copy of a file in a window. @return why that failed
    std::optional<PDFError> open(const QString &path);
    /// Plays the steps. @return why that ended before the last one, with the step's number and name
    std::optional<QString> play(const std::vector<Step> &steps);

    /// The settings that the script begins with.
    UserDefaults &userDefaults() { return platform_.userDefaults(); }
    /// Null when it has been closed.
    MyDocument *document() const;

private:
    bool perform(const Step &step, std::vector<ShownSheet> &sheets);
    void settle(const Step &step, std::vector<ShownSheet> &sheets);
    void fillInField(const Step &step, std::vector<ShownSheet> &sheets) const;
    void answerOpenSheet(const Step &step, std::vector<ShownSheet> &sheets);
    void playStep(const Step &step);
    void throwForFailedWrite() const;
    void throwForFailedExchange() const;

    ScriptFiles &files_;
    Recorder record_;
    ScriptPlatform platform_;
    AppDelegate application_;
    QPointer<Document> document_;
};

}  // namespace leafwright::script
