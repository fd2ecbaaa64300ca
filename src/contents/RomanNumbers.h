#pragma once

#include <QStringView>

namespace leafwright {

/// Whether a text is made of the letters of roman numbers alone, in either case; not for an empty one.
bool isRomanNumber(QStringView text);

/// The value of a roman number; what stands before a greater letter is taken off. Other letters count 0.
int romanValue(QStringView text);

}  // namespace leafwright
