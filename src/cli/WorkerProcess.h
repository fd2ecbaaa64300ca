#pragma once

#include "cli/ProgramStart.h"

#include <QByteArray>
#include <QStringList>

#include <chrono>
#include <functional>
#include <optional>

namespace leafwright::cli {

/// How a worker ended.
struct WorkerEnd {
    enum class How {
        Exited,
        Signalled,  ///< The system ended it: it crashed, or there was no memory left for it.
        TimedOut,   ///< It took too long and was ended.
        Cancelled,  ///< It was ended because this program was asked to end.
        NotStarted
    };
    How how = How::NotStarted;
    int code = 0;  ///< The exit code, the signal, or the number of the error that kept it from starting.
    QStringList written = {};  ///< Files that are new, though it was ended.

    /// What to say to people when it is neither "done" nor a failure that the worker has told itself.
    std::optional<QString> reason(std::chrono::seconds limit) const;
};

/// Runs a command of this program in a process of its own. A file that takes too long or too much memory, or
/// that brings a library down, then ends alone; nothing within a process can stop a library that does not
/// listen.
class WorkerProcess {
public:
    /// @param arguments of the command line, the command first
    explicit WorkerProcess(QStringList arguments, WorkerOf waiting)
        : arguments_(std::move(arguments)), waiting_(waiting) {}

    /// Starts the worker and waits for its end. May be called from any thread. Requests to end this program
    /// end the worker, and are noted as by an Interruption. What a worker that was ended, or crashed, has
    /// left of files that it was about to write is removed.
    /// @param limit when to end it; 0 is never
    /// @param results the descriptor of its standard output; -1 is none, and nor is there standard input then
    /// @param messages gets what it writes to standard error, in pieces as they come
    WorkerEnd run(std::chrono::seconds limit, int results,
                  const std::function<void(const QByteArray &)> &messages) const;

private:
    QStringList arguments_;
    WorkerOf waiting_;
};

}  // namespace leafwright::cli
