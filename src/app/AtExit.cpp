#include "app/AtExit.h"

#include <atomic>
#include <cstdlib>
#include <thread>
#include <utility>

namespace leafwright {

namespace {

// Of types that nothing destroys, which might come before.
std::atomic<AtExit *> living = nullptr;
std::thread::id threadOfLiving;

}  // namespace

AtExit::AtExit(std::function<void()> last) : last_(std::move(last)) {
    threadOfLiving = std::this_thread::get_id();
    living = this;
    [[maybe_unused]] static const int registered = std::atexit(call);
}

AtExit::~AtExit() {
    living = nullptr;
}

void AtExit::call() {
    AtExit *const found = living.exchange(nullptr);
    if (found && threadOfLiving == std::this_thread::get_id()) found->last_();
}

}  // namespace leafwright
