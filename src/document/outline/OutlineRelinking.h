#pragma once

#include "document/outline/EntryKey.h"
#include "model/OutlineEdits.h"
#include "pdf/PDFOutline.h"
#include "pdf/TextPages.h"

#include <QStringList>

namespace leafwright {

/// What items lost when their document's pages were exchanged.
struct LostTargets {
    static constexpr qsizetype mostNamed = 3;

    size_t unknownLabels = 0;        ///< Items whose label no page has now, but one had before.
    QStringList firstUnknownLabels;  ///< Of those in tree order, each label once, `mostNamed` at most.
    size_t actions = 0;              ///< Items that led where only their entry in the file knew in full.
};

/// Whether an item leads nowhere without the entry of the file that it stands for, since that alone knows its
/// action in full. @param label absent for no page
bool leadsByItsEntryAlone(const QString &label, const OutlineEntry &entry);

/// Lets an outline made for one file's pages go with those of another: the same document, typeset anew.
/// Labels stay as they are. An item that came with a page keeps it by its label: the second page with a label
/// stays the second one. The entry that an item stands for is found again in the other file's outline by what
/// it was in the file before, whatever the item says by now; an item whose entry is not there is a new one,
/// with all that is known of it here. This is a counted change.
/// @param entriesBefore those of the file before, in its order
LostTargets relinkOutline(OutlineEdits &edits, const TextPages &before, const TextPages &now,
                          const std::vector<EntryInFile> &entriesBefore, const PDFOutline &outlineNow);

}  // namespace leafwright
