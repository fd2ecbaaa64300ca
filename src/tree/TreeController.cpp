#include "tree/TreeController.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace leafwright {

namespace {

constexpr QLatin1String titleKey("pageTitle");
constexpr QLatin1String labelKey("pageLabel");
constexpr QLatin1String childrenKey("children");

/// The least count, up to the limit, for which a condition does not hold that holds for all smaller ones and
/// for no larger one.
template <typename Condition>
size_t countWhile(size_t limit, Condition &&holds) {
    size_t count = 0;
    while (count < limit) {
        const size_t middle = count + (limit - count) / 2;
        if (holds(middle)) {
            count = middle + 1;
        } else {
            limit = middle;
        }
    }
    return count;
}

// Every change of an item's children is told by itself, and each is one item that came, one that left, or a
// whole list in place of another, with none in common since a list owns what is in it. So the two lists
// differ in one stretch, and its ends are found without looking at each of a hundred thousand siblings.

/// How many elements the two lists have in common at the beginning.
size_t commonPrefix(const std::vector<TreeNode *> &nodes, const MyOutlineItem::Children &items) {
    return countWhile(std::min(nodes.size(), items.size()),
                      [&](size_t i) { return nodes[i]->representedObject() == items[i].get(); });
}

/// How many they have in common at the end, without those at the beginning.
size_t commonSuffix(const std::vector<TreeNode *> &nodes, const MyOutlineItem::Children &items,
                    size_t prefix) {
    return countWhile(std::min(nodes.size(), items.size()) - prefix, [&](size_t i) {
        return nodes[nodes.size() - 1 - i]->representedObject() == items[items.size() - 1 - i].get();
    });
}

}  // namespace

TreeController::TreeController(OutlineEdits &edits, QObject *parent)
    : QAbstractItemModel(parent),
      edits_(edits),
      root_(makeNode(edits.root(), nullptr, 0)),
      selectionModel_(this) {
    edits_.setMoveObserver(this);
    makeNodesBelow(*root_);
    const auto selectionChanged = [this] { selection_.isCurrent = false; };
    connect(&selectionModel_, &QItemSelectionModel::selectionChanged, this, selectionChanged);
    connect(&selectionModel_, &QItemSelectionModel::modelChanged, this, selectionChanged);
    // The first to be called, so that all others find the selection in its place.
    connect(this, &QAbstractItemModel::rowsMoved, this, &TreeController::restoreSelection);
}

TreeController::~TreeController() {
    edits_.setMoveObserver(nullptr);
    for (const auto &[item, node] : nodes_)
        node->representedObject_->removeObserver(this);
}

TreeNode *TreeController::descendantNodeAtIndexPath(const IndexPath &path) const {
    TreeNode *node = root_;
    for (size_t level = 0; level < path.length(); ++level) {
        const size_t position = path.indexAtPosition(level);
        if (position >= node->childCount()) return nullptr;
        node = node->children_[position];
    }
    return node;
}

TreeNode *TreeController::nodeForItem(const MyOutlineItem &item) const {
    const auto found = nodes_.find(&item);
    return found == nodes_.end() ? nullptr : found->second.get();
}

TreeNode &TreeController::insertObjectAtArrangedObjectIndexPath(std::unique_ptr<MyOutlineItem> object,
                                                                const IndexPath &path) {
    const size_t position = path.lastIndex();
    const TreeNode *parent = descendantNodeAtIndexPath(path.indexPathByRemovingLastIndex());
    if (!parent) throw std::out_of_range("no node to insert below");
    const MyOutlineItem &item = *object;
    edits_.insert(*parent->representedObject_, position, std::move(object));
    TreeNode *node = nodeForItem(item);
    setSelectedNodes({node});
    return *node;
}

void TreeController::removeObjectAtArrangedObjectIndexPath(const IndexPath &path) {
    const TreeNode *node = path.isEmpty() ? nullptr : descendantNodeAtIndexPath(path);
    if (!node) throw std::out_of_range("no node to remove");
    edits_.remove(*node->parent_->representedObject_, path.lastIndex());
}

void TreeController::willChangeValueForKey(const MyOutlineItem & /*item*/, QLatin1String /*key*/) {}

void TreeController::didChangeValueForKey(const MyOutlineItem &item, QLatin1String key) {
    if (key == titleKey) followText(*nodeForItem(item), TitleColumn);
    if (key == labelKey) followText(*nodeForItem(item), PageColumn);
    if (key == QLatin1String("entry")) followLook(*nodeForItem(item));
    if (key == childrenKey && !movingItems_) followChildren(*nodeForItem(item));
}

void TreeController::followText(const TreeNode &node, int column) {
    if (&node == root_ || !isShown(node)) return;
    const QModelIndex index = indexForNode(node, column);
    Q_EMIT dataChanged(index, index, {Qt::DisplayRole, Qt::EditRole});
}

