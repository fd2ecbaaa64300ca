#pragma once

#include <QIcon>

namespace leafwright {

/// The program's own icon for a command, drawn in the palette's text colour, so that it suits light and dark
/// themes and any resolution. Null for a command that has none.
/// @param selector such as "moveLeft:"
QIcon actionIcon(const QString &selector);

}  // namespace leafwright
