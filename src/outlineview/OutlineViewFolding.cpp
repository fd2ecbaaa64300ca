#include "model/TreeWalk.h"
#include "outlineview/OutlineView.h"

#include <QScopedValueRollback>
#include <QScrollBar>

#include <unordered_set>
#include <utility>

// What an OutlineView shows of its tree: what is folded and unfolded, and which of it is in sight.

namespace leafwright {

namespace {

/// Qt lays out what is unfolded by a call a level.
constexpr size_t deepestUnfolded = 1'000;

/// Tells which identities are in a list, each once. Asked for in the order of the list, they cost next to
/// nothing.
class IdentitySet {
public:
    explicit IdentitySet(const std::vector<quint64> &list) : list_(list) {}
    bool contains(quint64 identity) {
        if (next_ < list_.size() && list_[next_] == identity) {
            ++next_;
            return true;
        }
        if (next_ == list_.size() && members_.empty()) return false;
        if (members_.empty()) members_.insert(list_.begin(), list_.end());
        return members_.contains(identity);
    }

private:
    const std::vector<quint64> &list_;
    size_t next_ = 0;
    std::unordered_set<quint64> members_;
};

/// A view is drawn anew as a whole at its end: for large selections. Qt would look for the place of each
/// range.
class NoUpdates {
public:
    explicit NoUpdates(QWidget &view) : view_(view), wasEnabled_(view.updatesEnabled()) {
        view_.setUpdatesEnabled(false);
    }
    ~NoUpdates() { view_.setUpdatesEnabled(wasEnabled_); }
    Q_DISABLE_COPY_MOVE(NoUpdates)

private:
    QWidget &view_;
    bool wasEnabled_;
};

}  // namespace

void OutlineView::expandItem(const TreeNode &item, bool expandChildren) {
    if (!expandChildren) {
        if (!controller_->shownChildren(item).empty()) expand(controller_->indexForNode(item));
        return;
    }
    // With a layout to come, Qt notes what is unfolded instead of laying out each.
    scheduleDelayedItemsLayout();
    const size_t top = item.depth();
    walkTree(item, [&](const TreeNode &node, size_t depth) {
        const bool unfolds = !controller_->shownChildren(node).empty() && top + depth <= deepestUnfolded;
        if (unfolds) expand(controller_->indexForNode(node));
        return unfolds;
    });
}

void OutlineView::collapseItem(const TreeNode &item, bool collapseChildren) {
    if (!collapseChildren) {
        collapse(controller_->indexForNode(item));
        return;
    }
    collapseWithChildren({&item});
}

void OutlineView::collapseItems(const std::vector<TreeNode *> &items) {
    collapseWithChildren({items.begin(), items.end()});
}

void OutlineView::collapseWithChildren(const std::vector<const TreeNode *> &items) {
    scheduleDelayedItemsLayout();
    {
        const QScopedValueRollback together(foldingMany_, true);
        for (const TreeNode *item : items)
            walkTree(*item, [this](const TreeNode &node, size_t /*depth*/) {
                collapse(controller_->indexForNode(node));
            });
    }
    foldingHides(items);
}

bool OutlineView::isItemExpanded(const TreeNode &item) const {
    return !controller_->shownChildren(item).empty() && isExpanded(controller_->indexForNode(item));
}

/// Where selected items went out of sight below folded ones, these are selected instead.
void OutlineView::foldingHides(const std::vector<const TreeNode *> &folded) {
    const std::unordered_set<const TreeNode *> isFolded(folded.begin(), folded.end());
    std::unordered_set<const TreeNode *> instead;
    std::vector<TreeNode *> selection;
    const std::vector<TreeNode *> selected = controller_->selectedNodes();
    for (TreeNode *node : selected) {
        TreeNode *shown = node;
        for (TreeNode *above = node->parentNode(); above; above = above->parentNode())
            if (isFolded.contains(above)) shown = above;
        if (shown == node || instead.insert(shown).second) selection.push_back(shown);
    }
    if (!instead.empty()) controller_->setSelectedNodes(selection);
}

void OutlineView::revealItems(const std::vector<TreeNode *> &items) {
    if (items.empty()) return;
    controller_->showNodes(items);
    unfoldAbove(items);
    scrollToItems(items);
}

/// Unfolds all that items are below, down to 1,000 levels from the top.
void OutlineView::unfoldAbove(const std::vector<TreeNode *> &items) {
    std::unordered_set<const TreeNode *> seen;
    std::vector<const TreeNode *> folded;
    for (const TreeNode *item : items) {
        if (item->depth() > deepestUnfolded) continue;
        const TreeNode *above = item->parentNode();
        for (; above && above->parentNode() && seen.insert(above).second; above = above->parentNode())
            if (!isItemExpanded(*above)) folded.push_back(above);
    }
    // With a layout to come, Qt notes what is unfolded instead of laying out each.
    if (folded.size() > 1) scheduleDelayedItemsLayout();
    for (const TreeNode *node : folded)
        expandItem(*node);
}

/// Scrolls to the first of these, and to the last if there is room.
void OutlineView::scrollToItems(const std::vector<TreeNode *> &items) {
    if (items.empty()) return;
    scrollTo(controller_->indexForNode(*items.back()));
    scrollTo(controller_->indexForNode(*items.front()));
}

OutlineLook OutlineView::look() const {
    OutlineLook look;
    for (const TreeNode *node : controller_->selectedNodes())
        look.selected.push_back(node->representedObject()->identity());
    look.unfolded = unfoldedItems();
    return look;
}

/// The identities of those that are unfolded, or would be if all were shown.
std::vector<quint64> OutlineView::unfoldedItems() const {
    std::unordered_set<const TreeNode *> before;
    for (const auto &weak : unfoldedBefore_)
        if (const auto node = weak.lock()) before.insert(node.get());
    std::vector<quint64> unfolded;
    walkBelow(controller_->arrangedObjects(), [&](const TreeNode &node, size_t /*depth*/) {
        const bool isUnfolded = controller_->isFiltered() ? before.contains(&node) : isItemExpanded(node);
        if (isUnfolded) unfolded.push_back(node.representedObject()->identity());
    });
    return unfolded;
}

void OutlineView::showOnly(const std::vector<TreeNode *> &items) {
    endEditing();
    if (!controller_->isFiltered()) {
        unfoldedBefore_.clear();
        walkBelow(controller_->arrangedObjects(), [this](const TreeNode &node, size_t /*depth*/) {
            if (isItemExpanded(node)) unfoldedBefore_.push_back(node.weak_from_this());
        });
    }
    {
        const NoUpdates quiet(*this);
        controller_->setFilter(items);
    }
    std::vector<const TreeNode *> parents;
    walkBelow(controller_->arrangedObjects(), [&](const TreeNode &node, size_t depth) {
        if (!controller_->shownChildren(node).empty() && depth < deepestUnfolded) parents.push_back(&node);
        return controller_->isShown(node);
    });
    unfold(parents);
}

void OutlineView::showAll() {
    if (!controller_ || !controller_->isFiltered()) return;
    endEditing();
    {
        const NoUpdates quiet(*this);
        controller_->clearFilter();
    }
    std::vector<const TreeNode *> unfolded;
    for (const auto &weak : std::exchange(unfoldedBefore_, {}))
        if (const auto node = weak.lock(); node && node->parentNode()) unfolded.push_back(node.get());
    unfold(unfolded);
    const std::vector<TreeNode *> selected = controller_->selectedNodes();
    if (selected.empty()) return;
    unfoldAbove(selected);
    // To scroll is to lay out all rows before, which takes as long as all else.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (controller_) scrollToItems(controller_->selectedNodes());
        },
        Qt::QueuedConnection);
}

