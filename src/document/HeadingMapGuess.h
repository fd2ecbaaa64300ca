#pragma once

#include "autotoc/FontUses.h"

#include <QObject>

#include <optional>
#include <thread>

namespace leafwright {

/// Guesses a document's heading map from its fonts, on a thread of its own: every page has to be read.
/// Used on the main thread.
class HeadingMapGuess : public QObject {
    Q_OBJECT

public:
    /// @param pages must outlive the guess
    explicit HeadingMapGuess(const TextPages &pages) : pages_(pages) {}
    /// Stops the reading and waits until it has stopped.
    ~HeadingMapGuess() override = default;

    /// Begins, unless it has begun before.
    void start();
    /// The map, and how the document uses its fonts.
    struct Guess {
        HeadingLevelMap map;
        FontUses uses;
    };
    /// Begins if need be, and waits for the end. The guess is handed out once; absent after that, and where
    /// there was not enough memory for the pages.
    std::optional<Guess> take();

Q_SIGNALS:
    /// The map is there to be taken.
    void finished();

private:
    void run(const std::stop_token &stop);

    const TextPages &pages_;
    bool started_ = false;
    std::optional<Guess> guess_;  ///< The thread's until it has ended.
    std::jthread thread_;
};

}  // namespace leafwright
