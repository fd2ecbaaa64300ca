#pragma once

#include "autotoc/FontCensus.h"

#include <optional>
#include <vector>

namespace leafwright {

/// One row of the heading level map: a font whose text makes headings of a level.
struct LevelRecord {
    int levelNumber = 1;       ///< 1 is the top level.
    QString levelName;         ///< "H" and the level number. Key "Level".
    QString fontText;          ///< The font for display. Key "FontTraits".
    std::optional<Font> font;  ///< Absent in calibrated records, which have a font string in fontText.

    friend bool operator==(const LevelRecord &, const LevelRecord &) = default;
};

/// Which fonts are headings, and of which level.
using HeadingLevelMap = std::vector<LevelRecord>;

/// The record that maps a font to a level.
LevelRecord levelRecord(int levelNumber, const Font &font);

/// The font ID string of a record's font, by which its headings are told.
QString fontIDOf(const LevelRecord &record);

/// Guesses the map: every font larger than the body text's, by adjusted size, largest first. The level
/// rises from one font to the next unless the font occurs in a single run (a title, most likely).
HeadingLevelMap headingsfromFonts(const FontCensus &census);

/// The map with a record for each font of the census that a record without a font means by its font string.
/// Those that mean none stay as they are.
HeadingLevelMap withFontsOf(const FontCensus &census, const HeadingLevelMap &map);

/// Sorts by level; records of one level keep their order.
void sortByLevel(HeadingLevelMap &map);

}  // namespace leafwright
