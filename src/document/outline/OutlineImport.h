#pragma once

#include "model/MyOutlineItem.h"
#include "pdf/PDFOutline.h"
#include "pdf/TextPages.h"

namespace leafwright {

/// Copies one entry of a PDF's outline and everything below it into a detached item.
/// Items remember the pages that they lead to in the file.
/// An entry that leads to no page has an absent page label.
/// @return whether some entry leads to a page, but to no particular spot there (a point of exactly (0, 0)):
///         such an entry gets one when written, so the document counts as changed from the moment it is
///         opened
bool addOutlineChildren(const PDFOutline &entry, MyOutlineItem &item, const TextPages &pages);

}  // namespace leafwright
