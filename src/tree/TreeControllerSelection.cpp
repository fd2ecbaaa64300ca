#include "model/TreeWalk.h"
#include "tree/TreeController.h"

#include <QSignalBlocker>

#include <algorithm>
#include <utility>

// The selection of a TreeController.

namespace leafwright {

namespace {

/// As many pairs of old and new ranges may be compared to tell what changed between two selections.
constexpr qsizetype rangePairsWorthComparing = 1'000'000;

}  // namespace

const TreeController::Selection &TreeController::selection() const {
    if (selection_.isCurrent && selection_.structureRevision == structureRevision_) return selection_;
    selection_ = {{}, selection_.mark + 1, structureRevision_, true};
    std::vector<TreeNode *> &nodes = selection_.nodes;
    const QItemSelection ranges = selectionModel_.selection();
    for (const QItemSelectionRange &range : ranges) {
        if (!range.isValid()) continue;
        const TreeNode &parent = nodeForIndex(range.parent());
        const auto first = shownChildren(parent).begin() + range.top();
        for (auto next = first; next != first + range.height(); ++next)
            if (std::exchange((*next)->selectionMark_, selection_.mark) != selection_.mark)
                nodes.push_back(*next);
    }
    if (ranges.size() > 1) putInTreeOrder(nodes, &TreeNode::selectionMark_, selection_.mark);
    return selection_;
}

/// Sorts nodes, and lets each stay once.
void TreeController::inTreeOrder(std::vector<TreeNode *> &nodes) const {
    ++lastOrderMark_;
    std::erase_if(nodes, [this](const TreeNode *node) {
        return std::exchange(node->orderMark_, lastOrderMark_) == lastOrderMark_;
    });
    putInTreeOrder(nodes, &TreeNode::orderMark_, lastOrderMark_);
}

/// Sorts nodes that are listed once, all of which have a mark that no other has.
void TreeController::putInTreeOrder(std::vector<TreeNode *> &nodes, quint32 TreeNode::*mark,
                                    quint32 value) const {
    // Many nodes are in order sooner by walking the whole tree than by sorting paths.
    if (nodes.size() > nodeCount() / 16) {
        const size_t count = nodes.size();
        nodes.clear();
        walkTree(*root_, [&](TreeNode &node, size_t /*depth*/) {
            if (node.*mark == value) nodes.push_back(&node);
            return nodes.size() < count;
        });
        return;
    }
    std::vector<std::pair<IndexPath, TreeNode *>> byPath;
    byPath.reserve(nodes.size());
    for (TreeNode *node : nodes)
        byPath.emplace_back(node->indexPath(), node);
    std::sort(byPath.begin(), byPath.end());
    nodes.clear();
    for (const auto &[path, node] : byPath)
        nodes.push_back(node);
}

std::optional<IndexPath> TreeController::selectionIndexPath() const {
    const std::vector<TreeNode *> &nodes = selection().nodes;
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
    std::vector<TreeNode *> shown = nodes;
    if (isFiltered_) std::erase_if(shown, [this](const TreeNode *node) { return !isShown(*node); });
    const QItemSelection selection = selectionOf(shown);
    // Qt compares every old range with every new one. With too many, two signals are told instead of one.
    if (selection.size() * selectionModel_.selection().size() > rangePairsWorthComparing)
        selectionModel_.clearSelection();
    selectionModel_.select(selection, QItemSelectionModel::ClearAndSelect);
    if (!shown.empty())
        selectionModel_.setCurrentIndex(indexForNode(*shown.front()), QItemSelectionModel::NoUpdate);
}

/// Whole rows; neighbours are one range, wherever they stand in the list. Every range costs time whenever
/// the selection is asked or drawn.
QItemSelection TreeController::selectionOf(const std::vector<TreeNode *> &nodes) const {
    ++lastOrderMark_;
    for (const TreeNode *node : nodes)
        node->orderMark_ = lastOrderMark_;
    QItemSelection selection;
    for (const TreeNode *node : nodes) {
        const std::vector<TreeNode *> &siblings = shownChildren(*node->parent_);
        const size_t row = viewRow(*node);
        // What is in a range has no mark any more.
        size_t first = row;
        size_t end = row;
        while (end < siblings.size() && siblings[end]->orderMark_ == lastOrderMark_)
            siblings[end++]->orderMark_ = 0;
        if (end == row) continue;
        while (first > 0 && siblings[first - 1]->orderMark_ == lastOrderMark_)
            siblings[--first]->orderMark_ = 0;
        selection.append({indexForNode(*siblings[first]), indexForNode(*siblings[end - 1], PageColumn)});
    }
    return selection;
}

/// Takes the selection away without a word while nodes move. Qt would keep it by itself, but it takes long
/// about a large one, and loses one of all the children of a node when one of them moves elsewhere.
void TreeController::putSelectionAside() {
    selectionAside_ = selectedNodes();
    const QSignalBlocker blocker(&selectionModel_);
    selectionModel_.clearSelection();
    selection_.isCurrent = false;
}

void TreeController::restoreSelection() {
    const QSignalBlocker blocker(&selectionModel_);
    selectionModel_.select(selectionOf(selectionAside_), QItemSelectionModel::ClearAndSelect);
    selectionAside_.clear();
    selection_.isCurrent = false;
}

}  // namespace leafwright
