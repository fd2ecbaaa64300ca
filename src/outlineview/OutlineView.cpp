#include "outlineview/OutlineView.h"

#include "outlineview/OutlineCellDelegate.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace leafwright {

namespace {

constexpr int defaultIndentation = 17;
/// Rows that the width of the page column is found from.
constexpr int rowsToMeasure = 200;

}  // namespace

OutlineView::OutlineView(QWidget *parent) : QTreeView(parent) {
    setAccessibleName(tr("Outline"));
    setIndentationPerLevel(defaultIndentation);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(ExtendedSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(EditKeyPressed | SelectedClicked);
    setExpandsOnDoubleClick(false);
    setDragDropMode(DragDrop);
    setDefaultDropAction(Qt::MoveAction);
    setDropIndicatorShown(true);
    setItemDelegate(new OutlineCellDelegate(this));
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    header()->setResizeContentsPrecision(rowsToMeasure);
    const auto unfoldingChanged = [this] { ++unfoldingRevision_; };
    connect(this, &QTreeView::expanded, this, unfoldingChanged);
    connect(this, &QTreeView::collapsed, this, unfoldingChanged);
    connect(this, &QTreeView::collapsed, this, [this](const QModelIndex &index) {
        if (!foldingMany_) foldingHides({&controller_->nodeForIndex(index)});
    });
    connect(this, &QTreeView::doubleClicked, this, [this](const QModelIndex &index) {
        clickedCell_ = index;
        Q_EMIT doubleAction(clickedRow(), clickedColumn(), clickModifiers_);
    });
}

OutlineView::~OutlineView() {
    setTreeController(nullptr);
}

void OutlineView::setPlaceholderText(const QString &text) {
    placeholderText_ = text;
    viewport()->update();
}

void OutlineView::paintEvent(QPaintEvent *event) {
    // Qt's mark stays where the drag was allowed last. It also says where drops go, so it is back at once.
    setDropIndicatorShown(dropPosition_.has_value());
    QTreeView::paintEvent(event);
    setDropIndicatorShown(true);
    QPainter painter(viewport());
    drawDropPlace(painter);
    if (!isEnabled() || !controller_ || controller_->rowCount({}) > 0) return;
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const int margin = 2 * fontMetrics().height();
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignCenter | Qt::TextWordWrap,
                     controller_->isFiltered() ? tr("No entry has this text.") : placeholderText_);
}

void OutlineView::setTreeController(TreeController *controller) {
    if (controller_) controller_->setDragHandler(nullptr);
    controller_ = controller;
    rows_ = {};
    setModel(controller);
    if (!controller) return;
    const QItemSelectionModel *unused = selectionModel();
    setSelectionModel(controller->selectionModel());
    delete unused;
    controller->setDragHandler(this);
    controller->setMimeTypes(draggedTypes_);
    header()->setSectionResizeMode(TreeController::TitleColumn, QHeaderView::Stretch);
    header()->setSectionResizeMode(TreeController::PageColumn, QHeaderView::ResizeToContents);
}

const OutlineView::Rows &OutlineView::rows() const {
    const quint64 structure = controller_ ? controller_->structureRevision() : 0;
    if (rows_.structureRevision == structure && rows_.unfoldingRevision == unfoldingRevision_) return rows_;
    rows_ = {{}, {}, structure, unfoldingRevision_};
    if (!controller_) return rows_;
    std::vector<TreeNode *> pending;  // the next at the end
    const auto addChildren = [&](const TreeNode &node) {
        const std::vector<TreeNode *> &children = controller_->shownChildren(node);
        pending.insert(pending.end(), children.rbegin(), children.rend());
    };
    addChildren(controller_->arrangedObjects());
    rows_.rowOfNode.reserve(pending.size());
    while (!pending.empty()) {
        TreeNode *node = pending.back();
        pending.pop_back();
        rows_.rowOfNode.emplace(node, static_cast<int>(rows_.nodes.size()));
        rows_.nodes.push_back(node);
        if (isItemExpanded(*node)) addChildren(*node);
    }
    return rows_;
}

int OutlineView::numberOfRows() const {
    return static_cast<int>(rows().nodes.size());
}

TreeNode *OutlineView::itemAtRow(int row) const {
    if (row < 0 || row >= numberOfRows()) return nullptr;
    return rows().nodes[static_cast<size_t>(row)];
}

int OutlineView::rowForItem(const TreeNode &item) const {
    const auto &rowOfNode = rows().rowOfNode;
    const auto found = rowOfNode.find(&item);
    return found == rowOfNode.end() ? -1 : found->second;
}

std::vector<int> OutlineView::selectedRows() const {
    std::vector<int> selected;
    if (!controller_) return selected;
    for (const TreeNode *node : controller_->selectedNodes()) {
        const int row = rowForItem(*node);
        if (row >= 0) selected.push_back(row);
    }
    return selected;
}

bool OutlineView::hasSelectedRows() const {
    if (!controller_) return false;
    const std::vector<TreeNode *> nodes = controller_->selectedNodes();
    return std::ranges::any_of(nodes, [this](const TreeNode *node) { return hasRow(*node); });
}

TreeNode *OutlineView::onlySelectedItem() const {
    TreeNode *only = nullptr;
    if (!controller_) return only;
    for (TreeNode *node : controller_->selectedNodes()) {
        if (!hasRow(*node)) continue;
        if (only) return nullptr;
        only = node;
    }
    return only;
}

/// What rowForItem() says, without numbering all rows for it.
bool OutlineView::hasRow(const TreeNode &item) const {
    if (!controller_->isShown(item)) return false;
    for (const TreeNode *above = item.parentNode(); above && above->parentNode(); above = above->parentNode())
        if (!isItemExpanded(*above)) return false;
    return true;
}

