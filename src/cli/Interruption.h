#pragma once

namespace leafwright::cli {

/// Takes note of Ctrl+C and of a request to end (SIGINT, SIGTERM) while it lives, instead of ending at once.
/// Several may live at a time, on any threads.
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption &) = delete;
    Interruption &operator=(const Interruption &) = delete;

    /// Whether there was such a request. Once there was, it holds for the rest of the run.
    static bool requested();
};

}  // namespace leafwright::cli
