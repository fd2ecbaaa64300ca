#pragma once

#include "pdf/mupdf/Reader.h"

#include <condition_variable>
#include <mutex>

namespace leafwright::mupdf {

/// Readers of one file, handed out to threads; made when needed, at most one per core.
class ReaderPool {
public:
    /// @param first a reader of the file to begin with
    /// @param pages the file's pages, for readers made later
    ReaderPool(std::shared_ptr<const FileHandle> file, std::shared_ptr<const PageTree> pages,
               std::unique_ptr<Reader> first);
    /// A pool that has no reader to begin with. @param most how many readers it may make
    ReaderPool(std::shared_ptr<const FileHandle> file, std::shared_ptr<const PageTree> pages, int most);
    ~ReaderPool();
    ReaderPool(const ReaderPool &) = delete;
    ReaderPool &operator=(const ReaderPool &) = delete;

    /// A reader on loan; goes back to the pool when this goes.
    class Lease {
    public:
        Lease(ReaderPool &pool, std::unique_ptr<Reader> reader) : pool_(&pool), reader_(std::move(reader)) {}
        ~Lease() { pool_->giveBack(std::move(reader_)); }
        Lease(const Lease &) = delete;
        Lease &operator=(const Lease &) = delete;
        Reader &operator*() const { return *reader_; }
        Reader *operator->() const { return reader_.get(); }

    private:
        ReaderPool *pool_;
        std::unique_ptr<Reader> reader_;
    };

    /// Waits while all readers are out. Throws Error when another reader can't be opened.
    Lease acquire();

private:
    void giveBack(std::unique_ptr<Reader> reader);

    std::shared_ptr<const FileHandle> file_;
    std::shared_ptr<const PageTree> pages_;
    std::mutex mutex_;
    std::condition_variable returned_;
    std::vector<std::unique_ptr<Reader>> idle_;
    int made_ = 0;
    int most_;
};

}  // namespace leafwright::mupdf
