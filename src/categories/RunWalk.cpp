#include "categories/RunWalk.h"

namespace leafwright {

QPointF topLeftPointOfRun(const PageText &text, size_t run) {
    const Rect &bounds = text.runBounds.at(run);
    return bounds.isEmpty() ? QPointF() : bounds.topLeft();
}

}  // namespace leafwright
