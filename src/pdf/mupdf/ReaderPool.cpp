#include "pdf/mupdf/ReaderPool.h"

#include <thread>

namespace leafwright::mupdf {

ReaderPool::ReaderPool(std::shared_ptr<const FileHandle> file, std::unique_ptr<Reader> first)
    : file_(std::move(file)), most_(static_cast<int>(std::max(1U, std::thread::hardware_concurrency()))) {
    idle_.push_back(std::move(first));
}

ReaderPool::Lease ReaderPool::acquire() {
    std::unique_lock lock(mutex_);
    returned_.wait(lock, [this] { return !idle_.empty() || made_ < most_; });
    if (!idle_.empty()) {
        std::unique_ptr<Reader> reader = std::move(idle_.back());
        idle_.pop_back();
        return {*this, std::move(reader)};
    }
    ++made_;
    lock.unlock();  // opening takes a while; others may go on meanwhile
    try {
        return {*this, std::make_unique<Reader>(file_)};
    } catch (...) {
        lock.lock();
        --made_;
        lock.unlock();
        returned_.notify_one();
        throw;
    }
}

void ReaderPool::giveBack(std::unique_ptr<Reader> reader) {
    {
        const std::lock_guard lock(mutex_);
        idle_.push_back(std::move(reader));
    }
    returned_.notify_one();
}

}  // namespace leafwright::mupdf
