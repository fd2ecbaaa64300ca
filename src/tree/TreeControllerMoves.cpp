#include "model/Splicing.h"
#include "tree/TreeController.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

// How a TreeController moves and removes nodes.

namespace leafwright {

namespace {

/// Each run of neighbours is moved by itself, which costs time by the number of siblings. From here on, all
/// are moved at once, and views lay out anew.
constexpr size_t runsWorthMovingSingly = 32;

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
        if (!isThere) edits_.move({source.representedObject_, first, count, target.representedObject_, gap});
        start += count;
        gap = nodes[start - 1]->row() + 1;
    }
}

void TreeController::moveScattered(const std::vector<TreeNode *> &nodes, TreeNode &target, size_t gap) {
    std::vector<TreeNode *> parents{&target};
    for (const TreeNode *node : nodes)
        parents.push_back(node->parent_);
    const std::unordered_set<const TreeNode *> leaving(nodes.begin(), nodes.end());
    std::vector<OutlineArrangement> arrangements;
    for (const TreeNode *parent : eachOnce(parents)) {
        OutlineArrangement arrangement{parent->representedObject_, {}};
        for (size_t position = 0; position <= parent->childCount(); ++position) {
            if (parent == &target && position == gap) {
                for (const TreeNode *node : nodes)
                    arrangement.children.push_back(node->representedObject_);
            }
            if (position == parent->childCount()) break;
            const TreeNode *child = parent->children_[position];
            if (!leaving.contains(child)) arrangement.children.push_back(child->representedObject_);
        }
        arrangements.push_back(std::move(arrangement));
    }
    edits_.rearrange(std::move(arrangements));
}

void TreeController::removeObjects(const std::vector<TreeNode *> &nodes) {
    std::vector<TreeNode *> tops;
    for (TreeNode *node : nodes)
        if (tops.empty() || !node->isDescendantOf(*tops.back())) tops.push_back(node);
    std::vector<size_t> starts;
    for (size_t start = 0; start < tops.size(); start += runLength(tops, start))
        starts.push_back(start);
    // From the last to the first, so that positions and numbers of rows before them stay right.
    for (size_t end = tops.size(); !starts.empty(); end = starts.back(), starts.pop_back()) {
        const TreeNode &first = *tops[starts.back()];
        edits_.remove(*first.parent_->representedObject_, first.row(), end - starts.back());
    }
}

TreeController::BlockMove TreeController::nodesOf(const OutlineMove &move) const {
    return {*nodeForItem(*move.source), move.first, move.count, *nodeForItem(*move.target), move.gap};
}

void TreeController::willMove(const OutlineMove &move) {
    if (movingMany_) return;
    if (isFiltered_) {
        // Where what moves stands among what is shown is found when it is there.
        beginManyMoves();
        movingFiltered_ = true;
        return;
    }
    putSelectionAside();
    const BlockMove rows = nodesOf(move);
    if (!beginMoveRows(indexForNode(rows.source), static_cast<int>(rows.first),
                       static_cast<int>(rows.first + rows.count - 1), indexForNode(rows.target),
                       static_cast<int>(rows.gap))) {
        restoreSelection();
        throw std::logic_error("a tree node was to be moved to where it is");
    }
    movingItems_ = true;
}

void TreeController::didMove(const OutlineMove &move) {
    spliceNodes(nodesOf(move));
    ++structureRevision_;
    if (std::exchange(movingFiltered_, false)) return endManyMoves();
    if (movingMany_) return;
    movingItems_ = false;
    endMoveRows();
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
    if (isFiltered_) arrangeShown();
    QModelIndexList after;
    after.reserve(indexesBeforeMoves_.size());
    for (const QModelIndex &index : std::as_const(indexesBeforeMoves_))
        after.append(indexForNode(nodeForIndex(index), index.column()));
    changePersistentIndexList(indexesBeforeMoves_, after);
    indexesBeforeMoves_.clear();
    restoreSelection();
    Q_EMIT layoutChanged();
}

void TreeController::didRearrange(const std::vector<OutlineArrangement> &parents) {
    for (const OutlineArrangement &arrangement : parents) {
        TreeNode &parent = *nodeForItem(*arrangement.parent);
        parent.children_.clear();
        for (const auto &item : parent.representedObject_->children()) {
            TreeNode *child = nodeForItem(*item);
            child->parent_ = &parent;
            parent.children_.push_back(child);
        }
        parent.childrenChangedFrom(0);
    }
    ++structureRevision_;
}

}  // namespace leafwright
