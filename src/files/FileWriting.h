#pragma once

#include <QtGlobal>

namespace leafwright {

/// Writes all of it, however often the system takes a part only. @return 0, or the errno of what failed
int writeWhole(int descriptor, const char *data, qint64 size);

}  // namespace leafwright
