#include "document/HeadingMapGuess.h"

#include "autotoc/FontCensus.h"
#include "pdf/ReadAhead.h"

#include <QLoggingCategory>

#include <new>

namespace leafwright {

namespace {

Q_LOGGING_CATEGORY(log, "leafwright.headingmap", QtWarningMsg)

}  // namespace

void HeadingMapGuess::start() {
    if (started_) return;
    started_ = true;
    thread_ = std::jthread([this](const std::stop_token &stop) { run(stop); });
}

std::optional<HeadingMapGuess::Guess> HeadingMapGuess::take() {
    start();
    if (thread_.joinable()) thread_.join();
    return std::exchange(guess_, std::nullopt);
}

void HeadingMapGuess::run(const std::stop_token &stop) {
    try {
        readAllPages(pages_, stop);
        if (stop.stop_requested()) return;
        const FontCensus census = calcFontsInDocument(pages_);
        guess_ = Guess{headingsfromFonts(census), fontUses(census)};
    } catch (const std::bad_alloc &) {
        qCWarning(log, "there is not enough memory to guess the heading map");
    }
    // Receivers live on the main thread, so this comes to them by its queue of events.
    Q_EMIT finished();
}

}  // namespace leafwright
