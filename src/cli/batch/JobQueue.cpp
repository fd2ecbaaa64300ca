#include "cli/batch/JobQueue.h"

namespace leafwright::cli {

bool JobQueue::put(WaitingJob job) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return abandoned_ || hasRoom(); });
    if (abandoned_) return false;
    weight_ += job.weight;
    jobs_.emplace(next_++, std::move(job));
    changed_.notify_all();
    return true;
}

std::optional<WaitingJob> JobQueue::take() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return abandoned_ || finished_ || !jobs_.empty(); });
    if (abandoned_ || jobs_.empty()) return std::nullopt;
    auto first = jobs_.extract(jobs_.begin());
    weight_ -= first.value().second.weight;
    changed_.notify_all();
    return std::move(first.value().second);
}

void JobQueue::finish() {
    const std::lock_guard lock(mutex_);
    finished_ = true;
    changed_.notify_all();
}

void JobQueue::abandon() {
    const std::lock_guard lock(mutex_);
    abandoned_ = true;
    changed_.notify_all();
}

bool JobQueue::isAbandoned() const {
    const std::lock_guard lock(mutex_);
    return abandoned_;
}

}  // namespace leafwright::cli
