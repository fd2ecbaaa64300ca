#pragma once

#include "model/OutlineLook.h"
#include "outlineview/OutlineViewDelegate.h"
#include "tree/TreeController.h"

#include <QBasicTimer>
#include <QTreeView>

#include <functional>
#include <optional>

namespace leafwright {

/// Shows the nodes of a tree controller, whose selection is its own. Rows are 0-based and count what is
/// shown: nodes inside folded ones have none. Selecting a node that is not shown unfolds nothing; when an
/// item is folded over selected ones, it is selected in their place.
class OutlineView : public QTreeView, public OutlineDisplay, private TreeDragHandler {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(OutlineView)

public:
    explicit OutlineView(QWidget *parent = nullptr);
    ~OutlineView() override;

    /// Neither is owned. The controller must outlive the view or be replaced by null before it goes, and
    /// has one view at most.
    void setTreeController(TreeController *controller);
    void setDelegate(OutlineViewDelegate *delegate) { delegate_ = delegate; }
    OutlineViewDelegate *delegate() const { return delegate_; }

    int numberOfRows() const;
    /// Null if there is no such row.
    TreeNode *itemAtRow(int row) const;
    /// -1 for a node that is not shown.
    int rowForItem(const TreeNode &item) const;

    /// Ascending. Selected nodes that are not shown are not among them.
    std::vector<int> selectedRows() const;
    /// The current row if it is selected, else the last selected one; -1 without a selection.
    int selectedRow() const;
    /// Quicker than selectedRows() when many are.
    bool hasSelectedRows() const;
    /// The one item that is selected and shown; null without one, and with several.
    TreeNode *onlySelectedItem() const;
    /// Selects rows; those that do not exist are passed over.
    /// @param byExtendingSelection whether what is selected so far stays so
    void selectRowIndexes(const std::vector<int> &rows, bool byExtendingSelection = false);
    void deselectAll();

    /// Where the mouse was pressed last: -1 beside all rows, or if that row is gone.
    int clickedRow() const;
    int clickedColumn() const;

    /// Unfolds an item; with its children, all that is below it, down to 1,000 levels from the top. An item
    /// without children cannot be unfolded.
    void expandItem(const TreeNode &item, bool expandChildren = false);
    /// Folds an item; with its children, all that is below it, so that it is folded when it shows again.
    void collapseItem(const TreeNode &item, bool collapseChildren = false);
    bool isItemExpanded(const TreeNode &item) const;
    /// Folds several with all that is below them, quicker than one after the other.
    void collapseItems(const std::vector<TreeNode *> &items);
    /// Shows items though a filter would not, and unfolds all that they are below, down to 1,000 levels from
    /// the top, and scrolls to the first of them, and to the last if there is room.
    void revealItems(const std::vector<TreeNode *> &items);
    /// Shows these items and those that they are below, unfolded, and no others, until showAll(). What is
    /// hidden is selected no longer; what comes meanwhile is shown. See TreeController::setFilter().
    void showOnly(const std::vector<TreeNode *> &items);
    /// Shows all items again, unfolded as they were before showOnly(), with the selected ones in sight.
    void showAll();
    /// Changes the tree while the first row in sight that stays is the first, whatever happens to the current
    /// one.
    void keepingPlace(const std::function<void()> &change);
    /// What is selected and unfolded, out of sight too.
    OutlineLook look() const override;
    /// Scrolls to the first selected item, if it is not below a folded one; shows them though a filter would
    /// not.
    void setLook(const OutlineLook &look) override;
    void beginManyChanges() override;
    void endManyChanges() override;
    /// Marks one item, or the folded one that hides it; null for none.
    void setMarkedItem(TreeNode *item);
    /// Null too when the item has left the tree.
    const TreeNode *markedItem() const;
    /// Draws an item anew; null for all.
    void reloadItem(const TreeNode *item);
    /// What stands in the place of the rows while there are none, in a faint colour.
    void setPlaceholderText(const QString &text);
    /// In pixels.
    void setIndentationPerLevel(int indentation) { setIndentation(indentation); }

    /// Starts editing a cell with its text selected. Does nothing for a row that does not exist, or when
    /// the delegate or the controller says that the cell may not be edited.
    void editColumn(int column, int row);
    /// Ends the editing of a cell as Return does, if one is being edited.
    void endEditing();

