#include "outlineview/LegibleColor.h"

#include "widgets/MixedColor.h"

#include <algorithm>
#include <cmath>

namespace leafwright {

namespace {

double linear(float component) {
    return component <= 0.04045F ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

/// The relative luminance of WCAG 2.1, from 0 to 1.
double luminance(const QColor &color) {
    const QColor rgb = color.toRgb();
    return 0.2126 * linear(rgb.redF()) + 0.7152 * linear(rgb.greenF()) + 0.0722 * linear(rgb.blueF());
}

}  // namespace

double contrast(const QColor &a, const QColor &b) {
    constexpr double flare = 0.05;
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + flare) / (darker + flare);
}

QColor legibleColor(const QColor &color, const QColor &background) {
    constexpr double least = 3;
    constexpr int steps = 20;
    const QColor away =
        contrast(Qt::white, background) > contrast(Qt::black, background) ? Qt::white : Qt::black;
    for (int step = 0; step < steps; ++step) {
        const QColor candidate = mixed(color, away, static_cast<double>(step) / steps);
        if (contrast(candidate, background) >= least) return candidate;
    }
    return away;
}

}  // namespace leafwright
