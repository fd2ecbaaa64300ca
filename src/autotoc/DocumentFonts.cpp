#include "autotoc/DocumentFonts.h"

#include "categories/FontIdentity.h"
#include "model/FixedDecimals.h"

#include <algorithm>
#include <cmath>

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
    for (const auto name : {&Font::familyName, &Font::displayName}) {
        if (Candidate *found = searchAlike(named(name), description)) return take(found);
    }
    return std::nullopt;
}

void DocumentFonts::expect(const FontDescription &description) {
    ++expected_[{description.family, description.traits, description.size}];
}

/// The next of fonts that print alike. With a line for each of them, they stand in their order. With fewer,
/// the very size is the best guess.
template <typename Fits>
DocumentFonts::Candidate *DocumentFonts::searchAlike(const Fits &fits, const FontDescription &description) {
    const auto count = std::ranges::count_if(candidates_, fits, &Candidate::font);
    const auto expected = expected_.find({description.family, description.traits, description.size});
    if (expected == expected_.end() || expected->second < count) {
        // The description's size is in single precision, and the document's are whole hundredths.
        constexpr double half = 0.005;
        Candidate *exact = search([&](const Font &font) {
            return fits(font) && std::abs(font.pointSize() - description.size) < half;
        });
        if (exact && !exact->taken) return exact;
    }
    return search(fits);
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
