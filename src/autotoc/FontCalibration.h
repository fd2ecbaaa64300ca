#pragma once

#include "autotoc/FontCensus.h"
#include "autotoc/HeadingLevelMap.h"

#include <QHash>
#include <QStringList>

#include <optional>
#include <vector>

namespace leafwright {

/// How many characters are set in the fonts of one font string.
struct FontStringCount {
    QString fontString;
    qint64 charCount = 0;  ///< UTF-16 units.

    friend bool operator==(const FontStringCount &, const FontStringCount &) = default;
};
/// In the order in which the font strings were met in the text.
using FontStringCensus = std::vector<FontStringCount>;

/// A census by exact font, summed up by font string.
FontStringCensus fontStringCensus(const FontCensus &census);
/// Whether headings can be told from the text by their fonts, of which it takes two at least.
bool canCalibrate(const FontStringCensus &census);

/// Which fonts are left out as headings.
struct FrequencyFilters {
    /// Leaves out the font of the most characters, all that are not larger than it, and all as frequent.
    bool ignoreHighFrequencyFonts = true;
    /// Leaves out those with less than 2 % of the characters of the most frequent one that remains.
    bool ignoreLowFrequencyFonts = true;
};

/// The font strings that may be headings, by ascending size; of one size, the one met last comes first.
QStringList headingFontStrings(const FontStringCensus &census, const FrequencyFilters &filters);

/// The level of each heading font, a level a font, corrected while the text is read: where the text begins
/// with a small font, or skips one, the fonts below it move up behind it.
class CalibratedLevels {
public:
    /// @param orderedFonts by ascending size: the first gets the deepest level, the last level 1
    explicit CalibratedLevels(QStringList orderedFonts);

    /// 1 is the top level; nothing for a font that makes no headings.
    std::optional<int> level(const QString &fontString) const;
    /// Gives a font of the list a level, and the smaller fonts those that follow directly below it.
    void rerank(const QString &fontString, int level);
    /// The levels as they are now, as a heading map whose records have a font string but no font.
    HeadingLevelMap records() const;

private:
    QStringList orderedFonts_;
    QHash<QString, int> levels_;
};

}  // namespace leafwright
