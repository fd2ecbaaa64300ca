#pragma once

#include "outlineview/OutlineView.h"

namespace leafwright {

/// The items of the selected rows, in row order.
std::vector<TreeNode *> selectedItems(const OutlineView &view);

/// Selects just these items, as far as they are shown, and logs the rows. Uncalled, but fixed from outside.
void setSelectedItems(OutlineView &view, const std::vector<TreeNode *> &items);

}  // namespace leafwright
