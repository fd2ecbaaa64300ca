#pragma once

#include "contents/FoundContents.h"
#include "model/MyOutlineItem.h"
#include "pdf/TextPages.h"

namespace leafwright {

/// Makes items of the entries that Find Contents found, each below the last one before it of a lower level.
/// They know their pages, as imported items do, which other pages may share the label of.
/// @param pages tells the labels of the entries' pages
MyOutlineItem::Children itemsOfContents(const FoundContents &found, const TextPages &pages);

/// An item of a tree, and its level: 1 for the top.
struct OutlinePosition {
    const MyOutlineItem *item = nullptr;
    int level = 1;
};

/// All items below one, in tree order.
std::vector<OutlinePosition> itemsInOrder(const MyOutlineItem &root);

/// Puts the entries that complete an outline among its items. An entry with the id -1 - i stands for the item
/// that is number i in tree order; items that no entry stands for stay behind the one before them.
/// @param completed its entries that stand for items have those in tree order
MyOutlineItem::Children completedItems(MyOutlineItem::Children existing, const FoundContents &completed,
                                       const TextPages &pages);

}  // namespace leafwright
