#pragma once

#include "pdf/Font.h"

namespace leafwright {

bool isBold(const Font &font);
bool isItalic(const Font &font);

/// The size in points rounded half up, plus 0.5 if bold and 0.4 if italic, so that the first decimal of
/// its printed form tells the style: 0 regular, 5 bold, 4 italic, 9 both. Reckoned in single precision.
double adjustedPointSize(const Font &font);

/// What heading fonts are compared by: the adjusted size with one decimal, a blank, the display name.
QString fontIDString(const Font &font);
/// The same text as fontIDString(), by the name that the finders by example use.
QString fontString(const Font &font);
/// For display: "12.3 pt Times Bold", with the raw size.
QString customFontIDString(const Font &font);
/// Whether both are the same heading font: equal font ID strings.
bool isEffectivelyEqual(const Font &a, const Font &b);

}  // namespace leafwright
