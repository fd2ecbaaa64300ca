#pragma once

#include <QMimeData>
#include <QObject>
#include <QString>

#include <vector>

namespace leafwright {

class OutlineView;
class TreeNode;

/// What a drag over an outline view is, as far as the answers to it depend on that.
struct DraggingInfo {
    /// What is dragged; never null, not owned.
    const QMimeData *draggingPasteboard = nullptr;
    /// Where the drag began; null for another program. An outline view names itself here.
    const QObject *draggingSource = nullptr;
    /// The source's class name, without a namespace; empty without a source.
    QString draggingSourceClassName;
};

/// What would happen to something dragged.
enum class DragOperation { None, Generic };

/// Answers what an OutlineView leaves open. What an implementation does not override, it does not respond to:
/// cells may be edited, shortened texts are shown in full, nothing is copied, dragged or dropped.
class OutlineViewDelegate {
public:
    virtual ~OutlineViewDelegate() = default;

    virtual void copySelectedItemsToClipboard(QObject * /*sender*/) {}
    virtual bool shouldEditTableColumn(int /*column*/, const TreeNode & /*node*/) { return true; }
    /// Whether a text that its cell has no room for is shown in full when the mouse rests on it.
    virtual bool shouldShowCellExpansion(int /*column*/, const TreeNode & /*node*/) { return true; }

    /// A drag begins: puts nodes, given in row order, on the pasteboard. @return false for no drag
    virtual bool outlineViewWriteItems(OutlineView & /*view*/, const std::vector<TreeNode *> & /*nodes*/,
                                       QMimeData & /*pasteboard*/) {
        return false;
    }
    /// Asked whenever a drag moves.
    /// @param proposedItem the parent of the place under the mouse; null for the top level
    /// @param proposedChildIndex the position among its children before which it is; -1 for the parent
    /// itself, or, at the top level, for beside all items
    virtual DragOperation outlineViewValidateDrop(OutlineView & /*view*/, const DraggingInfo & /*info*/,
                                                  TreeNode * /*proposedItem*/, int /*proposedChildIndex*/) {
        return DragOperation::None;
    }
    /// Asked when the mouse is let go, right after a validation for the same place.
    /// @return whether something was dropped
    virtual bool outlineViewAcceptDrop(OutlineView & /*view*/, const DraggingInfo & /*info*/,
                                       TreeNode * /*item*/, int /*childIndex*/) {
        return false;
    }
};

}  // namespace leafwright
