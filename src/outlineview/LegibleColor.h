#pragma once

#include <QColor>

namespace leafwright {

/// How well a colour is told from another: from 1, not at all, to 21, black on white. The contrast ratio of
/// WCAG 2.1 (w3.org/TR/WCAG21, "contrast ratio").
double contrast(const QColor &a, const QColor &b);

/// A colour, or one between it and black or white that can be read on a background: what a file has in dark
/// blue must be seen in a dark theme, too. The contrast is 3 at least, WCAG's least for large texts.
QColor legibleColor(const QColor &color, const QColor &background);

}  // namespace leafwright
