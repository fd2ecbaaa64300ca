#include "tree/TreeController.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <iterator>
#include <stdexcept>

// How a TreeController moves nodes.

namespace leafwright {

namespace {

/// Each run of neighbours is moved by itself, which costs time by the number of siblings. From here on, all
/// are moved at once, and views lay out anew.
constexpr size_t runsWorthMovingSingly = 32;

/// Moves elements of one list to a gap in the same or another one.
template <typename Element>
void splice(std::vector<Element> &from, size_t first, size_t count, std::vector<Element> &to, size_t gap) {
    const auto begin = from.begin() + static_cast<qsizetype>(first);
    const auto end = begin + static_cast<qsizetype>(count);
    const auto place = to.begin() + static_cast<qsizetype>(gap);
    if (&from != &to) {
        to.insert(place, std::make_move_iterator(begin), std::make_move_iterator(end));
        from.erase(begin, end);
    } else if (gap < first) {
        std::rotate(place, begin, end);
    } else {
        std::rotate(begin, end, place);
    }
}

std::vector<TreeNode *> eachOnce(const std::vector<TreeNode *> &nodes) {
    std::unordered_set<const TreeNode *> seen;
    std::vector<TreeNode *> result;
    for (TreeNode *node : nodes) {
        if (seen.insert(node).second) result.push_back(node);
    }
    return result;
}

/// How many nodes of a list, from a position on, are siblings that follow each other in the tree, too.
size_t runLength(const std::vector<TreeNode *> &nodes, size_t start) {
    size_t end = start + 1;
    while (end < nodes.size() && nodes[end]->parentNode() == nodes[start]->parentNode() &&
           nodes[end]->row() == nodes[end - 1]->row() + 1) {
        ++end;
    }
    return end - start;
}

size_t numberOfRuns(const std::vector<TreeNode *> &nodes) {
    size_t runs = 0;
    for (size_t start = 0; start < nodes.size(); start += runLength(nodes, start))
        ++runs;
    return runs;
}

}  // namespace

bool TreeController::moveNode(TreeNode &node, const IndexPath &path) {
    return moveNodes({&node}, path);
}

bool TreeController::moveNodes(const std::vector<TreeNode *> &nodes, const IndexPath &path) {
    TreeNode *target = descendantNodeAtIndexPath(path.indexPathByRemovingLastIndex());
    if (!canMove(nodes, target, path)) return false;
    const std::vector<TreeNode *> moving = eachOnce(nodes);
    if (movingMany_ || numberOfRuns(moving) < runsWorthMovingSingly) {
        moveRuns(moving, *target, path.lastIndex());
    } else {
        moveScattered(moving, *target, path.lastIndex());
    }
    return true;
}

bool TreeController::canMove(const std::vector<TreeNode *> &nodes, const TreeNode *target,
                             const IndexPath &path) const {
    if (path.isEmpty() || !target || path.lastIndex() > target->childCount()) return false;
    std::unordered_set<const TreeNode *> aboveGap;
    for (const TreeNode *node = target; node; node = node->parent_)
        aboveGap.insert(node);
    return std::all_of(nodes.begin(), nodes.end(), [&](const TreeNode *node) {
        return node->parent_ && nodeForItem(*node->representedObject_) == node && !aboveGap.contains(node);
    });
}

void TreeController::moveRuns(const std::vector<TreeNode *> &nodes, TreeNode &target, size_t gap) {
    for (size_t start = 0; start < nodes.size();) {
        TreeNode &source = *nodes[start]->parent_;
        const size_t first = nodes[start]->row();
        const size_t count = runLength(nodes, start);
        const bool isThere = &source == &target && first <= gap && gap <= first + count;
        if (!isThere) moveBlock({source, first, count, target, gap});
        start += count;
        gap = nodes[start - 1]->row() + 1;
    }
}

void TreeController::moveBlock(const BlockMove &move) {
    if (movingMany_) {
        moveItems(move);
        spliceNodes(move);
        ++structureRevision_;
        return;
    }
    putSelectionAside();
    if (!beginMoveRows(indexForNode(move.source), static_cast<int>(move.first),
                       static_cast<int>(move.first + move.count - 1), indexForNode(move.target),
                       static_cast<int>(move.gap))) {
        restoreSelection();
        throw std::logic_error("a tree node was to be moved to where it is");
    }
    {
        const QScopedValueRollback moving(movingItems_, true);
        moveItems(move);
    }
    spliceNodes(move);
    ++structureRevision_;
    endMoveRows();
}

void TreeController::moveItems(const BlockMove &move) {
    MyOutlineItem &from = *move.source.representedObject_;
    MyOutlineItem &to = *move.target.representedObject_;
    MyOutlineItem::Children children = from.takeChildren();
    if (&from == &to) {
        splice(children, move.first, move.count, children, move.gap);
    } else {
        MyOutlineItem::Children others = to.takeChildren();
        splice(children, move.first, move.count, others, move.gap);
        to.setChildren(std::move(others));
    }
    from.setChildren(std::move(children));
}

void TreeController::spliceNodes(const BlockMove &move) {
    const auto begin = move.source.children_.begin() + static_cast<qsizetype>(move.first);
    std::for_each(begin, begin + static_cast<qsizetype>(move.count),
                  [&](TreeNode *node) { node->parent_ = &move.target; });
    splice(move.source.children_, move.first, move.count, move.target.children_, move.gap);
    if (&move.source == &move.target) {
        // Only those between the old place and the new one have other rows.
        const size_t from = std::min(move.first, move.gap);
        const size_t to = std::max(move.first + move.count, move.gap);
        if (move.source.numberedRows_ >= from) move.source.numberRows(from, to);
        return;
    }
    move.source.childrenChangedFrom(move.first);
    move.target.childrenChangedFrom(move.gap);
}

void TreeController::beginManyMoves() {
    putSelectionAside();
    Q_EMIT layoutAboutToBeChanged();
    indexesBeforeMoves_ = persistentIndexList();
    movingMany_ = movingItems_ = true;
}

void TreeController::endManyMoves() {
    movingMany_ = movingItems_ = false;
    QModelIndexList after;
    after.reserve(indexesBeforeMoves_.size());
    for (const QModelIndex &index : std::as_const(indexesBeforeMoves_))
        after.append(indexForNode(nodeForIndex(index), index.column()));
    changePersistentIndexList(indexesBeforeMoves_, after);
    indexesBeforeMoves_.clear();
    restoreSelection();
    Q_EMIT layoutChanged();
}

void TreeController::moveScattered(const std::vector<TreeNode *> &nodes, TreeNode &target, size_t gap) {
    const ManyMoves together(*this);
    rearrange(nodes, target, gap);
    ++structureRevision_;
}

// Not static, because it changes what the controller shows.
// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
void TreeController::rearrange(const std::vector<TreeNode *> &nodes, TreeNode &target, size_t gap) {
    std::vector<TreeNode *> parents{&target};
    for (const TreeNode *node : nodes)
        parents.push_back(node->parent_);
    parents = eachOnce(parents);
    std::unordered_map<const MyOutlineItem *, std::unique_ptr<MyOutlineItem>> items;
    for (const TreeNode *parent : parents) {
        for (std::unique_ptr<MyOutlineItem> &item : parent->representedObject_->takeChildren())
            items.emplace(item.get(), std::move(item));
    }
    const std::unordered_set<const TreeNode *> leaving(nodes.begin(), nodes.end());
    const auto leaves = [&leaving](const TreeNode *node) { return leaving.contains(node); };
    const auto gapPlace = target.children_.begin() + static_cast<qsizetype>(gap);
    gap -= static_cast<size_t>(std::count_if(target.children_.begin(), gapPlace, leaves));
    for (TreeNode *parent : parents) {
        std::erase_if(parent->children_, leaves);
        parent->childrenChangedFrom(0);
    }
    target.children_.insert(target.children_.begin() + static_cast<qsizetype>(gap), nodes.begin(),
                            nodes.end());
    for (TreeNode *node : nodes)
        node->parent_ = &target;
    for (const TreeNode *parent : parents) {
        MyOutlineItem::Children children;
        for (const TreeNode *child : parent->children_)
            children.push_back(std::move(items.at(child->representedObject_)));
        parent->representedObject_->setChildren(std::move(children));
    }
}

}  // namespace leafwright
