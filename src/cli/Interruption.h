#pragma once

namespace leafwright::cli {

/// Takes note of Ctrl+C and of requests to end (SIGINT, SIGTERM, SIGHUP) while it lives, instead of ending at
/// once. Those that this program was started to ignore it ignores. Several may live at a time, on any
/// threads.
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption &) = delete;
    Interruption &operator=(const Interruption &) = delete;

    /// Whether there was such a request. Once there was, it holds for the rest of the run.
    static bool requested();
    /// For poll(): can be read from once there was such a request. -1 while none has lived.
    static int descriptor();
    /// Ends this process as the request would have, now that all is tidied up; does nothing without one.
    static void takeEffect();
};

}  // namespace leafwright::cli
