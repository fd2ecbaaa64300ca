#pragma once

#include "tree/TreeController.h"

namespace leafwright {

/// Whether an item stands at or below a node, answered by one step on the way to it: the node itself if the
/// item is its own, the node's child that the item is at or below, or null. The child, deliberately, however
/// deep the item is. Items are compared by identity.
TreeNode *isTreeNode(const TreeController &controller, TreeNode &node, const MyOutlineItem &aMatch);

/// The top-level node that an item is at or below. Null if the item is not in the tree, and for the root.
TreeNode *treeNodeForRealObject(const TreeController &controller, const MyOutlineItem &item);

/// The number of top-level nodes.
size_t countOfTopLevel(const TreeController &controller);

}  // namespace leafwright
