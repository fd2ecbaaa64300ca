#pragma once

#include "autotoc/HeadingLevelMap.h"
#include "model/MyOutlineItem.h"

#include <memory>

namespace leafwright {

/// Builds outline items from the text: every run in a font of the map becomes an item at that font's
/// level; runs that closely follow each other on a page at one level become one title.
///
/// Depth follows the tree, not the level: a heading goes one deeper than the last one at most.
/// @param maxDepth the deepest nesting below the top item; headings beyond it are dropped
/// @return the new top item, "AutoTOC" and the depth, with the headings below it; detached
std::unique_ptr<MyOutlineItem> runAutoTOCwithH1H2H3Map(const TextPages &pages, const HeadingLevelMap &map,
                                                       int maxDepth);

}  // namespace leafwright
