#include "cli/Interruption.h"

#include <atomic>
#include <csignal>
#include <mutex>

namespace leafwright::cli {

namespace {

std::atomic<bool> interrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free);  // for use in a signal handler

std::mutex mutex;
int living = 0;
struct sigaction savedInterrupt;
struct sigaction savedTerminate;

void note(int /*signal*/) {
    interrupted = true;
}

}  // namespace

Interruption::Interruption() {
    const std::lock_guard lock(mutex);
    if (living++ > 0) return;
    struct sigaction noting {};
    noting.sa_handler = note;
    sigaction(SIGINT, &noting, &savedInterrupt);
    sigaction(SIGTERM, &noting, &savedTerminate);
}

Interruption::~Interruption() {
    const std::lock_guard lock(mutex);
    if (--living > 0) return;
    sigaction(SIGINT, &savedInterrupt, nullptr);
    sigaction(SIGTERM, &savedTerminate, nullptr);
}

bool Interruption::requested() {
    return interrupted;
}

}  // namespace leafwright::cli