/// Unfolds items without telling of each.
void OutlineView::unfold(const std::vector<const TreeNode *> &items) {
    // With a layout to come, Qt notes what is unfolded instead of laying out each.
    scheduleDelayedItemsLayout();
    const QSignalBlocker quiet(this);
    for (const TreeNode *item : items)
        expandItem(*item);
    ++unfoldingRevision_;
}

void OutlineView::setLook(const OutlineLook &look) {
    IdentitySet selected(look.selected);
    IdentitySet unfolded(look.unfolded);
    std::vector<TreeNode *> selection;
    std::vector<const TreeNode *> otherwise;
    unfoldedBefore_.clear();
    walkBelow(controller_->arrangedObjects(), [&](TreeNode &node, size_t /*depth*/) {
        const quint64 identity = node.representedObject()->identity();
        if (selected.contains(identity)) selection.push_back(&node);
        const bool unfolds = node.childCount() > 0 && unfolded.contains(identity);
        if (controller_->isFiltered()) {
            if (unfolds) unfoldedBefore_.push_back(node.weak_from_this());
        } else if (isItemExpanded(node) != unfolds) {
            otherwise.push_back(&node);
        }
    });
    foldOtherwise(otherwise);
    if (controller_->isFiltered()) revealItems(selection);
    // What is large and stays as it is costs nothing: to select is to look at all of it several times.
    if (controller_->selectedNodes() != selection) {
        const NoUpdates quiet(*this);
        controller_->setSelectedNodes(selection);
    }
    if (!selection.empty()) scrollTo(controller_->indexForNode(*selection.front()));
}

/// Folds what is unfolded, and the other way round; what is selected stays so.
void OutlineView::foldOtherwise(const std::vector<const TreeNode *> &items) {
    // With a layout to come, Qt notes what is unfolded instead of laying out each.
    if (items.size() > 1) scheduleDelayedItemsLayout();
    const QScopedValueRollback together(foldingMany_, true);
    for (const TreeNode *item : items)
        setExpanded(controller_->indexForNode(*item), !isItemExpanded(*item));
}

void OutlineView::keepingPlace(const std::function<void()> &change) {
    executeDelayedItemsLayout();
    const int offset = visualRect(indexAt({0, 0})).top();
    std::vector<std::weak_ptr<TreeNode>> inSight;
    for (QModelIndex index = indexAt({0, 0});
         index.isValid() && visualRect(index).top() < viewport()->height(); index = indexBelow(index))
        inSight.push_back(controller_->nodeForIndex(index).weak_from_this());
    QScrollBar &bar = *verticalScrollBar();
    const int before = bar.value();
    change();
    executeDelayedItemsLayout();
    bar.setValue(before);
    for (const auto &weak : inSight) {
        const auto node = weak.lock();
        const int row = node ? rowForItem(*node) : -1;
        if (row < 0) continue;
        const int top = visualRect(controller_->indexForNode(*node)).top();
        bar.setValue(verticalScrollMode() == ScrollPerItem ? row : bar.value() + top - offset);
        return;
    }
}

}  // namespace leafwright
