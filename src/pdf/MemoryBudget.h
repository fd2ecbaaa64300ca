#pragma once

#include <atomic>
#include <cstddef>

namespace leafwright {

/// The memory that one file may take, shared by all that read it, on any thread. It is there so that a small
/// file which asks for a lot fails with a message, and alone.
class MemoryBudget {
public:
    /// Bytes. Room for a file of a million objects, which several readers may hold at once.
    static constexpr size_t most = size_t{2} << 30;

    /// @return whether there were that many bytes left; nothing is taken otherwise
    bool take(size_t bytes) {
        if (bytes > most) return false;
        if (taken_.fetch_add(bytes) + bytes <= most) return true;
        taken_ -= bytes;
        return false;
    }
    void giveBack(size_t bytes) { taken_ -= bytes; }
    size_t taken() const { return taken_; }

private:
    std::atomic<size_t> taken_ = 0;
};

}  // namespace leafwright
