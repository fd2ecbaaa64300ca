#include "autotoc/DocumentFonts.h"

#include "model/FixedDecimals.h"

namespace leafwright {

DocumentFonts::DocumentFonts(const FontCensus &census) {
    for (const FontCensus::Entry &entry : census.entries())
        candidates_.push_back({entry.font});
    const FontCensus::Entry *body = census.bodyFont();
    const double bodySize = body ? body->font.pointSize() : 0;
    std::stable_partition(candidates_.begin(), candidates_.end(), [bodySize](const Candidate &candidate) {
        return candidate.font.pointSize() > bodySize;
    });
}

std::optional<Font> DocumentFonts::find(const FontDescription &description) {
    const QString size = fixedDecimals(description.size, 1);
    const auto search = [&](QString (Font::*name)() const) -> Candidate * {
        Candidate *last = nullptr;
        for (Candidate &candidate : candidates_) {
            const Font &font = candidate.font;
            const bool fits = (font.*name)() == description.family &&
                              font.symbolicTraits() == description.traits &&
                              fixedDecimals(font.pointSize(), 1) == size;
            if (!fits) continue;
            last = &candidate;
            if (!candidate.taken) break;
        }
        return last;
    };
    Candidate *found = search(&Font::familyName);
    if (!found) found = search(&Font::displayName);
    if (!found) return std::nullopt;
    found->taken = true;
    return found->font;
}

Font fontMatching(const FontDescription &description, DocumentFonts &fonts) {
    if (auto font = fonts.find(description)) return *font;
    QString displayName = description.family;
    if (description.traits & BoldTrait) displayName += QLatin1String(" Bold");
    if (description.traits & ItalicTrait) displayName += QLatin1String(" Italic");
    return {FontFace{displayName, description.family, description.traits}, description.size};
}

}  // namespace leafwright
