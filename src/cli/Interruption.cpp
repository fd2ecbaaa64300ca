#include "cli/Interruption.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <mutex>
#include <sys/eventfd.h>
#include <unistd.h>

namespace leafwright::cli {

namespace {

constexpr std::array signals{SIGINT, SIGTERM, SIGHUP};

std::atomic<int> requestedBy = 0;  // the signal
std::atomic<int> event = -1;
static_assert(std::atomic<int>::is_always_lock_free);  // for use in a signal handler

std::mutex mutex;
int living = 0;
std::array<struct sigaction, signals.size()> saved;

void note(int signal) {
    const int error = errno;
    requestedBy = signal;
    constexpr uint64_t one = 1;
    // It fails only where so many have been noted that there is something to read.
    [[maybe_unused]] const ssize_t written = ::write(event, &one, sizeof one);
    errno = error;
}

}  // namespace

Interruption::Interruption() {
    const std::lock_guard lock(mutex);
    if (living++ > 0) return;
    if (event < 0) event = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    struct sigaction noting {};
    noting.sa_handler = note;
    for (size_t i = 0; i < signals.size(); ++i) {
        sigaction(signals.at(i), nullptr, &saved.at(i));
        if (saved.at(i).sa_handler != SIG_IGN) sigaction(signals.at(i), &noting, nullptr);
    }
}

Interruption::~Interruption() {
    const std::lock_guard lock(mutex);
    if (--living > 0) return;
    for (size_t i = 0; i < signals.size(); ++i)
        sigaction(signals.at(i), &saved.at(i), nullptr);
}

bool Interruption::requested() {
    return requestedBy != 0;
}

int Interruption::descriptor() {
    return event;
}

void Interruption::takeEffect() {
    if (requestedBy == 0) return;
    std::signal(requestedBy, SIG_DFL);
    std::raise(requestedBy);
}

}  // namespace leafwright::cli
