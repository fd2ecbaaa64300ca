#pragma once

#include "autotoc/FontCensus.h"

#include <map>
#include <optional>
#include <tuple>

namespace leafwright {

/// A font by what a saved map line says of it.
struct FontDescription {
    QString family;
    FontTraits traits = 0;
    double size = 0;  ///< Points, with one decimal.
};

/// Finds the fonts of a document again by their descriptions, so that a saved map finds its headings.
///
/// A description fits fonts of its family (or, for maps written by hand, its display name) and traits
/// whose size prints the same with one decimal. Where it fits several, they come in the order in which a
/// guessed map has them; asked for once more, it gives the next of them, because a map saved from this
/// document has a line for each. Where fewer are expected than fit, those of the very size come first.
class DocumentFonts {
public:
    DocumentFonts() = default;
    explicit DocumentFonts(const FontCensus &census);

    /// The description will be asked for, once more if it is already.
    void expect(const FontDescription &description);
    /// A font of the document, or nothing when none fits. When all that fit were given, the last again.
    std::optional<Font> find(const FontDescription &description);
    /// The same for a description printed with the display name and the whole size: it fits the very font.
    std::optional<Font> findPrinted(const FontDescription &description);

private:
    struct Candidate {
        Font font;
        bool taken = false;
    };
    template <typename Fits>
    Candidate *search(Fits &&fits);
    template <typename Fits>
    Candidate *searchAlike(const Fits &fits, const FontDescription &description);
    static std::optional<Font> take(Candidate *candidate);

    std::map<std::tuple<QString, FontTraits, double>, int> expected_;
    std::vector<Candidate> candidates_;  ///< In the order of a guessed map; behind them, the other fonts.
};

/// The document's font that fits, else one made up from the description. The made-up one reports the
/// traits asked for and matches no text of the document.
Font fontMatching(const FontDescription &description, DocumentFonts &fonts);
/// The same by DocumentFonts::findPrinted().
Font fontMatchingPrinted(const FontDescription &description, DocumentFonts &fonts);

}  // namespace leafwright
