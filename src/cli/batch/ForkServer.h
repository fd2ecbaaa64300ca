#pragma once

#include "cli/batch/WorkerJob.h"

namespace leafwright::cli {

/// Does jobs of one command, one after the other, each in a process of its own that begins as a copy of one
/// that has started already. So a job does not pay for the start, and what becomes of it is nobody else's
/// business. A pool has one of these a thread; it is used by one thread only.
class ForkServer {
public:
    /// @param command its name
    explicit ForkServer(QString command) : command_(std::move(command)) {}
    /// Ends the process.
    ~ForkServer() { stop(); }
    ForkServer(const ForkServer &) = delete;
    ForkServer &operator=(const ForkServer &) = delete;

    /// Does a job and waits for its end. Requests to end this program end the job, and are noted as by an
    /// Interruption. What a worker that was ended, or crashed, has left of files that it was about to write
    /// is removed. Where the process that starts the workers has come to its end itself, the job has failed,
    /// and the next one gets another.
    WorkerReport run(const WorkerJob &job);

private:
    int start();
    /// @return how it ended, as wait(2) has it
    int stop();
    void waitForReport() const;

    QString command_;
    int socket_ = -1;
    pid_t id_ = 0;
};

}  // namespace leafwright::cli
