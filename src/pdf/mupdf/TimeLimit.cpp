#include "pdf/mupdf/TimeLimit.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <unordered_map>

namespace leafwright::mupdf {

namespace {

using Clock = std::chrono::steady_clock;

/// The runs under way with their deadlines, and the thread that looks after them.
class Watch {
public:
    static Watch &instance() {
        static Watch watch;
        return watch;
    }

    void add(fz_cookie &cookie, Clock::time_point deadline) {
        const std::lock_guard lock(mutex_);
        deadlines_[&cookie] = deadline;
    }

    void remove(fz_cookie &cookie) {
        const std::lock_guard lock(mutex_);
        deadlines_.erase(&cookie);
    }

private:
    Watch() : thread_([this](const std::stop_token &stop) { run(stop); }) {}

    void run(const std::stop_token &stop) {
        // Looking now and then costs less than being woken for every page.
        constexpr std::chrono::milliseconds interval(250);
        std::unique_lock lock(mutex_);
        while (!stop.stop_requested()) {
            stopping_.wait_for(lock, stop, interval, [] { return false; });
            for (const auto &[cookie, deadline] : deadlines_) {
                if (Clock::now() >= deadline) std::atomic_ref(cookie->abort).store(1);
            }
        }
    }

    std::mutex mutex_;
    std::condition_variable_any stopping_;
    std::unordered_map<fz_cookie *, Clock::time_point> deadlines_;
    std::jthread thread_;
};

}  // namespace

TimeLimit::TimeLimit(fz_cookie &cookie, Clock::duration limit) : cookie_(cookie) {
    Watch::instance().add(cookie, Clock::now() + limit);
}

TimeLimit::~TimeLimit() {
    Watch::instance().remove(cookie_);
}

}  // namespace leafwright::mupdf
