#pragma once

#include <functional>

namespace leafwright {

/// While it lives, something is done when exit() is called in the midst of the program, as Qt does where the
/// connection to the X server breaks: nothing on the stack is destroyed then, but threads still run. One may
/// live at a time, on the main thread.
class AtExit {
public:
    /// @param last called where exit() is called on the thread of this; must not use windows, nor throw
    explicit AtExit(std::function<void()> last);
    ~AtExit();
    AtExit(const AtExit &) = delete;
    AtExit &operator=(const AtExit &) = delete;

private:
    static void call();

    std::function<void()> last_;
};

}  // namespace leafwright
