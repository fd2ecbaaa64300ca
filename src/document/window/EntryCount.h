#pragma once

#include <QString>

namespace leafwright {

/// How many entries that is, for people: "1 entry", "1,158 entries".
QString entryCountText(qint64 count);

}  // namespace leafwright
