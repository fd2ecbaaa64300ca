#pragma once

#include "tree/IndexPath.h"

#include <memory>
#include <vector>

namespace leafwright {

class MyOutlineItem;

/// A place in the tree that a TreeController arranges: wraps one outline item. The controller owns the nodes
/// and hands out plain pointers, good for as long as the item stays in the tree. Whoever keeps a node for
/// later keeps `weak_from_this()`, which has expired once the item has left. A move keeps the node.
class TreeNode : public std::enable_shared_from_this<TreeNode> {
    struct Key {
        explicit Key() = default;
    };
    friend class TreeController;

public:
    /// Made by the controller alone.
    TreeNode(Key /*key*/, MyOutlineItem &item) : representedObject_(&item) {}
    ~TreeNode() = default;
    Q_DISABLE_COPY_MOVE(TreeNode)

    /// The item that stands here; the invisible root's is the root item. Null only for a node that someone
    /// kept alive beyond its time in the tree.
    MyOutlineItem *representedObject() const { return representedObject_; }
    /// Null for the invisible root and for a node that has left the tree.
    TreeNode *parentNode() const { return parent_; }
    const std::vector<TreeNode *> &childNodes() const { return children_; }
    size_t childCount() const { return children_.size(); }

    /// The position among its siblings, 0-based; 0 for the invisible root. Costs nothing unless siblings
    /// came or went since the last question, which numbers them anew.
    size_t row() const;
    /// The empty path for the invisible root.
    IndexPath indexPath() const;
    /// 0 for the invisible root, 1 for a top-level node.
    size_t depth() const;
    /// True of the node itself, too.
    bool isDescendantOf(const TreeNode &ancestor) const;

private:
    /// Says that the children at this position and behind it may be numbered wrongly.
    void childrenChangedFrom(size_t position);
    /// Numbers the children from a position up to, but not including, another; all before must know theirs.
    void numberRows(size_t begin, size_t end) const;

    // Walks over a hundred thousand nodes wait for memory: what they look at stands together, and is small.
    MyOutlineItem *representedObject_;
    TreeNode *parent_ = nullptr;
    std::vector<TreeNode *> children_;
    mutable quint32 row_ = 0;            ///< Right if the parent has this very node there.
    mutable quint32 orderMark_ = 0;      ///< Of the list that it was in last when one was put in order.
    mutable quint32 selectionMark_ = 0;  ///< Of the selection that it was in last.
    mutable quint32 numberedRows_ = 0;   ///< So many children know their rows.
    quint32 shownRow_ = 0;               ///< Among the shown children of the parent.
    bool isShown_ = false;               ///< By a filter.
    bool isMatch_ = false;               ///< Shown by it for its own sake.
    std::vector<TreeNode *> shown_;      ///< Those of the children that a filter shows.
};

}  // namespace leafwright
