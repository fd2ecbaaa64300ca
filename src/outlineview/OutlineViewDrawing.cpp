#include "outlineview/OutlineView.h"
#include "widgets/DimmedSelection.h"

#include <QApplication>
#include <QPainter>

// How an OutlineView draws its rows: as QTreeView does, but for how it knows the selected ones. That one goes
// through all ranges of the selection for each cell, and there may be as many ranges as items. And how it
// draws drags.

namespace leafwright {

bool OutlineView::isUnderPointer(const QModelIndex &index) const {
    if (!viewport()->underMouse()) return false;
    const QModelIndex under = indexAt(viewport()->mapFromGlobal(QCursor::pos()));
    return under.isValid() && under.siblingAtColumn(index.column()) == index;
}

bool OutlineView::isBeingEdited(const QModelIndex &index) const {
    if (state() != EditingState) return false;
    const auto hasEditor = [&](int column) {
        const QWidget *editor = indexWidget(index.siblingAtColumn(column));
        return editor && editor->hasFocus();
    };
    return hasEditor(TreeController::TitleColumn) || hasEditor(TreeController::PageColumn);
}

void OutlineView::setMarkedItem(TreeNode *item) {
    if (markedItem() == item) return;
    markedItem_ = item ? item->weak_from_this() : std::weak_ptr<TreeNode>();
    viewport()->update();
}

const TreeNode *OutlineView::markedItem() const {
    const auto item = markedItem_.lock();
    return item && item->parentNode() ? item.get() : nullptr;
}

/// Whether a row is that of the marked item, or the one that hides it.
bool OutlineView::showsMark(const TreeNode &node) const {
    const TreeNode *marked = markedItem();
    if (!marked || !marked->isDescendantOf(node)) return false;
    return marked == &node || !isItemExpanded(node);
}

void OutlineView::drawMark(QPainter &painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) const {
    constexpr int width = 3;
    const int left = isRightToLeft() ? viewport()->width() - width : 0;
    // The colour of a selected row could not be seen on it.
    const bool isSelected = controller_->isSelected(controller_->nodeForIndex(index));
    painter.fillRect(
        left, option.rect.y(), width, option.rect.height(),
        isSelected ? option.palette.color(QPalette::HighlightedText) : palette().color(QPalette::Highlight));
}

void OutlineView::initViewItemOption(QStyleOptionViewItem *option) const {
    QTreeView::initViewItemOption(option);
    dimSelection(*option);
}

void OutlineView::drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const {
    QStyleOptionViewItem row = option;
    row.showDecorationSelected = true;
    row.state.setFlag(QStyle::State_Selected, controller_->isSelected(controller_->nodeForIndex(index)));
    row.state.setFlag(QStyle::State_MouseOver, isUnderPointer(index));
    if (isBeingEdited(index)) row.state |= QStyle::State_Active;
    if (row.state.testFlag(QStyle::State_Enabled)) {
        const bool active = row.state.testFlag(QStyle::State_Active);
        row.palette.setCurrentColorGroup(active ? QPalette::Active : QPalette::Inactive);
    }
    for (const int column : {TreeController::TitleColumn, TreeController::PageColumn})
        drawCell(painter, row, index.siblingAtColumn(column));
    if (hasFocus() && currentIndex().siblingAtColumn(index.column()) == index) drawFocus(*painter, row);
    if (showsMark(controller_->nodeForIndex(index))) drawMark(*painter, row, index);
}

void OutlineView::drawFocus(QPainter &painter, const QStyleOptionViewItem &row) const {
    QStyleOptionFocusRect focus;
    focus.QStyleOption::operator=(row);
    focus.state |= QStyle::State_KeyboardFocusChange;
    focus.backgroundColor =
        row.palette.color(row.state.testFlag(QStyle::State_Selected) ? QPalette::Highlight : QPalette::Base);
    focus.rect = QRect(0, row.rect.y(), viewport()->width(), row.rect.height());
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
}

void OutlineView::drawCell(QPainter *painter, QStyleOptionViewItem option, const QModelIndex &cell) const {
    const bool isTitle = cell.column() == TreeController::TitleColumn;
    const QRect whole(columnViewportPosition(cell.column()), option.rect.y(), columnWidth(cell.column()),
                      option.rect.height());
    QRect text = whole;
    if (isTitle) {
        const QRect shown = visualRect(cell);  // Without what stands in front of it.
        text.setLeft(shown.left());
        text.setRight(shown.right());
        QRect branches = whole;
        if (isRightToLeft()) {
            branches.setLeft(text.right() + 1);
        } else {
            branches.setRight(text.left() - 1);
        }
        option.rect = branches;
        painter->save();
        painter->setClipRect(whole, Qt::IntersectClip);
        if (style()->styleHint(QStyle::SH_ItemView_ShowDecorationSelected, &option, this))
            style()->drawPrimitive(QStyle::PE_PanelItemViewRow, &option, painter, this);
        drawBranches(painter, branches, cell);
        painter->restore();
    }
    option.rect = text;
    option.viewItemPosition = isTitle ? QStyleOptionViewItem::Beginning : QStyleOptionViewItem::End;
    QStyleOptionViewItem background = option;
    background.state &= ~QStyle::State_Selected;
    style()->drawPrimitive(QStyle::PE_PanelItemViewRow, &background, painter, this);
    itemDelegateForIndex(cell)->paint(painter, option, cell);
}

void OutlineView::drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const {
    const TreeNode *node = &controller_->nodeForIndex(index);
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    QStyle::State common = QStyle::State_None;
    common.setFlag(QStyle::State_Enabled, isEnabled());
    common.setFlag(QStyle::State_Active, hasFocus());
    common.setFlag(QStyle::State_Selected, controller_->isSelected(*node));
    QStyle::State state = common | QStyle::State_Item;
    state.setFlag(QStyle::State_MouseOver, isUnderPointer(index));
    state.setFlag(QStyle::State_Children, !controller_->shownChildren(*node).empty());
    state.setFlag(QStyle::State_Open, isItemExpanded(*node));
    // From the item outwards, a level at a time.
    int left = isRightToLeft() ? rect.left() : rect.right() + 1 - indentation();
    for (; node->parentNode(); node = node->parentNode()) {
        state.setFlag(QStyle::State_Sibling, controller_->shownChildren(*node->parentNode()).back() != node);
        option.state = state;
        option.rect = QRect(left, rect.top(), indentation(), rect.height());
        style()->drawPrimitive(QStyle::PE_IndicatorBranch, &option, painter, this);
        left += isRightToLeft() ? indentation() : -indentation();
        state = common;
    }
}

/// Makes Qt's thin mark plain to see, over the whole row, and as deep as what is dropped would stand.
void OutlineView::drawDropPlace(QPainter &painter) const {
    const QModelIndex under = dropPosition_ ? indexAt(*dropPosition_) : QModelIndex();
    if (!under.isValid() || state() != DraggingState) return;
    constexpr double lineWidth = 2;
    constexpr double radius = 3;
    const QRectF row = visualRect(under.siblingAtColumn(TreeController::TitleColumn)) |
                       visualRect(under.siblingAtColumn(TreeController::PageColumn));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Highlight), lineWidth));
    if (dropIndicatorPosition() == OnItem) {
        painter.drawRoundedRect(row.adjusted(1, 1, -1, -1), radius, radius);
        return;
    }
    const bool below = dropIndicatorPosition() == BelowItem;
    const bool isFirstChild = below && isItemExpanded(controller_->nodeForIndex(under));
    const double inset = radius + (isFirstChild ? indentation() : 0);
    const double y = below ? row.bottom() : row.top();
    const QPointF ring(isRightToLeft() ? row.right() - inset : row.left() + inset, y);
    painter.drawEllipse(ring, radius, radius);
    painter.drawLine(ring + QPointF(isRightToLeft() ? -radius : radius, 0),
                     QPointF(isRightToLeft() ? row.left() : row.right(), y));
}

/// What follows the pointer: the title that was taken hold of, and how many others come along.
QPixmap OutlineView::dragPicture(const QModelIndexList &dragged) const {
    constexpr int widest = 260;
    constexpr QSize padding(8, 4);
    constexpr double opacity = 0.9;
    constexpr double radius = 4;
    const QModelIndex pressed = QModelIndex(clickedCell_).siblingAtColumn(TreeController::TitleColumn);
    const QModelIndex held = dragged.contains(pressed) ? pressed : dragged.first();
    QString text =
        fontMetrics().elidedText(held.data().toString().left(widest).simplified(), Qt::ElideRight, widest);
    if (dragged.size() > 1) text = tr("%1 and %2 more").arg(text, QString::number(dragged.size() - 1));
    const QSize size = fontMetrics().size(Qt::TextSingleLine, text) + 2 * padding;
    QPixmap picture(size * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setFont(font());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(opacity);
    painter.setBrush(palette().color(QPalette::Base));
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRoundedRect(QRectF(QPointF(), size).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QRect(QPoint(), size), Qt::AlignCenter | Qt::TextSingleLine, text);
    return picture;
}

}  // namespace leafwright
