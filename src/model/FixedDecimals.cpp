#include "model/FixedDecimals.h"

#include <charconv>
#include <limits>

namespace leafwright {

QString fixedDecimals(double value, int decimals) {
    char text[std::numeric_limits<double>::max_exponent10 + 32];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
    return QString::fromLatin1(text, end.ptr - text);
}

}  // namespace leafwright
