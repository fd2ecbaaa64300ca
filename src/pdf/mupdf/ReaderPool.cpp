#include "pdf/mupdf/ReaderPool.h"

#include <thread>

namespace leafwright::mupdf {

ReaderPool::ReaderPool(std::shared_ptr<const FileHandle> file, std::shared_ptr<const PageTree> pages,
                       std::unique_ptr<Reader> first)
    : ReaderPool(std::move(file), std::move(pages),
                 std::max(1, static_cast<int>(std::thread::hardware_concurrency()))) {
    idle_.push_back(std::move(first));
    made_ = 1;  // NOLINT(cppcoreguidelines-prefer-member-initializer): the other constructor made the members
}

ReaderPool::ReaderPool(std::shared_ptr<const FileHandle> file, std::shared_ptr<const PageTree> pages,
                       int most)
    : file_(std::move(file)), pages_(std::move(pages)), most_(most) {}

ReaderPool::~ReaderPool() {
    // Freeing the objects of a large file takes a while; the readers do it side by side.
    std::vector<std::jthread> helpers;
    for (size_t i = 1; i < idle_.size(); ++i) {
        helpers.emplace_back([reader = std::move(idle_[i])]() mutable { reader.reset(); });
    }
    if (!idle_.empty()) idle_.front().reset();
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
        auto reader = std::make_unique<Reader>(file_);
        reader->setPages(pages_);
        return {*this, std::move(reader)};
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
