#pragma once

#include "pdf/mupdf/Reader.h"

#include <chrono>

namespace leafwright::mupdf {

/// A font that a page's content selected, as MuPDF loaded it.
struct SeenFont {
    const fz_font *font;
    Object dictionary;  ///< The PDF font dictionary; null where it could not be traced.
    QByteArray resourceName;
    int descriptorFlags;  ///< ISO 32000-1, table 123.
    float italicAngle;
};

/// What is wanted of a page's text beside characters, fonts and places.
struct TextRunOptions {
    bool colours = false;  ///< The colours of characters; without, all are black.
    /// Identifiers of marked content (ISO 32000-1, 14.6), in place of colours: the characters of the first
    /// one have colour 1, those of the second 2, all others 0. At most 65,535.
    std::vector<int> marks = {};
    /// How long the page may keep a processor busy. Pages take milliseconds; one that takes this long is made
    /// to keep us busy.
    std::chrono::nanoseconds longest = std::chrono::seconds(5);
};

/// The text that a page's content shows, in MuPDF's own form.
class StructuredText {
public:
    /// Runs the page's content for its text alone: no paths, images or annotations are looked at, which
    /// is faster and leaves hostile images undecoded. Characters outside the visible box are left out.
    /// What is broken in the content ends it; the text before that is kept. So is that of a page which takes
    /// too long, and the reader has a problem then.
    /// @param pageIndex 0-based, within range
    StructuredText(Reader &reader, int pageIndex, const TextRunOptions &options = {});
    ~StructuredText();
    StructuredText(const StructuredText &) = delete;
    StructuredText &operator=(const StructuredText &) = delete;

    const fz_stext_page *page() const { return page_; }
    /// From the coordinates of the text to the page's own user space.
    fz_matrix toPageSpace() const { return toPageSpace_; }
    /// Fonts stay valid while this lives.
    const std::vector<SeenFont> &fonts() const { return fonts_; }

private:
    /// @return whether the page's content came to its end, or to what is broken in it
    bool run(Reader &reader, const Object &page, fz_matrix toDevice, const TextRunOptions &options);

    fz_context *ctx_;
    fz_stext_page *page_ = nullptr;
    fz_matrix toPageSpace_ = fz_identity;
    std::vector<SeenFont> fonts_;
    std::vector<fz_font *> keptFonts_;
};

}  // namespace leafwright::mupdf
