#include "categories/FontIdentity.h"

#include "model/FixedDecimals.h"

#include <algorithm>
#include <cmath>

namespace leafwright {

bool isBold(const Font &font) {
    return (font.symbolicTraits() & BoldTrait) != 0;
}

bool isItalic(const Font &font) {
    return (font.symbolicTraits() & ItalicTrait) != 0;
}

namespace {

/// Rounds half up. Sizes come from files, which may claim any: what does not fit stops at the bounds.
qint32 roundedPointSize(const Font &font) {
    const double rounded = std::floor(font.pointSize() + 0.5);
    if (std::isnan(rounded)) return 0;
    return static_cast<qint32>(std::clamp(rounded, double{INT32_MIN}, double{INT32_MAX}));
}

}  // namespace

double adjustedPointSize(const Font &font) {
    const auto rounded = static_cast<float>(roundedPointSize(font));
    const float withBoldMark = rounded + (isBold(font) ? 0.5F : 0.0F);
    return withBoldMark + (isItalic(font) ? 0.4F : 0.0F);
}

QString fontIDString(const Font &font) {
    return fixedDecimals(adjustedPointSize(font), 1) + u' ' + font.displayName();
}

QString fontString(const Font &font) {
    return fontIDString(font);
}

QString customFontIDString(const Font &font) {
    return fixedDecimals(font.pointSize(), 1) + QLatin1String(" pt ") + font.displayName();
}

bool isEffectivelyEqual(const Font &a, const Font &b) {
    return fontIDString(a) == fontIDString(b);
}

}  // namespace leafwright
