#pragma once

#include "autotoc/HeadingLevelMap.h"

#include <QHash>

namespace leafwright {

/// How a document uses a font that may be that of headings.
struct FontUse {
    qint64 count = 0;  ///< Runs of text set in it.
    QString sample;    ///< The first of them.

    friend bool operator==(const FontUse &, const FontUse &) = default;
};

/// The uses by font ID string, by which the text of headings is told: what is set in sizes that print alike
/// is one font here.
using FontUses = QHash<QString, FontUse>;

/// The uses of all fonts of a census.
FontUses fontUses(const FontCensus &census);

}  // namespace leafwright
