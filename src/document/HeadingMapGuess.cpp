#include "document/HeadingMapGuess.h"

#include "autotoc/FontCensus.h"
#include "pdf/ReadAhead.h"

namespace leafwright {

void HeadingMapGuess::start() {
    if (started_) return;
    started_ = true;
    thread_ = std::jthread([this](const std::stop_token &stop) { run(stop); });
}

std::optional<HeadingLevelMap> HeadingMapGuess::take() {
    start();
    if (thread_.joinable()) thread_.join();
    taken_ = true;
    return std::exchange(map_, std::nullopt);
}

void HeadingMapGuess::run(const std::stop_token &stop) {
    readAllPages(pages_, stop);
    if (stop.stop_requested()) return;
    map_ = headingsfromFonts(calcFontsInDocument(pages_));
    // Receivers live on the main thread, so this comes to them by its queue of events.
    Q_EMIT finished();
}

}  // namespace leafwright
