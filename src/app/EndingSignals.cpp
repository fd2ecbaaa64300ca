#include "app/EndingSignals.h"

#include <QSocketNotifier>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace leafwright {

namespace {

constexpr std::array signals{SIGTERM, SIGHUP, SIGINT};

std::atomic<int> noted = 0;  // the signal
std::atomic<int> wakening = -1;
static_assert(std::atomic<int>::is_always_lock_free);  // for use in a signal handler

std::array<struct sigaction, signals.size()> saved;

void note(int signal) {
    const int error = errno;
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

EndingSignals::EndingSignals(std::function<void()> before)
    : before_(std::move(before)),
      notifier_(new QSocketNotifier(makeWakening(), QSocketNotifier::Read, this)) {
    connect(notifier_, &QSocketNotifier::activated, this, &EndingSignals::end);
    struct sigaction noting {};
    noting.sa_handler = note;
    noting.sa_flags = SA_RESETHAND;
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
