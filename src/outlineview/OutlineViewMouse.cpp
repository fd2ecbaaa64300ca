#include "outlineview/OutlineView.h"

#include <QDrag>
#include <QDropEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QToolTip>

#include <algorithm>

// Clicks, hovering and drags of an OutlineView.

namespace leafwright {

namespace {

/// As much of a text as a tool tip shows.
constexpr int tooltipLength = 2'000;
constexpr int unfoldDelay = 700;  // milliseconds
/// What is dragged does not hide where it would go.
constexpr QPoint besideThePointer(-12, -10);

QString classNameWithoutNamespace(const QObject &object) {
    const QString name = QString::fromLatin1(object.metaObject()->className());
    return name.sliced(name.lastIndexOf(u':') + 1);
}

}  // namespace

void OutlineView::pressedAt(const QPoint &position) {
    clickedCell_ = indexAt(position);
}

void OutlineView::mousePressEvent(QMouseEvent *event) {
    pressedAt(event->position().toPoint());
    QTreeView::mousePressEvent(event);
}

void OutlineView::mouseDoubleClickEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton) {
        // Qt would tell of a double click whatever button it was.
        mousePressEvent(event);
        return;
    }
    pressedAt(event->position().toPoint());
    clickModifiers_ = event->modifiers();
    QTreeView::mouseDoubleClickEvent(event);
}

bool OutlineView::viewportEvent(QEvent *event) {
    const auto *help = event->type() == QEvent::ToolTip ? dynamic_cast<QHelpEvent *>(event) : nullptr;
    if (help && controller_) {
        if (!showCellExpansion(help->pos(), help->globalPos())) {
            QToolTip::hideText();
            event->ignore();
        }
        return true;
    }
    return QTreeView::viewportEvent(event);
}

bool OutlineView::showCellExpansion(const QPoint &position, const QPoint &globalPosition) {
    const QModelIndex cell = indexAt(position);
    if (!cell.isValid()) return false;
    const bool isShortened = sizeHintForIndex(cell).width() > visualRect(cell).width();
    const bool isExpanded =
        isShortened &&
        (!delegate_ || delegate_->shouldShowCellExpansion(cell.column(), controller_->nodeForIndex(cell)));
    QStringList texts;
    if (isExpanded) texts.append(cell.data().toString().left(tooltipLength));
    if (cell.data(TreeController::LostLabelRole).toBool())
        texts.append(cell.data(Qt::ToolTipRole).toString());
    if (texts.isEmpty()) return false;
    // Escaped, because the text could be taken for HTML.
    QString paragraphs;
    for (const QString &text : texts)
        paragraphs += QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped());
    QToolTip::showText(globalPosition, paragraphs, viewport(), visualRect(cell));
    return true;
}

void OutlineView::startDrag(Qt::DropActions supportedActions) {
    QModelIndexList dragged;
    for (const int row : selectedRows())
        dragged.append(controller_->indexForNode(*itemAtRow(row)));
    QMimeData *pasteboard = dragged.isEmpty() ? nullptr : controller_->mimeData(dragged);
    if (!pasteboard) return;
    QDrag drag(this);
    drag.setMimeData(pasteboard);
    drag.setPixmap(dragPicture(dragged));
    drag.setHotSpot(besideThePointer);
    drag.exec(supportedActions, Qt::MoveAction);
}

void OutlineView::aboutToDrop(const QDropEvent &event) {
    const QObject *source = event.source();
    dragging_ = {event.mimeData(), source, source ? classNameWithoutNamespace(*source) : QString()};
}

DraggingInfo OutlineView::infoOf(const QMimeData &pasteboard) const {
    return dragging_.draggingPasteboard == &pasteboard ? dragging_ : DraggingInfo{&pasteboard, nullptr, {}};
}

void OutlineView::dragEnterEvent(QDragEnterEvent *event) {
    aboutToDrop(*event);
    QTreeView::dragEnterEvent(event);
}

/// Qt refuses to move anything to a row that is itself selected, although it may go above or below. It does
/// not when told that this is a copy, whether or not the drag offers one; so that is what it sees.
bool OutlineView::isMoveWithin(const QDropEvent &event) const {
    return event.source() == this && event.proposedAction() == Qt::MoveAction;
}

