#include "app/EndingSignals.h"

#include <QSocketNotifier>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <sys/eventfd.h>
#include <unistd.h>

namespace leafwright {

namespace {

constexpr std::array signals{SIGTERM, SIGHUP, SIGINT};

std::atomic<int> noted = 0;  // the signal
std::atomic<int> wakening = -1;
std::atomic<int64_t> firstAt = 0;  // nanoseconds since the system was started; 0 before a signal
std::atomic<int64_t> nanosecondsOfPatience = 0;
static_assert(std::atomic<int>::is_always_lock_free &&
              std::atomic<int64_t>::is_always_lock_free);  // for use in a signal handler

std::array<struct sigaction, signals.size()> saved;

/// One of the few looks at a clock that a signal handler may take.
int64_t nanosecondsNow() {
    struct timespec now = {};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    constexpr int64_t inASecond = 1'000'000'000;
    return now.tv_sec * inASecond + now.tv_nsec;
}

void note(int signal) {
    const int error = errno;
    const int64_t now = nanosecondsNow();
    int64_t first = 0;
    const bool isFirst = firstAt.compare_exchange_strong(first, now);
    if (!isFirst && now - first >= nanosecondsOfPatience) {
        // Takes effect when this returns: until then the signal is held back.
        std::signal(signal, SIG_DFL);
        std::raise(signal);
        return;
    }
    noted = signal;
    constexpr uint64_t one = 1;
    // It fails only where so many have been noted that there is something to read.
    [[maybe_unused]] const ssize_t written = ::write(wakening, &one, sizeof one);
    errno = error;
}

/// @return what note() writes to
int makeWakening() {
    return wakening = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
}

}  // namespace

EndingSignals::EndingSignals(std::function<void()> before, std::chrono::nanoseconds patience)
    : before_(std::move(before)),
      notifier_(new QSocketNotifier(makeWakening(), QSocketNotifier::Read, this)) {
    connect(notifier_, &QSocketNotifier::activated, this, &EndingSignals::end);
    firstAt = 0;
    nanosecondsOfPatience = patience.count();
    struct sigaction noting {};
    noting.sa_handler = note;
    for (size_t i = 0; i < signals.size(); ++i) {
        sigaction(signals.at(i), nullptr, &saved.at(i));
        if (saved.at(i).sa_handler != SIG_IGN) sigaction(signals.at(i), &noting, nullptr);
    }
}

EndingSignals::~EndingSignals() {
    for (size_t i = 0; i < signals.size(); ++i)
        sigaction(signals.at(i), &saved.at(i), nullptr);
    delete notifier_;
    ::close(wakening.exchange(-1));
}

void EndingSignals::end() {
    notifier_->setEnabled(false);
    before_();
    std::signal(noted, SIG_DFL);
    std::raise(noted);
}

}  // namespace leafwright
