#pragma once

#include "pdf/TextPages.h"

#include <QHash>

#include <vector>

namespace leafwright {

/// How much text is set in one font.
struct FontRecord {
    qint64 charCount = 0;  ///< UTF-16 units of the cleaned text of all counted runs.
    qint64 instances = 0;  ///< Counted runs.

    friend bool operator==(const FontRecord &, const FontRecord &) = default;
};

/// The fonts of a text with their records, in the order in which they were met. Fonts are told apart by
/// face and exact size.
class FontCensus {
public:
    struct Entry {
        Font font;
        FontRecord record;
        QString sample;  ///< The first text that was counted in it, without line ends; cut where it is long.
    };

    /// Counts one run. @param text of the run, of which only the first of a font is looked at
    void count(const Font &font, qint64 characters, const QString &text = {});

    bool isEmpty() const { return entries_.empty(); }
    const std::vector<Entry> &entries() const { return entries_; }
    /// The font's record; zero for one that was never met.
    FontRecord record(const Font &font) const;
    /// The font with the most characters, taken to be the body text's; of two with as many, the one met
    /// first. Null for an empty census.
    const Entry *bodyFont() const;

private:
    std::vector<Entry> entries_;
    QHash<Font, size_t> indexByFont_;
};

/// Counts the fonts of all pages. Runs without letters do not count. Nothing is kept between calls.
FontCensus calcFontsInDocument(const TextPages &pages);

}  // namespace leafwright
