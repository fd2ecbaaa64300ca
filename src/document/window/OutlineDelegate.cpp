#include "document/window/OutlineDelegate.h"

#include "categories/SelectionFont.h"
#include "categories/TextCleaning.h"
#include "categories/TreeControllerLookup.h"
#include "document/MyDocument.h"
#include "document/commands/OutlineCopy.h"
#include "outlineview/OKNSOutlineView.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"
#include "view/SpotArchive.h"

namespace leafwright {

namespace {

/// Marks a drag as one of outline items; the nodes themselves stay with the document.
const QString SIMPLE_PBOARD_TYPE = QStringLiteral("SIMPLE_PBOARD_TYPE");
/// What a drop is called among the changes of an outline.
const QString dropped = QStringLiteral("acceptDrop:");
const QString stringPasteboardType = QStringLiteral("text/plain");

}  // namespace

bool isDescendantOfNode(const TreeNode *node, const TreeNode &ancestor) {
    return node && node->isDescendantOf(ancestor);
}

QString titleOfDraggedText(const QString &text) {
    return cleanedRun(text, charactersToTrim());
}

OutlineDelegate::OutlineDelegate(MyDocument &document) : document_(document) {}

OutlineDelegate::~OutlineDelegate() = default;

QStringList OutlineDelegate::draggedTypes() {
    return {SIMPLE_PBOARD_TYPE, NSPOINT_PBOARD_TYPE, stringPasteboardType};
}

std::vector<TreeNode *> OutlineDelegate::draggedNodes() const {
    std::vector<TreeNode *> nodes;
    if (!draggedNodes_) return nodes;
    for (const auto &weak : *draggedNodes_)
        if (const auto node = weak.lock(); node && node->parentNode()) nodes.push_back(node.get());
    return nodes;
}

void OutlineDelegate::copySelectedItemsToClipboard(QObject * /*sender*/) {
    document_.outlineCopy().copySelectedItemsToClipboard();
}

bool OutlineDelegate::shouldEditTableColumn(int /*column*/, const TreeNode & /*node*/) {
    return !document_.lockTOCediting();
}

bool OutlineDelegate::outlineViewWriteItems(OutlineView & /*view*/, const std::vector<TreeNode *> &nodes,
                                            QMimeData &pasteboard) {
    draggedNodes_.emplace();
    for (TreeNode *node : nodes)
        draggedNodes_->push_back(node->weak_from_this());
    pasteboard.setData(SIMPLE_PBOARD_TYPE, {});
    return true;
}

DragOperation OutlineDelegate::outlineViewValidateDrop(OutlineView & /*view*/, const DraggingInfo &info,
                                                       TreeNode *proposedItem, int /*proposedChildIndex*/) {
    if (document_.isBusy()) return DragOperation::None;
    const QMimeData &pasteboard = *info.draggingPasteboard;
    if (pasteboard.hasFormat(NSPOINT_PBOARD_TYPE)) return validatePoint(pasteboard);
    if (info.draggingSourceClassName.startsWith(u"PDFView") && pasteboard.hasText()) return validateText();
    if (pasteboard.hasFormat(SIMPLE_PBOARD_TYPE)) return validateItems(info.draggingSource, proposedItem);
    return DragOperation::None;
}

DragOperation OutlineDelegate::validatePoint(const QMimeData &pasteboard) {
    draggedNewTOCItem_.reset();
    const auto spot = unarchivedSpot(pasteboard.data(NSPOINT_PBOARD_TYPE));
    if (!spot) return DragOperation::None;
    draggedNewTOCItem_ = std::make_unique<MyOutlineItem>(MyDocument::tr("New Dragged Target"),
                                                         PageTarget{spot->pageLabel, spot->point});
    return DragOperation::Generic;
}

DragOperation OutlineDelegate::validateText() {
    const auto selection = document_.pdfview()->currentSelection();
    if (!selection || selection->isEmpty()) return DragOperation::None;
    const PDFPage &page = *selection->pages().front();
    draggedNewTOCItem_ =
        std::make_unique<MyOutlineItem>(titleOfDraggedText(selection->string()),
                                        PageTarget{page.label(), topLeftPoint(*selection), page.index()});
    return DragOperation::Generic;
}

DragOperation OutlineDelegate::validateItems(const QObject *source, const TreeNode *proposedItem) const {
    for (const TreeNode *node : draggedNodes())
        if (isDescendantOfNode(proposedItem, *node)) return DragOperation::None;
    return source == document_.outlineview() ? DragOperation::Generic : DragOperation::None;
}

bool OutlineDelegate::outlineViewAcceptDrop(OutlineView & /*view*/, const DraggingInfo &info, TreeNode *item,
                                            int childIndex) {
    if (document_.isBusy()) return false;
    if (info.draggingPasteboard->hasFormat(NSPOINT_PBOARD_TYPE)) return acceptPoint(item, childIndex);
    return acceptOther(item, childIndex);
}

bool OutlineDelegate::acceptPoint(const TreeNode *item, int childIndex) {
    document_.pdfview()->setIconLocationData({});
    document_.pdfview()->setNeedsDisplay();
    if (!draggedNewTOCItem_) return false;
    if (!item || childIndex >= 0) {
        const size_t position = childIndex >= 0 ? childIndex : countOfTopLevel(document_.treecontroller());
        return insertDraggedItem(insertionPath(item, position));
    }
    MyOutlineItem &target = *item->representedObject();
    OutlineEdits &edits = document_.edits();
    const OutlineEdits::Transaction edit(edits, dropped);
    edits.setPointOnPage(target, draggedNewTOCItem_->pointOnPage());
    edits.setPageLabel(target, draggedNewTOCItem_->pageLabel());
    draggedNewTOCItem_.reset();
    return true;
}

bool OutlineDelegate::acceptOther(const TreeNode *item, int childIndex) {
    // Onto an item: in front of its children. Beside all: behind the last.
    const size_t position =
        childIndex >= 0 ? childIndex : (item ? 0 : countOfTopLevel(document_.treecontroller()));
    const IndexPath path = insertionPath(item, position);
    if (draggedNodes_) {
        const std::vector<TreeNode *> nodes = draggedNodes();
        const OutlineEdits::Transaction edit(document_.edits(), dropped, OutlineEdits::Counting::No);
        if (!document_.treecontroller().moveNodes(nodes, path)) return false;
        document_.edits().countChange();
        document_.outlineview()->revealItems(nodes);
        draggedNodes_.reset();
        return true;
    }
    return draggedNewTOCItem_ && insertDraggedItem(path);
}

IndexPath OutlineDelegate::insertionPath(const TreeNode *item, size_t childIndex) {
    return (item ? item->indexPath() : IndexPath()).indexPathByAddingIndex(childIndex);
}

bool OutlineDelegate::insertDraggedItem(const IndexPath &path) {
    const OutlineEdits::Transaction edit(document_.edits(), dropped);
    TreeNode &added =
        document_.treecontroller().insertObjectAtArrangedObjectIndexPath(std::move(draggedNewTOCItem_), path);
    document_.outlineview()->revealItems({&added});
    return true;
}

}  // namespace leafwright
