#pragma once

#include "outlineview/OutlineViewDelegate.h"
#include "tree/IndexPath.h"

#include <memory>
#include <optional>

namespace leafwright {

class MyDocument;
class MyOutlineItem;

/// Answers the outline view for its document: what may be edited, what Copy copies, and what happens to
/// the three kinds of drag: outline items, a spot on a page, text of a page.
class OutlineDelegate : public OutlineViewDelegate {
public:
    /// @param document must outlive this
    explicit OutlineDelegate(MyDocument &document);
    ~OutlineDelegate() override;

    /// The kinds of data that the outline takes, in this order: items of the outline, a spot on a page, text.
    static QStringList draggedTypes();

    /// The nodes of the last drag out of the outline that are still in the tree.
    std::vector<TreeNode *> draggedNodes() const;
    /// What a drag of a spot or of text would add; null if there is none.
    const MyOutlineItem *draggedNewTOCItem() const { return draggedNewTOCItem_.get(); }

    void copySelectedItemsToClipboard(QObject *sender) override;
    bool shouldEditTableColumn(int column, const TreeNode &node) override;
    bool outlineViewWriteItems(OutlineView &view, const std::vector<TreeNode *> &nodes,
                               QMimeData &pasteboard) override;
    DragOperation outlineViewValidateDrop(OutlineView &view, const DraggingInfo &info, TreeNode *proposedItem,
                                          int proposedChildIndex) override;
    bool outlineViewAcceptDrop(OutlineView &view, const DraggingInfo &info, TreeNode *item,
                               int childIndex) override;

private:
    DragOperation validatePoint(const QMimeData &pasteboard);
    DragOperation validateText();
    DragOperation validateItems(const QObject *source, const TreeNode *proposedItem) const;
    bool acceptPoint(const TreeNode *item, int childIndex);
    bool acceptOther(const TreeNode *item, int childIndex);
    static IndexPath insertionPath(const TreeNode *item, size_t childIndex);
    bool insertDraggedItem(const IndexPath &path);

    MyDocument &document_;
    std::optional<std::vector<std::weak_ptr<TreeNode>>> draggedNodes_;
    std::unique_ptr<MyOutlineItem> draggedNewTOCItem_;
};

/// Whether a node is another, or below it. Never for null.
bool isDescendantOfNode(const TreeNode *node, const TreeNode &ancestor);

/// The text as a title: every newline character becomes one blank.
QString titleOfDraggedText(const QString &text);

}  // namespace leafwright
