#include "app/Requests.h"

#include "app/AppDelegate.h"

namespace leafwright {

void Requests::open(const QStringList &paths) {
    ++running_;
    paths.isEmpty() ? show() : delegate_.openFiles(paths);
    --running_;
    checkForWindow();
}

void Requests::checkForWindow() {
    if (running_ == 0 && !hasDocument()) Q_EMIT leftWithoutWindow();
}

bool Requests::hasDocument() const {
    return !delegate_.documentController().documents().empty();
}

void Requests::show() {
    // Another request may be asking already.
    if (!hasDocument() && running_ == 1) delegate_.documentController().openDocument();
    delegate_.comeToFront();
}

}  // namespace leafwright