void OutlineView::dragMoveEvent(QDragMoveEvent *event) {
    aboutToDrop(*event);
    const QPoint position = event->position().toPoint();
    if (isMoveWithin(*event)) {
        QDragMoveEvent copy(position, event->possibleActions() | Qt::CopyAction, event->mimeData(),
                            event->buttons(), event->modifiers());
        copy.setDropAction(Qt::CopyAction);
        QTreeView::dragMoveEvent(&copy);
        event->setAccepted(copy.isAccepted());
    } else {
        QTreeView::dragMoveEvent(event);
    }
    dropPosition_ = event->isAccepted() ? std::optional(position) : std::nullopt;
    viewport()->update();
    unfoldSoon(indexAt(position).siblingAtColumn(TreeController::TitleColumn));
}

/// Unfolds a folded item when a drag has rested on it. Qt would fold an unfolded one as well.
void OutlineView::unfoldSoon(const QModelIndex &index) {
    if (index == restingOn_) return;
    restingOn_ = index;
    unfoldTimer_.stop();
    if (index.isValid() && !isExpanded(index)) unfoldTimer_.start(unfoldDelay, this);
}

void OutlineView::timerEvent(QTimerEvent *event) {
    if (event->timerId() != unfoldTimer_.timerId()) {
        QTreeView::timerEvent(event);
        return;
    }
    unfoldTimer_.stop();
    if (restingOn_.isValid()) expandItem(controller_->nodeForIndex(restingOn_));
}

void OutlineView::dragIsOver() {
    dragging_ = {};
    dropPosition_.reset();
    restingOn_ = QModelIndex();
    unfoldTimer_.stop();
}

void OutlineView::dragLeaveEvent(QDragLeaveEvent *event) {
    QTreeView::dragLeaveEvent(event);
    dragIsOver();
}

void OutlineView::dropEvent(QDropEvent *event) {
    aboutToDrop(*event);
    if (isMoveWithin(*event)) {
        QDropEvent copy(event->position(), event->possibleActions() | Qt::CopyAction, event->mimeData(),
                        event->buttons(), event->modifiers());
        copy.setDropAction(Qt::CopyAction);
        QTreeView::dropEvent(&copy);
        event->setAccepted(copy.isAccepted());
    } else {
        QTreeView::dropEvent(event);
    }
    dragIsOver();
}

void OutlineView::registerForDraggedTypes(const QStringList &types) {
    draggedTypes_ = types;
    if (controller_) controller_->setMimeTypes(types);
}

bool OutlineView::writeNodes(const std::vector<TreeNode *> &nodes, QMimeData &pasteboard) {
    return delegate_ && delegate_->outlineViewWriteItems(*this, nodes, pasteboard);
}

OutlineView::DropPlace OutlineView::shownPlace(TreeNode *parent, int childIndex) const {
    if (dropIndicatorPosition() != BelowItem || childIndex < 1) return {parent, childIndex};
    const TreeNode &above = parent ? *parent : controller_->arrangedObjects();
    const std::vector<TreeNode *> &shown = controller_->shownChildren(above);
    const auto row = [](const TreeNode *node) { return static_cast<int>(node->row()); };
    const auto next = std::ranges::lower_bound(shown, childIndex, {}, row);
    if (next == shown.begin()) return {parent, childIndex};
    TreeNode *upper = *std::prev(next);
    return isItemExpanded(*upper) ? DropPlace{upper, 0} : DropPlace{parent, childIndex};
}

bool OutlineView::canDrop(const QMimeData &pasteboard, TreeNode *parent, int childIndex) {
    const DropPlace place = shownPlace(parent, childIndex);
    return delegate_ && delegate_->outlineViewValidateDrop(*this, infoOf(pasteboard), place.parent,
                                                           place.childIndex) == DragOperation::Generic;
}

bool OutlineView::drop(const QMimeData &pasteboard, TreeNode *parent, int childIndex) {
    const DropPlace place = shownPlace(parent, childIndex);
    return delegate_ &&
           delegate_->outlineViewAcceptDrop(*this, infoOf(pasteboard), place.parent, place.childIndex);
}

}  // namespace leafwright
