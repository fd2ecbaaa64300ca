#include "pdf/mupdf/Context.h"

#include "files/SystemError.h"
#include "texts/Translated.h"

#include <QLoggingCategory>

#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <mutex>
#include <new>

namespace leafwright::mupdf {

namespace {

Q_LOGGING_CATEGORY(log, "leafwright.mupdf", QtWarningMsg)

constexpr Translated translated{"MuPDFContext"};

/// Enough for the fonts of a page or two; resources beyond it are dropped and read again when needed.
constexpr size_t storeBytes = 32U << 20;

/// MuPDF guards its few static variables (of the JPEG 2000 and shaping libraries) by the FreeType lock.
/// Since those are shared by all contexts, so is this lock; the others guard a single context. A thread may
/// take it twice: FreeType asks for memory with the lock held, and to find some, MuPDF may drop a font of its
/// store, which takes the lock again.
std::recursive_mutex staticStateMutex;

void lock(void * /*user*/, int which) {
    if (which == FZ_LOCK_FREETYPE) staticStateMutex.lock();
}

void unlock(void * /*user*/, int which) {
    if (which == FZ_LOCK_FREETYPE) staticStateMutex.unlock();
}

constexpr fz_locks_context locks{nullptr, lock, unlock};

/// Room for the objects of a file of a million objects, which MuPDF keeps once it has read them.
constexpr size_t mostBytes = 1U << 30;

/// What a context takes from the budget at a time. Many small steps would have threads wait for each other.
constexpr size_t reservation = size_t{4} << 20;

/// MuPDF grows the cross-reference table by one entry for each new object. Where every realloc() copies, that
/// is quadratic; so a large block that grows gets some room.
constexpr size_t largeBlock = 1U << 18;

/// Nothing may be thrown through MuPDF, and logging takes memory.
void logMessage(void * /*user*/, const char *message) noexcept {
    try {
        qCDebug(log, "%s", message);
    } catch (const std::bad_alloc &) {
        return;
    }
}

}  // namespace

void throwCaught(fz_context *ctx) {
    // Whether memory ran out or too much was asked for at once, which is damage, only the heap knows.
    const bool isProblem = fz_caught(ctx) == FZ_ERROR_TRYLATER || fz_caught(ctx) == FZ_ERROR_MEMORY;
    if (isProblem) Context::of(ctx).throwProblem();
    throw Error(fz_caught_message(ctx));
}

bool Context::Heap::reserve(size_t more) {
    if (more > mostBytes - std::min(inUse_, mostBytes)) return false;
    if (inUse_ + more <= reserved_) return true;
    const size_t missing = inUse_ + more - reserved_;
    const size_t wanted = (missing + reservation - 1) / reservation * reservation;
    if (!budget_->take(wanted)) return false;
    reserved_ += wanted;
    return true;
}

/// MuPDF then drops something of its store and asks again, until nothing is left to drop. So only what it
/// asks for next shows whether there was enough in the end.
void *Context::Heap::refuse(size_t size, Shortage shortage) {
    if (refused_ != 0 && refused_ != size) exhausted_ = true;
    refused_ = size;
    shortage_ = shortage;
    return nullptr;
}

PDFError Context::Heap::error() const {
    return shortage_ == Shortage::OfBudget ? tooMuchMemoryError() : outOfMemoryError();
}

void Context::Heap::grant(size_t size) {
    if (refused_ == 0) return;
    if (refused_ != size) exhausted_ = true;
    refused_ = 0;
}

void *Context::Heap::allocate(void *heap, size_t size) {
    auto &self = *static_cast<Heap *>(heap);
    // No more than a broken number in the file.
    if (size > mostBytes) return nullptr;
    if (!self.reserve(size)) return self.refuse(size, Shortage::OfBudget);
    void *block = std::malloc(size);
    if (!block) return self.refuse(size, Shortage::OfSystem);
    self.grant(size);
    self.inUse_ += malloc_usable_size(block);
    return block;
}

void Context::Heap::release(void *heap, void *block) {
    if (!block) return;
    auto &self = *static_cast<Heap *>(heap);
    self.inUse_ -= malloc_usable_size(block);
    std::free(block);
    if (self.reserved_ < self.inUse_ + 2 * reservation) return;
    const size_t tooMuch = self.reserved_ - self.inUse_ - reservation;
    self.budget_->giveBack(tooMuch);
    self.reserved_ -= tooMuch;
}

void *Context::Heap::reallocate(void *heap, void *block, size_t size) {
    auto &self = *static_cast<Heap *>(heap);
    const size_t before = block ? malloc_usable_size(block) : 0;
    const size_t asked = size;
    if (before >= largeBlock && size > before / 2) {
        if (size <= before) return block;
        size = std::max(size, before + before / 8);
    }
    if (size > before && !self.reserve(size - before)) return self.refuse(asked, Shortage::OfBudget);
    // MuPDF frees a block rather than ask for one of 0 bytes.
    void *moved = std::realloc(block, size);  // NOLINT(clang-analyzer-optin.portability.UnixAPI)
    if (!moved) return self.refuse(asked, Shortage::OfSystem);
    self.grant(asked);
    self.inUse_ += malloc_usable_size(moved) - before;
    return moved;
}

Context::Context(std::shared_ptr<MemoryBudget> budget) : heap_(std::move(budget)) {
    fz_alloc_context allocator{&heap_, Heap::allocate, Heap::reallocate, Heap::release};
    ctx_ = fz_new_context(&allocator, &locks, storeBytes);  // keeps a copy of the allocator
    if (!ctx_) throw ReadProblem(heap_.error());
    fz_set_user_context(ctx_, this);
    fz_set_warning_callback(ctx_, logMessage, nullptr);
    fz_set_error_callback(ctx_, logMessage, nullptr);
}

std::optional<PDFError> Context::problem() const {
    if (readFailure_ != 0) return readFailureError(readFailure_);
    if (outOfMemory_) return outOfMemoryError();
    if (heap_.isExhausted()) return heap_.error();
    if (slowPage_ != 0) return slowPageError(slowPage_);
    return std::nullopt;
}

void Context::throwProblem() const {
    if (const auto found = problem()) throw ReadProblem(*found);
}

Context::~Context() {
    fz_drop_context(ctx_);
}

PDFError readFailureError(int reason) {
    return {PDFError::Kind::FileUnreadable,
            reason == cutShort ? translated("it was cut short by another program") : reasonOfSystem(reason)};
}

PDFError outOfMemoryError() {
    return {PDFError::Kind::OutOfMemory, translated("there is not enough memory for it")};
}

PDFError tooMuchMemoryError() {
    return {PDFError::Kind::OutOfMemory, translated("it takes more memory than a file may have")};
}

PDFError slowPageError(int number) {
    return {PDFError::Kind::TakesTooLong,
            translated("the text of its page %1 takes longer to read than a page may take").arg(number)};
}

}  // namespace leafwright::mupdf
