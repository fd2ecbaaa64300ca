#pragma once

#include <QStringList>

#include <sys/types.h>

namespace leafwright::cli {

/// Who waits for a worker.
enum class WorkerOf {
    None,     ///< This process is none.
    Command,  ///< A command that does nothing else meanwhile.
    Batch,    ///< A batch, which has a worker on every core.
    Pool      ///< A batch, for which this one does nothing but start the workers; see serveJobs().
};

/// Whose worker this process is.
WorkerOf workerOf();

/// For main(), before anything is written. Where this process is a worker, it ends with the process that
/// waits for it, and tells that one in a journal what it writes.
void beginAsWorker();

/// The descriptor that a worker has got to keep; -1 for none.
int workerDescriptor();

/// Makes a copy of a process that starts workers one of these. @param journal the descriptor of its journal
void becomeWorkerOfBatch(int journal);

/// A process of this program that is to be started, and what it gets.
struct ProgramStart {
    QStringList arguments;  ///< Of the command line, the command first.
    WorkerOf waiting = WorkerOf::Command;
    int results =
        -1;  ///< The descriptor of its standard output; -1 is none, and nor is there standard input.
    int messages = -1;  ///< That of its standard error.
    int kept = -1;      ///< That of its journal, or of a pool's socket, which stays open under its number.
};

/// Starts it. @param id gets its number. @return 0, or the errno of what failed
int startProgram(const ProgramStart &start, pid_t &id);

/// The program that is started, where that is another than the one that runs this: tests have their own.
void setProgramToStart(const QString &path);

}  // namespace leafwright::cli
