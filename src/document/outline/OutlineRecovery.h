#pragma once

#include "document/outline/KeptOutline.h"
#include "document/outline/OutlineDocument.h"

namespace leafwright {

/// Whether an outline was kept for the file as a document has it.
bool isForFileOf(const OutlineDocument &document, const KeptOutline &kept);
/// Whether a document's outline is one that was kept, so that there is nothing to recover. If the file is not
/// the one that it was kept for, it may be what was saved of it, in the digits of a file.
bool isSameOutline(const OutlineDocument &document, const KeptOutline &kept);
/// Puts an outline that was kept in place of a document's, as one counted change. If it was not kept for the
/// file as it is now, its items are found again there by their page labels and titles; see relinkOutline().
LostTargets recoverOutline(OutlineDocument &document, const KeptOutline &kept);

}  // namespace leafwright
