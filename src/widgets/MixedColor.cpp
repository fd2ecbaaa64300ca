#include "widgets/MixedColor.h"

namespace leafwright {

QColor mixed(const QColor &first, const QColor &second, double share) {
    const auto mix = [part = static_cast<float>(share)](float from, float to) {
        return from + (to - from) * part;
    };
    return QColor::fromRgbF(mix(first.redF(), second.redF()), mix(first.greenF(), second.greenF()),
                            mix(first.blueF(), second.blueF()));
}

}  // namespace leafwright
