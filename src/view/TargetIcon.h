#pragma once

#include <QImage>

namespace leafwright {

/// The icon that marks a spot on a page, 20 by 20 points, at several pixels a point; read from the
/// application's resources at the first call. Null, and a word in the log, if it can't be drawn.
const QImage &targetIcon();

}  // namespace leafwright
