#pragma once

#include "autotoc/FontCensus.h"

#include <optional>

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
/// whose size prints the same with one decimal. Where it fits several, those larger than the body text
/// come first, then those met first; asked for once more, it gives the next of them, because a map saved
/// from this document has a line for each.
class DocumentFonts {
public:
    DocumentFonts() = default;
    explicit DocumentFonts(const FontCensus &census);

    /// A font of the document, or nothing when none fits. When all that fit were given, the last again.
    std::optional<Font> find(const FontDescription &description);

private:
    struct Candidate {
        Font font;
        bool taken = false;
    };
    std::vector<Candidate> candidates_;
};

/// The document's font that fits, else one made up from the description. The made-up one reports the
/// traits asked for and matches no text of the document.
Font fontMatching(const FontDescription &description, DocumentFonts &fonts);

}  // namespace leafwright
