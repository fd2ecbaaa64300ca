#include "document/PageFinder.h"

#include <new>
#include <utility>

namespace leafwright {

PageFinder::PageFinder(const TextPages &pages) : search_(pages) {}

PageFinder::~PageFinder() = default;

void PageFinder::start(const QString &text) {
    hits_.clear();
    isSearching_ = !text.isEmpty();
    lacksMemory_ = false;
    {
        const std::lock_guard lock(mutex_);
        ++number_;
        wanted_ = text;
        arrived_.clear();
        stopSearch_.request_stop();
        isOutOfMemory_ = false;
        if (text.isEmpty()) searched_ = endedNumber_ = number_;
    }
    if (text.isEmpty()) return;
    // Most documents are never searched.
    if (!thread_.joinable()) thread_ = std::jthread([this](const std::stop_token &stop) { run(stop); });
    wakes_.notify_one();
}

void PageFinder::finish() {
    {
        std::unique_lock lock(mutex_);
        ended_.wait(lock, [this] { return endedNumber_ == number_; });
    }
    take();
}

void PageFinder::run(const std::stop_token &stop) {
    std::unique_lock lock(mutex_);
    while (wakes_.wait(lock, stop, [this] { return searched_ != number_; })) {
        const quint64 number = searched_ = number_;
        const QString text = wanted_;
        stopSearch_ = std::stop_source();
        const std::stop_token stopSearch = stopSearch_.get_token();
        lock.unlock();
        bool isOutOfMemory = false;
        {
            const std::stop_callback stopsToo(stop, [this] {
                const std::lock_guard innerLock(mutex_);
                stopSearch_.request_stop();
            });
            try {
                search_.search(
                    text, [&](PageHits hits) { note(number, std::move(hits)); }, stopSearch);
            } catch (const std::bad_alloc &) {
                isOutOfMemory = true;
            }
        }
        end(number, isOutOfMemory);
        lock.lock();
        if (stop.stop_requested()) return;
    }
}

/// Leaves a page's hits to the main thread.
void PageFinder::note(quint64 number, PageHits hits) {
    const std::lock_guard lock(mutex_);
    if (number != number_) return;
    arrived_.push_back(std::move(hits));
    if (std::exchange(isTold_, true)) return;
    // By its name, as in OutlineFilter.
    QMetaObject::invokeMethod(this, "take", Qt::QueuedConnection);
}

void PageFinder::end(quint64 number, bool isOutOfMemory) {
    const std::lock_guard lock(mutex_);
    if (number != number_) return;
    endedNumber_ = number;
    isOutOfMemory_ = isOutOfMemory;
    ended_.notify_all();
    if (std::exchange(isTold_, true)) return;
    QMetaObject::invokeMethod(this, "take", Qt::QueuedConnection);
}

void PageFinder::take() {
    std::vector<PageHits> arrived;
    {
        const std::lock_guard lock(mutex_);
        isTold_ = false;
        arrived = std::exchange(arrived_, {});
        isSearching_ = endedNumber_ != number_;
        lacksMemory_ = !isSearching_ && isOutOfMemory_;
    }
    for (const PageHits &page : arrived) {
        hits_.add(page);
        Q_EMIT found(page);
    }
    Q_EMIT changed();
}

}  // namespace leafwright
