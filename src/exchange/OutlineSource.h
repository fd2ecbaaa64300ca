#pragma once

#include "model/OutlineEntry.h"
#include "pdf/PDFOutline.h"
#include "pdf/TextPages.h"

#include <QHash>

namespace leafwright {

/// The entries of a file, by their object numbers.
using OutlineEntries = QHash<int, OutlineEntry>;

/// Lists the entries of an outline that was read from a file.
OutlineEntries entriesByNumber(const PDFOutline &root);

/// What a text with an outline is read for.
struct OutlineSource {
    const TextPages &pages;  ///< Whose labels and numbers it tells.
    /// Those that its entries may stand for. What such an entry does not say, that of the file says.
    OutlineEntries inFile = {};
};

}  // namespace leafwright
