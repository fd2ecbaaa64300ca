#include "model/TreeWalk.h"
#include "tree/TreeController.h"

#include <algorithm>
#include <iterator>
#include <utility>

// Which nodes a TreeController shows views. Only what views are told goes by that: paths, positions and moves
// are those of the whole tree. A node that is hidden has no shown children, because all above a shown one is
// shown.

namespace leafwright {

namespace {

/// Of more hidden nodes than this, views are told as of one new layout.
constexpr size_t nodesWorthShowingSingly = 32;

}  // namespace

void TreeController::setFilter(const std::vector<TreeNode *> &matches) {
    const std::vector<TreeNode *> selected = selectedNodes();
    beginResetModel();
    hideAll();
    for (TreeNode *match : matches) {
        match->isShown_ = true;
        if (!std::exchange(match->isMatch_, true)) ++matchCount_;
    }
    isFiltered_ = true;
    arrangeShown();
    ++structureRevision_;
    endResetModel();
    setSelectedNodes(selected);
}

void TreeController::clearFilter() {
    if (!isFiltered_) return;
    const std::vector<TreeNode *> selected = selectedNodes();
    beginResetModel();
    isFiltered_ = false;
    hideAll();
    ++structureRevision_;
    endResetModel();
    setSelectedNodes(selected);
}

/// Forgets what a filter shows.
void TreeController::hideAll() {
    std::vector<TreeNode *> pending{root_};
    while (!pending.empty()) {
        TreeNode *node = pending.back();
        pending.pop_back();
        pending.insert(pending.end(), node->shown_.begin(), node->shown_.end());
        node->shown_ = {};
        node->isShown_ = node->isMatch_ = false;
    }
    shownCount_ = matchCount_ = 0;
}

TreeNode *TreeController::firstMatch() const {
    TreeNode *first = nullptr;
    if (matchCount_ == 0) return first;
    walkBelow(*root_, [&first](TreeNode &node, size_t /*depth*/) {
        if (!first && node.isMatch_) first = &node;
        return !first;
    });
    return first;
}

/// Finds out anew which children of each node are shown, by which nodes are and what these are below.
void TreeController::arrangeShown() {
    shownCount_ = 0;
    const auto arrange = [](TreeNode &node) {
        node.shown_.clear();
        for (TreeNode *child : node.children_) {
            if (!child->isShown_) continue;
            child->shownRow_ = static_cast<quint32>(node.shown_.size());
            node.shown_.push_back(child);
        }
    };
    // A node is left when all below it have been.
    walkBelow(
        *root_, [](TreeNode & /*node*/, size_t /*depth*/) {},
        [&](TreeNode &node) {
            arrange(node);
            if (!node.shown_.empty()) node.isShown_ = true;
            if (node.isShown_) ++shownCount_;
        });
    arrange(*root_);
}

void TreeController::showNodes(const std::vector<TreeNode *> &nodes) {
    std::vector<TreeNode *> hidden;
    std::ranges::copy_if(nodes, std::back_inserter(hidden),
                         [this](const TreeNode *node) { return !isShown(*node); });
    if (hidden.size() <= nodesWorthShowingSingly) {
        for (TreeNode *node : hidden)
            showNode(*node);
        return;
    }
    const ManyMoves together(*this);
    for (TreeNode *node : hidden)
        node->isShown_ = true;
    ++structureRevision_;
}

void TreeController::showNode(TreeNode &node) {
    if (isShown(node)) return;
    TreeNode *top = &node;
    for (TreeNode *above = node.parent_; !isShown(*above); above = above->parent_) {
        top->isShown_ = true;
        top->shownRow_ = 0;
        ++shownCount_;
        above->shown_ = {top};
        top = above;
    }
    top->isShown_ = true;
    ++shownCount_;
    TreeNode &parent = *top->parent_;
    const size_t place = viewRowsBefore(parent, top->row());
    beginInsertRows(indexForNode(parent), static_cast<int>(place), static_cast<int>(place));
    insertShown(parent, place, {top});
    ++structureRevision_;
    endInsertRows();
}

void TreeController::numberShown(const TreeNode &parent, size_t first) {
    for (size_t row = first; row < parent.shown_.size(); ++row)
        parent.shown_[row]->shownRow_ = static_cast<quint32>(row);
}

/// How many of the children before a position views are shown.
size_t TreeController::viewRowsBefore(const TreeNode &parent, size_t position) const {
    if (!isFiltered_) return position;
    const auto row = [](const TreeNode *node) { return node->row(); };
    const auto behind = std::ranges::lower_bound(parent.shown_, position, {}, row);
    return static_cast<size_t>(std::distance(parent.shown_.begin(), behind));
}

/// Lets new nodes be shown, with all below them.
void TreeController::showAllOf(const std::vector<TreeNode *> &added) {
    for (TreeNode *node : added)
        walkTree(*node, [this](TreeNode &each, size_t /*depth*/) {
            each.isShown_ = true;
            ++shownCount_;
            each.shown_ = each.children_;
            numberShown(each, 0);
        });
}

void TreeController::insertShown(TreeNode &parent, size_t viewFirst, const std::vector<TreeNode *> &added) {
    parent.shown_.insert(parent.shown_.begin() + static_cast<qsizetype>(viewFirst), added.begin(),
                         added.end());
    numberShown(parent, viewFirst);
}

void TreeController::removeShown(TreeNode &parent, size_t viewFirst, size_t count) {
    const auto begin = parent.shown_.begin() + static_cast<qsizetype>(viewFirst);
    parent.shown_.erase(begin, begin + static_cast<qsizetype>(count));
    numberShown(parent, viewFirst);
}

}  // namespace leafwright