    /// The kinds of data that may be dropped here.
    void registerForDraggedTypes(const QStringList &types);

    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    void keyboardSearch(const QString &search) override;
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                     const QList<int> &roles = {}) override;

Q_SIGNALS:
    /// A cell was double-clicked. Nothing else happens by itself.
    void doubleAction(int row, int column, Qt::KeyboardModifiers modifiers);
    /// Return was pressed while something was selected, and nothing edited.
    void followRequested();

protected:
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;
    /// From a title to the page label beside it and on to the next title, and back.
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void initViewItemOption(QStyleOptionViewItem *option) const override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                 const QModelIndex &index) const override;
    void drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const override;
    void startDrag(Qt::DropActions supportedActions) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    // They would unfold without telling.
    using QTreeView::collapseAll;
    using QTreeView::expandAll;
    using QTreeView::expandToDepth;

    /// The nodes shown, made again when the tree or its unfolding changed.
    struct Rows {
        std::vector<TreeNode *> nodes;
        std::unordered_map<const TreeNode *, int> rowOfNode;
        quint64 structureRevision = 0;
        quint64 unfoldingRevision = 0;
    };
    const Rows &rows() const;
    bool hasRow(const TreeNode &item) const;

    struct DropPlace {
        TreeNode *parent;
        int childIndex;
    };

    bool writeNodes(const std::vector<TreeNode *> &nodes, QMimeData &pasteboard) override;
    bool canDrop(const QMimeData &pasteboard, TreeNode *parent, int childIndex) override;
    bool drop(const QMimeData &pasteboard, TreeNode *parent, int childIndex) override;

    bool mayEdit(const QModelIndex &cell) const;
    void drawCell(QPainter *painter, QStyleOptionViewItem option, const QModelIndex &cell) const;
    void drawFocus(QPainter &painter, const QStyleOptionViewItem &row) const;
    bool isUnderPointer(const QModelIndex &index) const;
    bool isBeingEdited(const QModelIndex &index) const;
    bool showsMark(const TreeNode &node) const;
    void drawMark(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const;
    void collapseWithChildren(const std::vector<const TreeNode *> &items);
    std::vector<quint64> unfoldedItems() const;
    void unfold(const std::vector<const TreeNode *> &items);
    void unfoldAbove(const std::vector<TreeNode *> &items);
    void scrollToItems(const std::vector<TreeNode *> &items);
    void foldOtherwise(const std::vector<const TreeNode *> &items);
    void foldingHides(const std::vector<const TreeNode *> &folded);
    void pressedAt(const QPoint &position);
    bool showCellExpansion(const QPoint &position, const QPoint &globalPosition);
    QPixmap dragPicture(const QModelIndexList &dragged) const;
    void drawDropPlace(QPainter &painter) const;
    void unfoldSoon(const QModelIndex &index);
    void dragIsOver();
    void aboutToDrop(const QDropEvent &event);
    bool isMoveWithin(const QDropEvent &event) const;
    /// What is being dragged, if this is its data; else just the data.
    DraggingInfo infoOf(const QMimeData &pasteboard) const;
    /// The line below an unfolded item stands before its first child, not behind its last.
    DropPlace shownPlace(TreeNode *parent, int childIndex) const;

    TreeController *controller_ = nullptr;
    OutlineViewDelegate *delegate_ = nullptr;
    QStringList draggedTypes_;
    QString placeholderText_;
    mutable Rows rows_;
    quint64 unfoldingRevision_ = 1;
    bool changingMany_ = false;  ///< While what texts become is drawn once for all.
    bool foldingMany_ = false;   ///< While what they hide is looked at once for all.
    std::vector<std::weak_ptr<const TreeNode>> unfoldedBefore_;  ///< Before only some items were shown.
    std::weak_ptr<const TreeNode> markedItem_;
    QPersistentModelIndex clickedCell_;
    Qt::KeyboardModifiers clickModifiers_;
    DraggingInfo dragging_;               ///< Of the event that is being handled.
    std::optional<QPoint> dropPosition_;  ///< Where a drag is that may be let go there.
    QPersistentModelIndex restingOn_;     ///< The title that a drag is over.
    QBasicTimer unfoldTimer_;
};

}  // namespace leafwright
