#pragma once

#include <QString>

namespace leafwright {

// How many there are, for people, with the number as their language writes it.

/// "1 entry", "1,158 entries".
QString entryCountText(qint64 count);
/// "1 page", "2,415 pages".
QString pageCountText(qint64 count);
/// "1 file", "200 files".
QString fileCountText(qint64 count);

}  // namespace leafwright
