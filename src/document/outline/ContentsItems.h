#pragma once

#include "contents/FoundContents.h"
#include "model/MyOutlineItem.h"
#include "pdf/TextPages.h"

namespace leafwright {

/// Makes items of the entries that Find Contents found, each below the last one before it of a lower level.
/// They know their pages, as imported items do, which other pages may share the label of.
/// @param pages tells the labels of the entries' pages
MyOutlineItem::Children itemsOfContents(const FoundContents &found, const TextPages &pages);

}  // namespace leafwright
