#include "autotoc/DocumentFonts.h"

#include "categories/FontIdentity.h"
#include "model/FixedDecimals.h"

namespace leafwright {

DocumentFonts::DocumentFonts(const FontCensus &census) {
    for (const FontCensus::Entry &entry : census.entries())
        candidates_.push_back({entry.font});
    const FontCensus::Entry *body = census.bodyFont();
    const double bodySize = body ? body->font.pointSize() : 0;
    const auto isHeading = [bodySize](const Font &font) { return font.pointSize() > bodySize; };
    std::stable_sort(candidates_.begin(), candidates_.end(), [&](const Candidate &a, const Candidate &b) {
        if (isHeading(a.font) != isHeading(b.font)) return isHeading(a.font);
        return adjustedPointSize(a.font) > adjustedPointSize(b.font);
    });
}

template <typename Fits>
DocumentFonts::Candidate *DocumentFonts::search(Fits &&fits) {
    Candidate *last = nullptr;
    for (Candidate &candidate : candidates_) {
        if (!fits(candidate.font)) continue;
        last = &candidate;
        if (!candidate.taken) break;
    }
    return last;
}

std::optional<Font> DocumentFonts::find(const FontDescription &description) {
    const QString size = fixedDecimals(description.size, 1);
    const auto named = [&](QString (Font::*name)() const) {
        return [&description, &size, name](const Font &font) {
            return (font.*name)() == description.family && font.symbolicTraits() == description.traits &&
                   fixedDecimals(font.pointSize(), 1) == size;
        };
    };
    Candidate *found = search(named(&Font::familyName));
    if (!found) found = search(named(&Font::displayName));
    return take(found);
}

std::optional<Font> DocumentFonts::findPrinted(const FontDescription &description) {
    Candidate *found = search([&description](const Font &font) {
        return font.displayName() == description.family && font.symbolicTraits() == description.traits &&
               font.pointSize() == description.size;
    });
    return found ? take(found) : find(description);
}

std::optional<Font> DocumentFonts::take(Candidate *candidate) {
    if (!candidate) return std::nullopt;
    candidate->taken = true;
    return candidate->font;
}

namespace {

Font madeUp(const FontDescription &description) {
    QString displayName = description.family;
    if (description.traits & BoldTrait) displayName += QLatin1String(" Bold");
    if (description.traits & ItalicTrait) displayName += QLatin1String(" Italic");
    return {FontFace{displayName, description.family, description.traits}, description.size};
}

}  // namespace

Font fontMatching(const FontDescription &description, DocumentFonts &fonts) {
    return fonts.find(description).value_or(madeUp(description));
}

Font fontMatchingPrinted(const FontDescription &description, DocumentFonts &fonts) {
    return fonts.findPrinted(description).value_or(madeUp(description));
}

}  // namespace leafwright