void TreeController::followLook(const TreeNode &node) {
    if (&node == root_ || !isShown(node)) return;
    const QModelIndex index = indexForNode(node);
    Q_EMIT dataChanged(
        index, index,
        {ElsewhereRole, Qt::ToolTipRole, Qt::AccessibleDescriptionRole, Qt::FontRole, Qt::ForegroundRole});
}

void TreeController::followChildren(TreeNode &node) {
    const MyOutlineItem::Children &items = node.representedObject_->children();
    const size_t prefix = commonPrefix(node.children_, items);
    const size_t suffix = commonSuffix(node.children_, items, prefix);
    const size_t leaving = node.childCount() - prefix - suffix;
    if (leaving > 0) removeNodes(node, prefix, leaving);
    const size_t coming = items.size() - prefix - suffix;
    if (coming > 0) insertNodes(node, prefix, coming);
}

void TreeController::insertNodes(TreeNode &parent, size_t first, size_t count) {
    const MyOutlineItem::Children &items = parent.representedObject_->children();
    std::vector<TreeNode *> added;
    added.reserve(count);
    for (size_t row = first; row < first + count; ++row) {
        added.push_back(makeNode(*items[row], &parent, row));
        makeNodesBelow(*added.back());
    }
    const size_t viewFirst = viewRowsBefore(parent, first);
    const bool isTold = isShown(parent);
    if (isTold)
        beginInsertRows(indexForNode(parent), static_cast<int>(viewFirst),
                        static_cast<int>(viewFirst + count - 1));
    parent.children_.insert(parent.children_.begin() + static_cast<qsizetype>(first), added.begin(),
                            added.end());
    parent.childrenChangedFrom(first);
    if (isFiltered_) {
        showAllOf(added);
        insertShown(parent, viewFirst, added);
    }
    ++structureRevision_;
    if (isTold) {
        endInsertRows();
    } else {
        showNode(parent);
    }
}

void TreeController::removeNodes(TreeNode &parent, size_t first, size_t count) {
    const size_t viewFirst = viewRowsBefore(parent, first);
    const size_t viewCount = viewRowsBefore(parent, first + count) - viewFirst;
    if (viewCount > 0)
        beginRemoveRows(indexForNode(parent), static_cast<int>(viewFirst),
                        static_cast<int>(viewFirst + viewCount - 1));
    const auto begin = parent.children_.begin() + static_cast<qsizetype>(first);
    const auto end = begin + static_cast<qsizetype>(count);
    const std::vector<TreeNode *> tops(begin, end);
    parent.children_.erase(begin, end);
    parent.childrenChangedFrom(first);
    if (isFiltered_) removeShown(parent, viewFirst, viewCount);
    const std::vector<std::shared_ptr<TreeNode>> gone = forget(tops);
    ++structureRevision_;
    if (viewCount > 0) endRemoveRows();
    if (root_->children_.empty()) Q_EMIT emptied();
}

TreeNode *TreeController::makeNode(MyOutlineItem &item, TreeNode *parent, size_t row) {
    const PooledAllocator<TreeNode> sameMemory(nodes_.get_allocator());
    auto node = std::allocate_shared<TreeNode>(sameMemory, TreeNode::Key(), item);
    node->parent_ = parent;
    node->row_ = static_cast<quint32>(row);
    item.addObserver(this);
    return nodes_.insert_or_assign(&item, std::move(node)).first->second.get();
}

void TreeController::makeNodesBelow(TreeNode &top) {
    // A tree as deep as a hostile file likes must not become a chain of calls.
    std::vector<TreeNode *> pending{&top};
    while (!pending.empty()) {
        TreeNode *node = pending.back();
        pending.pop_back();
        const MyOutlineItem::Children &items = node->representedObject_->children();
        node->children_.reserve(items.size());
        for (const std::unique_ptr<MyOutlineItem> &item : items) {
            node->children_.push_back(makeNode(*item, node, node->children_.size()));
            if (!item->children().empty()) pending.push_back(node->children_.back());
        }
        node->numberedRows_ = static_cast<quint32>(items.size());
    }
}

std::vector<std::shared_ptr<TreeNode>> TreeController::forget(const std::vector<TreeNode *> &tops) {
    std::vector<std::shared_ptr<TreeNode>> gone;
    std::vector<TreeNode *> pending = tops;
    while (!pending.empty()) {
        TreeNode *node = pending.back();
        pending.pop_back();
        pending.insert(pending.end(), node->children_.begin(), node->children_.end());
        const auto entry = nodes_.find(node->representedObject_);
        gone.push_back(std::move(entry->second));
        nodes_.erase(entry);
        node->representedObject_->removeObserver(this);
        node->representedObject_ = nullptr;
        node->parent_ = nullptr;
        node->children_.clear();
        node->shown_.clear();
        if (std::exchange(node->isShown_, false)) --shownCount_;
        if (std::exchange(node->isMatch_, false)) --matchCount_;
        node->numberedRows_ = 0;
    }
    return gone;
}

}  // namespace leafwright
