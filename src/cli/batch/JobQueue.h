#pragma once

#include "cli/batch/BatchJob.h"
#include "cli/batch/JobCommand.h"

#include <condition_variable>
#include <mutex>
#include <optional>
#include <set>

namespace leafwright::cli {

/// A job that waits to be done.
struct WaitingJob {
    BatchJob job;
    JobCommand::Task task;
    JobMark mark;
    qsizetype weight = 0;  ///< About how many bytes it takes to keep it.
};

/// The jobs that have been read and not begun, the largest files first: at the end, no worker is busy alone
/// with a large one that came last. There are never more than a certain number, nor of more than a certain
/// weight, however many are to come.
class JobQueue {
public:
    /// @param most how many may wait @param heaviest how many bytes they may take, unless it is one alone
    explicit JobQueue(size_t most, qsizetype heaviest = 16 << 20) : most_(most), heaviest_(heaviest) {}

    /// Adds a job, once there is room for it. @return false where no job is wanted any more
    bool put(WaitingJob job);
    /// Waits for a job. @return nothing once there will be none
    std::optional<WaitingJob> take();
    /// No more jobs will come; those that wait are done.
    void finish();
    /// No more jobs are wanted; those that wait are not done.
    void abandon();
    /// Whether abandon() was called.
    bool isAbandoned() const;

private:
    struct Larger {
        bool operator()(const std::pair<qint64, WaitingJob> &a,
                        const std::pair<qint64, WaitingJob> &b) const {
            return a.second.mark.size != b.second.mark.size ? a.second.mark.size > b.second.mark.size
                                                            : a.first < b.first;
        }
    };

    bool hasRoom() const { return jobs_.empty() || (jobs_.size() < most_ && weight_ < heaviest_); }

    size_t most_;
    qsizetype heaviest_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::set<std::pair<qint64, WaitingJob>, Larger> jobs_;  ///< With their numbers in the order they came.
    qsizetype weight_ = 0;
    qint64 next_ = 0;
    bool finished_ = false;
    bool abandoned_ = false;
};

}  // namespace leafwright::cli
