#include "pdf/ImageMemory.h"

#include <list>
#include <mutex>
#include <new>
#include <sys/mman.h>

namespace leafwright {

namespace {

/// Smaller images are no trouble to the heap.
constexpr size_t smallestBlock = 256U << 10;

constexpr size_t mostIdleBytes = 32U << 20;

/// Memory from the system, for the pixels of one image.
struct Block {
    size_t size;
    uchar *memory;
};

/// The blocks that no image uses at the moment.
class IdleBlocks {
public:
    /// Lives until the end of the program, as images may.
    static IdleBlocks &instance() {
        static auto *const blocks = new IdleBlocks;
        return *blocks;
    }

    /// A block of this very size; without memory where there is none.
    Block take(size_t size) {
        const std::lock_guard lock(mutex_);
        for (auto block = blocks_.begin(); block != blocks_.end(); ++block) {
            if (block->size != size) continue;
            const Block found = *block;
            blocks_.erase(block);
            bytes_ -= size;
            return found;
        }
        return {size, nullptr};
    }

    void giveBack(const Block &block) {
        const std::lock_guard lock(mutex_);
        blocks_.push_back(block);
        bytes_ += block.size;
        while (bytes_ > mostIdleBytes) {
            bytes_ -= blocks_.front().size;
            munmap(blocks_.front().memory, blocks_.front().size);
            blocks_.pop_front();
        }
    }

    size_t bytes() const {
        const std::lock_guard lock(mutex_);
        return bytes_;
    }

private:
    mutable std::mutex mutex_;
    std::list<Block> blocks_;  ///< The one idle for longest first.
    size_t bytes_ = 0;
};

}  // namespace

PageImage makeImage(const QSize &size) {
    const size_t line = static_cast<size_t>(size.width()) * PageImage::pixelBytes;
    const size_t bytes = line * static_cast<size_t>(size.height());
    if (bytes < smallestBlock) return {size, std::shared_ptr<uchar[]>(new (std::nothrow) uchar[bytes])};
    Block block = IdleBlocks::instance().take(bytes);
    if (!block.memory) {
        void *const memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) return {};
        block.memory = static_cast<uchar *>(memory);
    }
    return {size, std::shared_ptr<uchar[]>(block.memory, [bytes](uchar *memory) {
                IdleBlocks::instance().giveBack({bytes, memory});
            })};
}

qint64 idleImageBytes() {
    return static_cast<qint64>(IdleBlocks::instance().bytes());
}

}  // namespace leafwright
