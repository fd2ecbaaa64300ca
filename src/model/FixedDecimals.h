#pragma once

#include <QString>

namespace leafwright {

/// A number with a fixed count of decimals, as C's "%.*f" prints it: ties go to the even digit, and the
/// decimal point is a full stop in every locale. (QString::number rounds ties up: 12.25 becomes "12.3".)
QString fixedDecimals(double value, int decimals);

}  // namespace leafwright
