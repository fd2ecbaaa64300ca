#include "pdf/mupdf/ReaderPool.h"

#include <thread>

namespace leafwright::mupdf {

ReaderPool::ReaderPool(std::shared_ptr<const FileHandle> file, std::shared_ptr<const PageTree> pages,
                       int most, std::unique_ptr<Reader> first)
    : file_(std::move(file)), pages_(std::move(pages)), most_(most) {
    idle_.reserve(static_cast<size_t>(most));  // so that giving back can't fail
    if (!first || first->problem()) return;
    idle_.push_back(std::move(first));
    made_ = 1;
}

ReaderPool::~ReaderPool() {
    // Freeing the objects of a large file takes a while; the readers do it side by side.
    std::vector<std::jthread> helpers;
    try {
        for (size_t i = 1; i < idle_.size(); ++i)
            helpers.emplace_back([reader = std::move(idle_[i])]() mutable { reader.reset(); });
    } catch (const std::exception &) {
        // Then this thread does it, when it comes to free the list.
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
    const bool isOfUse = !reader->problem();
    if (!isOfUse) reader.reset();
    {
        const std::lock_guard lock(mutex_);
        isOfUse ? idle_.push_back(std::move(reader)) : static_cast<void>(--made_);
    }
    returned_.notify_one();
}

}  // namespace leafwright::mupdf