int OutlineView::selectedRow() const {
    const std::vector<int> selected = selectedRows();
    if (selected.empty()) return -1;
    const int current = currentIndex().isValid() ? rowForItem(controller_->nodeForIndex(currentIndex())) : -1;
    return std::binary_search(selected.begin(), selected.end(), current) ? current : selected.back();
}

void OutlineView::selectRowIndexes(const std::vector<int> &rows, bool byExtendingSelection) {
    if (!controller_) return;
    std::vector<TreeNode *> nodes;
    if (byExtendingSelection) nodes = controller_->selectedNodes();
    for (const int row : rows) {
        if (TreeNode *node = itemAtRow(row)) nodes.push_back(node);
    }
    controller_->setSelectedNodes(nodes);
}

void OutlineView::deselectAll() {
    if (controller_) controller_->selectionModel()->clearSelection();
}

int OutlineView::clickedRow() const {
    return clickedCell_.isValid() ? rowForItem(controller_->nodeForIndex(clickedCell_)) : -1;
}

int OutlineView::clickedColumn() const {
    return clickedCell_.isValid() ? clickedCell_.column() : -1;
}

void OutlineView::reloadItem(const TreeNode *item) {
    if (!item || !item->parentNode()) {
        viewport()->update();
        return;
    }
    for (const int column : {TreeController::TitleColumn, TreeController::PageColumn})
        update(controller_->indexForNode(*item, column));
}

void OutlineView::scrollTo(const QModelIndex &index, ScrollHint hint) {
    // Qt would unfold what hides it.
    for (QModelIndex above = index.parent(); above.isValid(); above = above.parent()) {
        if (!isExpanded(above)) return;
    }
    QTreeView::scrollTo(index, hint);
}

void OutlineView::keyboardSearch(const QString &search) {
    // Titles are searched, even when a page label was clicked.
    if (currentIndex().column() > TreeController::TitleColumn) {
        selectionModel()->setCurrentIndex(currentIndex().siblingAtColumn(TreeController::TitleColumn),
                                          QItemSelectionModel::NoUpdate);
    }
    QTreeView::keyboardSearch(search);
}

QModelIndex OutlineView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const QModelIndex current = currentIndex();
    if (!current.isValid() || (action != MoveNext && action != MovePrevious))
        return QTreeView::moveCursor(action, modifiers);
    const int wanted = action == MoveNext ? TreeController::PageColumn : TreeController::TitleColumn;
    if (current.column() != wanted) return current.siblingAtColumn(wanted);
    const QModelIndex row = QTreeView::moveCursor(action, modifiers);
    if (!row.isValid() || row.siblingAtColumn(current.column()) == current) return {};
    return row.siblingAtColumn(action == MoveNext ? TreeController::TitleColumn : TreeController::PageColumn);
}

void OutlineView::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Asterisk && currentIndex().isValid()) {
        expandItem(controller_->nodeForIndex(currentIndex()), true);
        return;
    }
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && state() != EditingState && hasSelectedRows()) {
        Q_EMIT followRequested();
        return;
    }
    QTreeView::keyPressEvent(event);
}

bool OutlineView::mayEdit(const QModelIndex &cell) const {
    if (!cell.isValid() || !cell.flags().testFlag(Qt::ItemIsEditable)) return false;
    return !delegate_ || delegate_->shouldEditTableColumn(cell.column(), controller_->nodeForIndex(cell));
}

bool OutlineView::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) {
    if (trigger != EditKeyPressed) return mayEdit(index) && QTreeView::edit(index, trigger, event);
    const QModelIndex cell = index.siblingAtColumn(TreeController::TitleColumn);
    if (!mayEdit(cell)) return false;
    // Nobody types into what can't be seen, and the way on begins at the cell that is edited.
    TreeNode &node = controller_->nodeForIndex(cell);
    revealItems({&node});
    if (rowForItem(node) < 0) return false;
    selectionModel()->setCurrentIndex(cell, QItemSelectionModel::NoUpdate);
    return QTreeView::edit(cell, trigger, event);
}

void OutlineView::editColumn(int column, int row) {
    const TreeNode *node = itemAtRow(row);
    if (!node) return;
    const QModelIndex cell = controller_->indexForNode(*node, column);
    if (!mayEdit(cell)) return;
    selectionModel()->setCurrentIndex(cell, QItemSelectionModel::NoUpdate);
    scrollTo(cell);
    // A click on a selected row begins to wait for the second of a double click, and edits nothing meanwhile.
    // Only the double click ends that.
    QTreeView::edit(cell, DoubleClicked, nullptr);
    QTreeView::edit(cell, AllEditTriggers, nullptr);
}

void OutlineView::endEditing() {
    QWidget *editor = state() == EditingState ? indexWidget(currentIndex()) : nullptr;
    if (!editor) return;
    commitData(editor);
    closeEditor(editor, QAbstractItemDelegate::NoHint);
}

void OutlineView::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                              const QList<int> &roles) {
    if (changingMany_) return;
    QTreeView::dataChanged(topLeft, bottomRight, roles);
    // With a layout to come, Qt passes over an open editor, which would write the old text back at its end.
    QWidget *editor = topLeft == bottomRight ? indexWidget(topLeft) : nullptr;
    if (editor) itemDelegateForIndex(topLeft)->setEditorData(editor, topLeft);
}

void OutlineView::beginManyChanges() {
    changingMany_ = true;
}

void OutlineView::endManyChanges() {
    changingMany_ = false;
    // All rows are of one height, so that none has another place now.
    const QModelIndex cell = currentIndex();
    dataChanged(cell, cell, {});
    viewport()->update();
}

}  // namespace leafwright
