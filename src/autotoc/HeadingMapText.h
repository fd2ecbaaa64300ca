#pragma once

#include "autotoc/DocumentFonts.h"
#include "autotoc/HeadingLevelMap.h"

namespace leafwright {

// The saved form of a heading level map: a line a record, such as
//
//     H2/14.0/"Times" +BI
//
// the level, the size in points with one decimal, the family, and the traits (+B bold, +I italic, +BI
// both). Lines that do not begin with "H" are comments.

/// The saved form of a map. A record without a font (of the self-calibrating finder) has none to save,
/// and is left out.
QString stringToSaveListH1H2H3(const HeadingLevelMap &map);

/// Reads one line of the saved form. Nothing for a line that is not of that form or whose level or size
/// is not positive. @param fonts the document's fonts, searched first
std::optional<LevelRecord> savedH1H2H3StringToFontLevelInfo(const QString &line, DocumentFonts &fonts);

/// What a map text holds.
struct LoadedMap {
    HeadingLevelMap map;               ///< Sorted by level; empty when no line could be read.
    std::vector<int> unreadableLines;  ///< 1-based numbers of lines that begin with "H" but are no records.
};
LoadedMap loadHeadingMap(const QString &text, DocumentFonts fonts);

}  // namespace leafwright
