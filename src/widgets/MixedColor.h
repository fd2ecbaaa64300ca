#pragma once

#include <QColor>

namespace leafwright {

/// A colour between two, opaque. @param share of the second, from 0 to 1
QColor mixed(const QColor &first, const QColor &second, double share);

}  // namespace leafwright
