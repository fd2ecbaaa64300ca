#pragma once

#include <memory>
#include <memory_resource>

namespace leafwright {

/// Allocates from a pool that it shares with all its copies, so that what was allocated may outlive whoever
/// made the pool. For very many objects of one size that come and go together: each by itself would cost the
/// heap several times as long. The memory goes back when the last copy has gone. For one thread.
template <typename T>
class PooledAllocator {
    template <typename>
    friend class PooledAllocator;

public:
    using value_type = T;

    /// Begins a pool of its own.
    PooledAllocator() : pool_(makePool()) {}
    template <typename U>
    explicit PooledAllocator(const PooledAllocator<U> &other) : pool_(other.pool_) {}

    /// Throws std::bad_alloc where there is no memory.
    T *allocate(size_t count) { return inPool().allocate(count); }
    void deallocate(T *memory, size_t count) { inPool().deallocate(memory, count); }

    template <typename U>
    bool operator==(const PooledAllocator<U> &other) const {
        return pool_ == other.pool_;
    }

private:
    std::pmr::polymorphic_allocator<T> inPool() { return pool_.get(); }
    static std::shared_ptr<std::pmr::memory_resource> makePool() {
#ifdef __SANITIZE_ADDRESS__
        // AddressSanitizer sees only of the heap's own objects that they are used after their end.
        return {std::pmr::new_delete_resource(), [](std::pmr::memory_resource * /*ofTheLibrary*/) {}};
#else
        return std::make_shared<std::pmr::unsynchronized_pool_resource>();
#endif
    }

    std::shared_ptr<std::pmr::memory_resource> pool_;
};

}  // namespace leafwright
