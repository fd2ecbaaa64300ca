#include "widgets/SplitViewDivider.h"

#include "widgets/SplitView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace leafwright {

SplitViewDivider::SplitViewDivider(int index, SplitView &splitView)
    : QWidget(&splitView), index_(index), splitView_(splitView) {
    // A click leaves the focus where one is typing.
    setFocusPolicy(Qt::TabFocus);
    refresh();
}

void SplitViewDivider::refresh() {
    setCursor(splitView_.isVertical() ? Qt::SplitHCursor : Qt::SplitVCursor);
    const QList<QWidget *> panes = splitView_.subviews();
    const QString before = panes.value(index_)->accessibleName();
    const QString after = panes.value(index_ + 1)->accessibleName();
    setAccessibleName(before.isEmpty() || after.isEmpty()
                          ? tr("Divider %1").arg(index_ + 1)
                          : tr("Divider between %1 and %2").arg(before, after));
    update();
}

double SplitViewDivider::alongAxis(const QMouseEvent &event) const {
    const QPointF point = splitView_.mapFromGlobal(event.globalPosition());
    return splitView_.isVertical() ? point.x() : point.y();
}

void SplitViewDivider::moveTo(double position) {
    splitView_.setPositionOfDividerAtIndex(position, index_);
}

void SplitViewDivider::mousePressEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    grabbedAt_ = alongAxis(*event) - splitView_.positionOfDividerAtIndex(index_);
}

void SplitViewDivider::mouseMoveEvent(QMouseEvent *event) {
    if (event->buttons() & Qt::LeftButton) moveTo(alongAxis(*event) - grabbedAt_);
}

void SplitViewDivider::mouseDoubleClickEvent(QMouseEvent *event) {
    mousePressEvent(event);  // No pane collapses.
}

void SplitViewDivider::keyPressEvent(QKeyEvent *event) {
    constexpr double step = 10;
    const double by = event->modifiers() & Qt::ShiftModifier ? 1 : step;
    const double position = splitView_.positionOfDividerAtIndex(index_);
    const auto [least, greatest] = splitView_.rangeOfDividerAtIndex(index_);
    const int key = event->key();
    if (key == (splitView_.isVertical() ? Qt::Key_Left : Qt::Key_Up)) {
        moveTo(position - by);
    } else if (key == (splitView_.isVertical() ? Qt::Key_Right : Qt::Key_Down)) {
        moveTo(position + by);
    } else if (key == Qt::Key_Home) {
        moveTo(least);
    } else if (key == Qt::Key_End) {
        moveTo(greatest);
    } else {
        QWidget::keyPressEvent(event);
    }
}

void SplitViewDivider::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    if (splitView_.isVertical()) option.state |= QStyle::State_Horizontal;
    style()->drawControl(QStyle::CE_Splitter, &option, &painter, this);
    if (hasFocus()) painter.fillRect(rect(), palette().highlight());
}

}  // namespace leafwright
