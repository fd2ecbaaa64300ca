#include "tree/TreeController.h"

#include <algorithm>

// What views ask of a TreeController.

namespace leafwright {

namespace {

QString elsewhere(const MyOutlineItem &item) {
    const auto &action = item.entry().action;
    if (!action || std::holds_alternative<PageTarget>(item.target())) return {};
    return QStringLiteral("→ ") + action->target.value_or(action->type);
}

}  // namespace

TreeNode &TreeController::nodeForIndex(const QModelIndex &index) const {
    if (!index.isValid()) return *root_;
    Q_ASSERT(index.model() == this);
    return *static_cast<TreeNode *>(index.internalPointer());
}

QModelIndex TreeController::indexForNode(const TreeNode &node, int column) const {
    if (&node == root_ || !isShown(node)) return {};
    return createIndex(static_cast<int>(viewRow(node)), column, &node);
}

QModelIndex TreeController::index(int row, int column, const QModelIndex &parent) const {
    if (row < 0 || row >= rowCount(parent) || column < 0 || column > PageColumn) return {};
    return createIndex(row, column, shownChildren(nodeForIndex(parent))[static_cast<size_t>(row)]);
}

QModelIndex TreeController::parent(const QModelIndex &index) const {
    const TreeNode *parent = nodeForIndex(index).parent_;
    return parent ? indexForNode(*parent) : QModelIndex();
}

QModelIndex TreeController::sibling(int row, int column, const QModelIndex &index) const {
    if (!index.isValid() || column < 0 || column > PageColumn) return {};
    // By far the most common question needs no look at the parent.
    if (row == index.row()) return createIndex(row, column, index.internalPointer());
    return this->index(row, column, parent(index));
}

int TreeController::rowCount(const QModelIndex &parent) const {
    if (parent.column() > TitleColumn) return 0;
    return static_cast<int>(shownChildren(nodeForIndex(parent)).size());
}

int TreeController::columnCount(const QModelIndex & /*parent*/) const {
    return PageColumn + 1;
}

bool TreeController::hasChildren(const QModelIndex &parent) const {
    return rowCount(parent) > 0;
}

Qt::ItemFlags TreeController::flags(const QModelIndex &index) const {
    // Beside all items is a place to drop, too: the end of the top level.
    if (!index.isValid()) return Qt::ItemIsDropEnabled;
    Qt::ItemFlags flags =
        Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
    if (!shouldEdit_ || shouldEdit_(index.column(), nodeForIndex(index))) flags |= Qt::ItemIsEditable;
    return flags;
}

QVariant TreeController::data(const QModelIndex &index, int role) const {
    if (!index.isValid()) return {};
    const MyOutlineItem &item = *nodeForIndex(index).representedObject();
    const bool tellsMore =
        role == ElsewhereRole || role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole;
    if (tellsMore && index.column() == TitleColumn) return elsewhere(item);
    const bool isLost = index.column() == PageColumn && isLabelLost_ && isLabelLost_(item);
    if (role == LostLabelRole) return isLost;
    if (tellsMore && isLost) return tr("No page has this label. The entry leads to the first page.");
    if (role != Qt::DisplayRole && role != Qt::EditRole) return {};
    return index.column() == TitleColumn ? item.pageTitle() : item.pageLabel();
}

bool TreeController::setData(const QModelIndex &index, const QVariant &value, int role) {
    if (!index.isValid() || role != Qt::EditRole || !flags(index).testFlag(Qt::ItemIsEditable)) return false;
    TreeNode &node = nodeForIndex(index);
    MyOutlineItem &item = *node.representedObject();
    const QString text = value.toString();
    const QString &old = index.column() == TitleColumn ? item.pageTitle() : item.pageLabel();
    // An absent label that is left empty stays absent: the entry goes on leading elsewhere.
    if (text == old) return true;
    const QString present = text.isNull() ? QStringLiteral("") : text;
    if (index.column() == TitleColumn) {
        const OutlineEdits::Transaction edit(edits_, QStringLiteral("setTitle"));
        edits_.setPageTitle(item, present);
    } else {
        const OutlineEdits::Transaction edit(edits_, QStringLiteral("setPageLabel"));
        edits_.setPageLabel(item, present);
    }
    Q_EMIT itemEdited(&node, index.column());
    return true;
}

QVariant TreeController::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    if (section == TitleColumn) return tr("Title");
    if (section == PageColumn) return tr("Page");
    return {};
}

QMimeData *TreeController::mimeData(const QModelIndexList &indexes) const {
    if (!dragHandler_ || indexes.isEmpty()) return nullptr;
    std::vector<TreeNode *> nodes;
    for (const QModelIndex &index : indexes)
        nodes.push_back(&nodeForIndex(index));
    inTreeOrder(nodes);
    auto data = std::make_unique<QMimeData>();
    return dragHandler_->writeNodes(nodes, *data) ? data.release() : nullptr;
}

Qt::DropActions TreeController::supportedDropActions() const {
    return Qt::CopyAction | Qt::MoveAction;
}

Qt::DropActions TreeController::supportedDragActions() const {
    return Qt::MoveAction;
}

/// Before which of all children something goes that is dropped before one of those that are shown; behind the
/// last of these, right behind it.
int TreeController::childIndexAt(int viewRow, const QModelIndex &parent) const {
    if (!isFiltered_ || viewRow < 0) return viewRow;
    const TreeNode &node = nodeForIndex(parent);
    const auto row = static_cast<size_t>(viewRow);
    if (row < node.shown_.size()) return static_cast<int>(node.shown_[row]->row());
    return node.shown_.empty() ? static_cast<int>(node.childCount())
                               : static_cast<int>(node.shown_.back()->row()) + 1;
}

bool TreeController::canDropMimeData(const QMimeData *data, Qt::DropAction /*action*/, int row,
                                     int /*column*/, const QModelIndex &parent) const {
    const auto isOffered = [data](const QString &type) { return data->hasFormat(type); };
    if (!dragHandler_ || !data || std::none_of(mimeTypes_.begin(), mimeTypes_.end(), isOffered)) return false;
    return dragHandler_->canDrop(*data, parent.isValid() ? &nodeForIndex(parent) : nullptr,
                                 childIndexAt(row, parent));
}

bool TreeController::dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                                  const QModelIndex &parent) {
    if (!canDropMimeData(data, action, row, column, parent)) return false;
    return dragHandler_->drop(*data, parent.isValid() ? &nodeForIndex(parent) : nullptr,
                              childIndexAt(row, parent));
}

}  // namespace leafwright
