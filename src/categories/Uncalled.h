#pragma once

#include "model/MyOutlineItem.h"
#include "pdf/PDFPage.h"
#include "pdf/PDFSelection.h"
#include "tree/TreeController.h"

#include <optional>
#include <vector>

namespace leafwright {

// What is fixed from outside, by name and by what it does, and what nothing in the program calls. Headers of
// other folders have a few of the kind, marked "Uncalled".

/// The first child position. Absent for the empty path.
std::optional<IndexPath> nextchild(const IndexPath &path);

/// For a level of 1 or more, the position right after the ancestor at that level, level 0 being the top one:
/// [2, 6] for [2, 5, 1] and level 1. For a level below the path's own, the first child position. Level 0
/// gives two indexes, deliberately: the first, and the first plus one. Absent for a negative level.
std::optional<IndexPath> nextOfLevel(const IndexPath &path, qint32 level);

/// Whether an item stands at or below a node, answered by one step on the way to it: the node itself if the
/// item is its own, the node's child that the item is at or below, or null. The child, deliberately, however
/// deep the item is. Items are compared by identity.
TreeNode *isTreeNode(const TreeController &controller, TreeNode &node, const MyOutlineItem &aMatch);

/// The top-level node that an item is at or below. Null if the item is not in the tree, and for the root.
TreeNode *treeNodeForRealObject(const TreeController &controller, const MyOutlineItem &item);

/// What rangesOfFontID() gives for the font.
std::vector<TextRange> rangesOfFont(const PDFPage &page, const Font &font);

/// Always false.
bool isTopLeftPointingMOI(const PDFPage &page, const MyOutlineItem &item);

/// Always nothing: the dominant font is asked of selections.
std::optional<Font> dominantFont(const AttributedString &text);

/// Whether the page is the selection's first.
bool isOnPage(const PDFSelection &selection, const PDFPage &page);

}  // namespace leafwright
