#include "pdf/mupdf/FontReading.h"

namespace leafwright::mupdf {

QByteArray baseFontOf(const SeenFont &seen) {
    const Object &font = seen.dictionary;
    // A composite font's own name carries the encoding's behind it; its descendant's does not.
    const Object descendant = font.get(PDF_NAME(DescendantFonts)).at(0);
    for (const Object &candidate :
         {descendant.get(PDF_NAME(BaseFont)), font.get(PDF_NAME(BaseFont)),
          font.get(PDF_NAME(FontDescriptor)).get(PDF_NAME(FontName)), font.get(PDF_NAME(Name))}) {
        if (QByteArray name = candidate.toName(); !name.isEmpty()) return name;
    }
    return seen.resourceName;
}

FontTraits traitsOf(fz_context *ctx, const SeenFont &seen) {
    const Object &font = seen.dictionary;
    const Object descendant = font.get(PDF_NAME(DescendantFonts)).at(0);
    const Object descriptor = (descendant.isDict() ? descendant : font).get(PDF_NAME(FontDescriptor));
    constexpr int boldWeight = 700;
    auto *const face = const_cast<fz_font *>(seen.font);  // MuPDF's getters do not take const
    const bool bold = (seen.descriptorFlags & PDF_FD_FORCE_BOLD) != 0 || fz_font_is_bold(ctx, face) != 0 ||
                      descriptor.get("FontWeight").toInt() >= boldWeight;
    const bool italic = (seen.descriptorFlags & PDF_FD_ITALIC) != 0 || seen.italicAngle != 0 ||
                        fz_font_is_italic(ctx, face) != 0;
    return (bold ? BoldTrait : 0U) | (italic ? ItalicTrait : 0U);
}

}  // namespace leafwright::mupdf
