#pragma once

#include "pdf/mupdf/Reader.h"

#include <condition_variable>
#include <mutex>

namespace leafwright::mupdf {

/// Readers of one file, handed out to threads; made when needed.
class ReaderPool {
public:
    /// @param pages the file's pages, for readers made later
    /// @param most how many readers there may be at a time
    /// @param first a reader of the file to begin with; may be null
    ReaderPool(std::shared_ptr<const FileHandle> file, std::shared_ptr<const PageTree> pages, int most,
               std::unique_ptr<Reader> first = nullptr);
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

    int most() const { return most_; }
    /// Waits while all readers are out. Throws Error when another reader can't be opened. A reader that comes
    /// back with a problem is not handed out again.
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
