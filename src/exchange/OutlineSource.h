#pragma once

#include "model/OutlineEntry.h"
#include "pdf/PDFOutline.h"
#include "pdf/TextPages.h"

#include <QHash>
#include <QStringList>

namespace leafwright {

/// An entry of an outline that was read from a file.
struct FileEntry {
    QString title;
    std::optional<PDFDestination> destination;  ///< Absent where it leads to no page.
    OutlineEntry entry;
};

/// The entries of a file, by their object numbers.
using OutlineEntries = QHash<int, FileEntry>;

/// Lists the entries of an outline that was read from a file.
OutlineEntries entriesByNumber(const PDFOutline &root);

/// What a text with an outline is read for.
struct OutlineSource {
    const TextPages &pages;  ///< Whose labels and numbers it tells.
    /// Those that its entries may stand for. What such an entry does not say, that of the file says.
    OutlineEntries inFile = {};
    /// Gets what was not taken as the text has it, a message each; not owned, may be null.
    QStringList *notices = nullptr;
};

}  // namespace leafwright
