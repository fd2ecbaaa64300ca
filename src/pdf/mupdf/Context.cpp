#include "pdf/mupdf/Context.h"

#include <QLoggingCategory>

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

void logMessage(void * /*user*/, const char *message) {
    qCDebug(log, "%s", message);
}

}  // namespace

void throwCaught(fz_context *ctx) {
    throw Error(fz_caught_message(ctx));
}

Context::Context() : ctx_(fz_new_context(nullptr, &locks, storeBytes)) {
    if (!ctx_) throw std::bad_alloc();
    fz_set_warning_callback(ctx_, logMessage, nullptr);
    fz_set_error_callback(ctx_, logMessage, nullptr);
}

Context::~Context() {
    fz_drop_context(ctx_);
}

}  // namespace leafwright::mupdf
