#include "tree/TreeController.h"

#include <QSignalBlocker>

#include <algorithm>

// The selection of a TreeController.

namespace leafwright {

namespace {

/// As many pairs of old and new ranges may be compared to tell what changed between two selections.
constexpr qsizetype rangePairsWorthComparing = 1'000'000;

}  // namespace

std::vector<TreeNode *> TreeController::selectedNodes() const {
    std::vector<TreeNode *> nodes;
    const QItemSelection selection = selectionModel_.selection();
    for (const QItemSelectionRange &range : selection) {
        if (!range.isValid()) continue;
        const TreeNode &parent = nodeForIndex(range.parent());
        const auto first = parent.children_.begin() + range.top();
        nodes.insert(nodes.end(), first, first + range.height());
    }
    if (selection.size() > 1) inTreeOrder(nodes);
    return nodes;
}

/// Sorts nodes, and lets each stay once.
void TreeController::inTreeOrder(std::vector<TreeNode *> &nodes) const {
    // Many nodes are in order sooner by walking the whole tree than by sorting paths.
    if (nodes.size() > nodeCount() / 16) {
        std::unordered_set<const TreeNode *> wanted(nodes.begin(), nodes.end());
        nodes.clear();
        std::vector<TreeNode *> pending{root_};
        while (!pending.empty() && nodes.size() < wanted.size()) {
            TreeNode *node = pending.back();
            pending.pop_back();
            if (wanted.contains(node)) nodes.push_back(node);
            pending.insert(pending.end(), node->children_.rbegin(), node->children_.rend());
        }
        return;
    }
    std::vector<std::pair<IndexPath, TreeNode *>> byPath;
    byPath.reserve(nodes.size());
    for (TreeNode *node : nodes)
        byPath.emplace_back(node->indexPath(), node);
    std::sort(byPath.begin(), byPath.end());
    byPath.erase(std::unique(byPath.begin(), byPath.end()), byPath.end());
    nodes.clear();
    for (const auto &[path, node] : byPath)
        nodes.push_back(node);
}

std::optional<IndexPath> TreeController::selectionIndexPath() const {
    const std::vector<TreeNode *> nodes = selectedNodes();
    if (nodes.empty()) return std::nullopt;
    return nodes.front()->indexPath();
}

std::vector<IndexPath> TreeController::selectionIndexPaths() const {
    std::vector<IndexPath> paths;
    for (const TreeNode *node : selectedNodes())
        paths.push_back(node->indexPath());
    return paths;
}

void TreeController::setSelectionIndexPaths(const std::vector<IndexPath> &paths) {
    std::vector<TreeNode *> nodes;
    nodes.reserve(paths.size());
    for (const IndexPath &path : paths) {
        TreeNode *node = descendantNodeAtIndexPath(path);
        if (node && node != root_) nodes.push_back(node);
    }
    setSelectedNodes(nodes);
}

void TreeController::setSelectedNodes(const std::vector<TreeNode *> &nodes) {
    const QItemSelection selection = selectionOf(nodes);
    // Qt compares every old range with every new one. With too many, two signals are told instead of one.
    if (selection.size() * selectionModel_.selection().size() > rangePairsWorthComparing)
        selectionModel_.clearSelection();
    selectionModel_.select(selection, QItemSelectionModel::ClearAndSelect);
    if (!selection.isEmpty())
        selectionModel_.setCurrentIndex(selection.first().topLeft(), QItemSelectionModel::NoUpdate);
}

/// Whole rows; neighbours that follow each other in the list are one range.
QItemSelection TreeController::selectionOf(const std::vector<TreeNode *> &nodes) const {
    QItemSelection selection;
    std::unordered_set<const TreeNode *> seen;
    const TreeNode *first = nullptr;
    const TreeNode *last = nullptr;
    const auto endRange = [&] {
        if (first) selection.append({indexForNode(*first), indexForNode(*last, PageColumn)});
    };
    for (const TreeNode *node : nodes) {
        if (!seen.insert(node).second) continue;
        if (!last || node->parent_ != last->parent_ || node->row() != last->row() + 1) {
            endRange();
            first = node;
        }
        last = node;
    }
    endRange();
    return selection;
}

/// Takes the selection away without a word while nodes move. Qt would keep it by itself, but it takes long
/// about a large one, and loses one of all the children of a node when one of them moves elsewhere.
void TreeController::putSelectionAside() {
    selectionAside_ = selectedNodes();
    const QSignalBlocker blocker(&selectionModel_);
    selectionModel_.clearSelection();
}

void TreeController::restoreSelection() {
    const QSignalBlocker blocker(&selectionModel_);
    // In what was tree order before, which still finds most neighbours side by side.
    selectionModel_.select(selectionOf(selectionAside_), QItemSelectionModel::ClearAndSelect);
    selectionAside_.clear();
}

}  // namespace leafwright
