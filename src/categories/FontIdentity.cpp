#include "categories/FontIdentity.h"

#include "model/FixedDecimals.h"

#include <cmath>

namespace leafwright {

bool isBold(const Font &font) {
    return (font.symbolicTraits() & BoldTrait) != 0;
}

bool isItalic(const Font &font) {
    return (font.symbolicTraits() & ItalicTrait) != 0;
}

double adjustedPointSize(const Font &font) {
    const auto rounded = static_cast<float>(static_cast<qint32>(std::floor(font.pointSize() + 0.5)));
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
