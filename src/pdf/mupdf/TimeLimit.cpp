#include "pdf/mupdf/TimeLimit.h"

#include <atomic>
#include <condition_variable>
#include <ctime>
#include <mutex>
#include <pthread.h>
#include <thread>
#include <unordered_map>

namespace leafwright::mupdf {

namespace {

using Time = std::chrono::nanoseconds;

Time timeOf(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + Time(time.tv_nsec);
}

/// How much of the processors' time a thread has used, on a clock of its own.
clockid_t clockOfThisThread() {
    clockid_t clock = CLOCK_MONOTONIC;
    pthread_getcpuclockid(pthread_self(), &clock);
    return clock;
}

/// The runs under way with their deadlines, and the thread that looks after them.
class Watch {
public:
    static Watch &instance() {
        static Watch watch;
        return watch;
    }

    void add(fz_cookie &cookie, Time limit) {
        const clockid_t clock = clockOfThisThread();
        const std::lock_guard lock(mutex_);
        deadlines_[&cookie] = {clock, timeOf(clock) + limit, false};
    }

    bool isOver(fz_cookie &cookie) {
        const std::lock_guard lock(mutex_);
        return deadlines_[&cookie].isOver;
    }

    void remove(fz_cookie &cookie) {
        const std::lock_guard lock(mutex_);
        deadlines_.erase(&cookie);
    }

private:
    struct Deadline {
        clockid_t clock = CLOCK_MONOTONIC;  ///< Of the thread that runs, which lives as long as this.
        Time time{};
        bool isOver = false;
    };

    Watch() : thread_([this](const std::stop_token &stop) { run(stop); }) {}

    void run(const std::stop_token &stop) {
        // Looking now and then costs less than being woken for every page.
        constexpr std::chrono::milliseconds interval(250);
        std::unique_lock lock(mutex_);
        while (!stop.stop_requested()) {
            stopping_.wait_for(lock, stop, interval, [] { return false; });
            for (auto &[cookie, deadline] : deadlines_) {
                if (deadline.isOver || timeOf(deadline.clock) < deadline.time) continue;
                deadline.isOver = true;
                std::atomic_ref(cookie->abort).store(1);
            }
        }
    }

    std::mutex mutex_;
    std::condition_variable_any stopping_;
    std::unordered_map<fz_cookie *, Deadline> deadlines_;
    std::jthread thread_;
};

}  // namespace

TimeLimit::TimeLimit(fz_cookie &cookie, std::chrono::nanoseconds limit) : cookie_(cookie) {
    Watch::instance().add(cookie, limit);
}

bool TimeLimit::isOver() const {
    return Watch::instance().isOver(cookie_);
}

TimeLimit::~TimeLimit() {
    Watch::instance().remove(cookie_);
}

}  // namespace leafwright::mupdf
