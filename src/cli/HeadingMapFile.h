#pragma once

#include "autotoc/HeadingMapText.h"
#include "cli/Console.h"

namespace leafwright::cli {

/// Reads a heading level map from a file: the saved form, or the JSON that the `fonts` command prints.
/// What can't be read is said; an empty map means that nothing of use was there, which is said too.
HeadingLevelMap readHeadingMap(const QString &path, const FontCensus &census, Console &console);

}  // namespace leafwright::cli
