#pragma once

#include "pdf/Font.h"
#include "pdf/Geometry.h"

#include <QString>

#include <vector>

namespace leafwright {

/// A range of UTF-16 units in a text.
struct TextRange {
    int location = 0;
    int length = 0;

    int end() const { return location + length; }
    friend bool operator==(const TextRange &, const TextRange &) = default;
};

/// The longest stretch of text in one font.
struct FontRun {
    TextRange range;
    Font font;

    friend bool operator==(const FontRun &, const FontRun &) = default;
};

/// Text whose characters each have a font.
struct AttributedString {
    QString string;
    /// Cover the string without gaps, in order; neighbours differ in font.
    std::vector<FontRun> runs;

    bool isEmpty() const { return string.isEmpty(); }
    QString substring(const TextRange &range) const { return string.mid(range.location, range.length); }
    /// Adds text at the end; joins the last run when the font is the same.
    void append(const QString &text, const Font &font);
    /// Part of the text, its runs clipped and moved to start at 0. The range is clipped to the string.
    AttributedString part(const TextRange &range) const;
};

/// The text of one page: lines in content order, each ended by a line feed that carries the font of
/// the character before it; blanks between words carry it too. Ligatures are expanded.
struct PageText {
    AttributedString attributedString;
    /// Bounds of each run in page space, parallel to the runs; empty where nothing is to be seen.
    std::vector<Rect> runBounds;
};

}  // namespace leafwright
