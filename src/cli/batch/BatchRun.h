#pragma once

#include "cli/batch/JobCommand.h"
#include "cli/batch/JobLog.h"
#include "cli/batch/JobQueue.h"
#include "cli/batch/JobResult.h"
#include "cli/batch/UsedPlaces.h"

#include <mutex>

namespace leafwright::cli {

class ForkServer;

/// Limits of a batch.
struct BatchLimits {
    int workers = 1;
    std::chrono::seconds time{0};  ///< A file may take; 0 is as long as it likes.
    qint64 memory = 0;             ///< Bytes a file may take; 0 is as many as it likes.
};

/// A batch at work: reads jobs, has them done by a pool of workers, and writes what came of them. What it
/// keeps in memory does not grow with their number.
class BatchRun {
public:
    /// @param log that is open, or none @param ownFiles that no job may write. All but these must outlive
    /// this.
    BatchRun(const JobCommand &command, BatchLimits limits, JobLog &log, QStringList ownFiles,
             Console &console)
        : command_(command), limits_(limits), log_(log), ownFiles_(std::move(ownFiles)), console_(console) {}
    ~BatchRun();
    BatchRun(const BatchRun &) = delete;
    BatchRun &operator=(const BatchRun &) = delete;

    /// Does the jobs that a descriptor gives, until there are no more, the program is asked to end, or a
    /// result can't be written. @return whether all of them are done
    bool run(int descriptor);

private:
    void readJobs(int descriptor);
    void admit(const QByteArray &line, qint64 number);
    std::optional<QString> objection(const WaitingJob &waiting);
    JobLog::Known begin(const WaitingJob &waiting);
    void work();
    void perform(const WaitingJob &waiting, ForkServer &server);
    void fail(const JobResult &result, const QByteArray &signature, const std::optional<JobMark> &mark);
    void tell(const JobResult &result, const QByteArray &signature, const std::optional<JobMark> &mark);
    void giveUp(const QString &problem);
    bool sayHowItEnded();

    const JobCommand &command_;
    BatchLimits limits_;
    JobLog &log_;
    QStringList ownFiles_;
    Console &console_;
    JobQueue queue_{1024};
    UsedPlaces places_;
    std::mutex results_;  ///< Over what follows, the log's lines and the console's results.
    qint64 told_ = 0;
    qint64 failed_ = 0;
    bool gaveUp_ = false;
    int stop_ = -1;  ///< Can be read from once no more jobs are wanted.
};

}  // namespace leafwright::cli
