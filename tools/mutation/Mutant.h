#pragma once

#include <array>
#include <atomic>
#include <cstdlib>

// The run-time switch of tools/mutants; it stands in copies of the sources only.

namespace leafwright {

constexpr int mostMutants = 4096;

/// Which mutants' places have been reached since somebody last looked.
inline std::array<std::atomic<bool>, mostMutants> reachedMutants{};

/// Whether the program is to behave as this mutant: LEAFWRIGHT_MUTANT has its number. Notes that it was
/// asked.
inline bool mutant(int number) {
    static const char *const variable = std::getenv("LEAFWRIGHT_MUTANT");
    static const int chosen = variable ? std::atoi(variable) : -1;
    reachedMutants[static_cast<size_t>(number)].store(true, std::memory_order_relaxed);
    return number == chosen;
}

}  // namespace leafwright
