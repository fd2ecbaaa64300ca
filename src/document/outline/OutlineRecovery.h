#pragma once

#include "document/outline/KeptOutline.h"
#include "document/outline/OutlineDocument.h"

namespace leafwright {

/// The mark of a document's file; nothing where another program has changed it since it was read or saved.
std::optional<FileMark> markOfKnownFile(const OutlineDocument &document);
/// Whether an outline was kept for the file as a document has it.
bool isForFileOf(const OutlineDocument &document, const KeptOutline &kept);
/// Whether a document's outline is one that was kept, so that there is nothing to recover.
bool isSameOutline(const OutlineDocument &document, const KeptOutline &kept);
/// Puts an outline that was kept in place of a document's, as one counted change. If it was not kept for the
/// file as it is now, its items are found again there by their page labels and titles; see relinkOutline().
LostTargets recoverOutline(OutlineDocument &document, const KeptOutline &kept);

}  // namespace leafwright
