#include "pdf/mupdf/Context.h"

#include <QLoggingCategory>

#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <mutex>
#include <new>

namespace leafwright::mupdf {

namespace {

Q_LOGGING_CATEGORY(log, "leafwright.mupdf", QtWarningMsg)

/// Enough for the fonts of a page or two; resources beyond it are dropped and read again when needed.
constexpr size_t storeBytes = 32U << 20;

/// MuPDF guards its few static variables (of the JPEG 2000 and shaping libraries) by the FreeType lock.
/// Since those are shared by all contexts, so is this lock; the others guard a single context.
std::mutex staticStateMutex;

void lock(void * /*user*/, int which) {
    if (which == FZ_LOCK_FREETYPE) staticStateMutex.lock();
}

void unlock(void * /*user*/, int which) {
    if (which == FZ_LOCK_FREETYPE) staticStateMutex.unlock();
}

constexpr fz_locks_context locks{nullptr, lock, unlock};

/// Room for the objects of a file of a million objects, which MuPDF keeps once it has read them.
constexpr size_t mostBytes = 1U << 30;

// The allocator of one context; its user pointer is the count of bytes in use.

void *allocate(void *user, size_t size) {
    auto &inUse = *static_cast<size_t *>(user);
    if (size > mostBytes - std::min(inUse, mostBytes)) return nullptr;
    void *block = std::malloc(size);
    if (block) inUse += malloc_usable_size(block);
    return block;
}

void release(void *user, void *block) {
    if (!block) return;
    *static_cast<size_t *>(user) -= malloc_usable_size(block);
    std::free(block);
}

/// MuPDF grows the cross-reference table by one entry for each new object. Where every realloc() copies, that
/// is quadratic; so a large block that grows gets some room.
constexpr size_t largeBlock = 1U << 18;

void *reallocate(void *user, void *block, size_t size) {
    auto &inUse = *static_cast<size_t *>(user);
    const size_t before = block ? malloc_usable_size(block) : 0;
    if (before >= largeBlock && size > before / 2) {
        if (size <= before) return block;
        size = std::max(size, before + before / 8);
    }
    if (size > before && size - before > mostBytes - std::min(inUse, mostBytes)) return nullptr;
    // MuPDF frees a block rather than ask for one of 0 bytes.
    void *moved = std::realloc(block, size);  // NOLINT(clang-analyzer-optin.portability.UnixAPI)
    if (moved) inUse += malloc_usable_size(moved) - before;
    return moved;
}

void logMessage(void * /*user*/, const char *message) {
    qCDebug(log, "%s", message);
}

}  // namespace

void throwCaught(fz_context *ctx) {
    throw Error(fz_caught_message(ctx));
}

Context::Context() {
    fz_alloc_context allocator{&bytesInUse_, allocate, reallocate, release};
    ctx_ = fz_new_context(&allocator, &locks, storeBytes);  // keeps a copy of the allocator
    if (!ctx_) throw std::bad_alloc();
    fz_set_warning_callback(ctx_, logMessage, nullptr);
    fz_set_error_callback(ctx_, logMessage, nullptr);
}

Context::~Context() {
    fz_drop_context(ctx_);
}

}  // namespace leafwright::mupdf
