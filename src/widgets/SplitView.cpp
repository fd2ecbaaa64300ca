#include "widgets/SplitView.h"

#include "platform/Assertion.h"
#include "widgets/SplitViewDivider.h"

#include <QChildEvent>
#include <QDebug>
#include <QStyle>

#include <algorithm>
#include <cmath>
#include <functional>

namespace leafwright {

namespace {

/// The whole pixels nearest to a frame: edges that touch go on touching.
QRect wholePixels(const QRectF &frame) {
    const QPoint topLeft(qRound(frame.left()), qRound(frame.top()));
    const QPoint end(qRound(frame.right()), qRound(frame.bottom()));
    return {topLeft, QSize(std::max(0, end.x() - topLeft.x()), std::max(0, end.y() - topLeft.y()))};
}

/// Runs what a delegate decides. @return false if it raised, which is logged
bool guarded(const char *consequence, const std::function<void()> &body) {
    try {
        body();
        return true;
    } catch (const AssertionFailure &failure) {
        qWarning().noquote() << "leafwright:" << consequence << "-" << failure.description();
        return false;
    }
}

}  // namespace

SplitView::SplitView(QWidget *parent)
    : QWidget(parent), dividerThickness_(std::max(1, style()->pixelMetric(QStyle::PM_SplitterWidth))) {}

void SplitView::addSubview(QWidget *pane) {
    pane->setParent(this);
    panes_.push_back({pane, QRectF()});
    pane->show();
    remakeDividers();
    // All of one length, which the proportional layout then keeps.
    for (int i = 0; i < subviewCount(); ++i)
        setFrameAlongAxis(i, 0, 1);
    adjustSubviews();
    updateGeometry();
}

QList<QWidget *> SplitView::subviews() const {
    QList<QWidget *> widgets;
    for (const Pane &pane : panes_)
        widgets.append(pane.widget);
    return widgets;
}

void SplitView::setVertical(bool vertical) {
    if (vertical == vertical_) return;
    vertical_ = vertical;
    adjustSubviews();
    updateGeometry();
}

void SplitView::setDividerThickness(double thickness) {
    dividerThickness_ = thickness;
    adjustSubviews();
    updateGeometry();
}

void SplitView::setDelegate(SplitViewDelegate *delegate) {
    delegate_ = delegate;
    updateGeometry();
}

void SplitView::setFrameSize(int index, const QSizeF &size) {
    panes_[static_cast<size_t>(index)].frame.setSize(size);
}

void SplitView::setFrameOrigin(int index, const QPointF &origin) {
    panes_[static_cast<size_t>(index)].frame.moveTopLeft(origin);
}

double SplitView::originOfSubview(int index) const {
    const QRectF frame = frameOfSubview(index);
    return vertical_ ? frame.x() : frame.y();
}

double SplitView::lengthOfSubview(int index) const {
    return lengthOf(frameOfSubview(index).size());
}

void SplitView::setFrameAlongAxis(int index, double origin, double length) {
    panes_[static_cast<size_t>(index)].frame =
        vertical_ ? QRectF(origin, 0, length, height()) : QRectF(0, origin, width(), length);
}

double SplitView::positionOfDividerAtIndex(int dividerIndex) const {
    return originOfSubview(dividerIndex) + lengthOfSubview(dividerIndex);
}

std::pair<double, double> SplitView::rangeOfDividerAtIndex(int dividerIndex) const {
    const double position = positionOfDividerAtIndex(dividerIndex);
    double least = originOfSubview(dividerIndex);
    double greatest =
        originOfSubview(dividerIndex + 1) + lengthOfSubview(dividerIndex + 1) - dividerThickness_;
    const bool isDecided = !delegate_ || guarded("a divider can't move", [&] {
        least = delegate_->constrainMinCoordinate(*this, least, dividerIndex);
        greatest = delegate_->constrainMaxCoordinate(*this, greatest, dividerIndex);
    });
    // With too little room for both panes, the divider stays.
    return isDecided && least <= greatest ? std::pair(least, greatest) : std::pair(position, position);
}

void SplitView::setPositionOfDividerAtIndex(double position, int dividerIndex) {
    if (dividerIndex < 0 || dividerIndex + 1 >= subviewCount() || std::isnan(position)) return;
    const auto [least, greatest] = rangeOfDividerAtIndex(dividerIndex);
    const double near = std::clamp(position, least, greatest);
    const double start = originOfSubview(dividerIndex);
    const double end = originOfSubview(dividerIndex + 1) + lengthOfSubview(dividerIndex + 1);
    setFrameAlongAxis(dividerIndex, start, near - start);
    setFrameAlongAxis(dividerIndex + 1, near + dividerThickness_, end - near - dividerThickness_);
    placeWidgets();
    Q_EMIT subviewsResized();
}

QWidget *SplitView::dividerAtIndex(int dividerIndex) const {
    return dividers_[static_cast<size_t>(dividerIndex)];
}

void SplitView::adjustSubviews() {
    if (panes_.empty()) return;
    double before = 0;
    for (int i = 0; i < subviewCount(); ++i)
        before += lengthOfSubview(i);
    const double room = std::max(0.0, lengthOf(size()) - dividerThickness_ * (subviewCount() - 1));
    double offset = 0;
    for (int i = 0; i < subviewCount(); ++i) {
        const double share = before > 0 ? lengthOfSubview(i) / before : 1.0 / subviewCount();
        const double length = std::floor(room * share);
        const bool isLast = i + 1 == subviewCount();
        setFrameAlongAxis(i, offset, isLast ? std::max(0.0, lengthOf(size()) - offset) : length);
        offset += length + dividerThickness_;
    }
    filledSize_ = size();
    placeWidgets();
    Q_EMIT subviewsResized();
}

QSize SplitView::minimumSizeHint() const {
    const int length = delegate_ ? static_cast<int>(std::ceil(delegate_->minimumLength(*this))) : 0;
    return vertical_ ? QSize(length, 0) : QSize(0, length);
}

void SplitView::resizeSubviews() {
    if (!delegate_) {
        adjustSubviews();
        return;
    }
    const std::vector<Pane> before = panes_;
    const bool isDone =
        guarded("panes keep their places", [&] { delegate_->resizeSubviewsWithOldSize(*this, filledSize_); });
    if (!isDone) {
        // The next layout starts from the size that the panes do fill.
        panes_ = before;
        return;
    }
    filledSize_ = size();
    placeWidgets();
    Q_EMIT subviewsResized();
}

void SplitView::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    if (!panes_.empty()) resizeSubviews();
}

void SplitView::childEvent(QChildEvent *event) {
    QWidget::childEvent(event);
    if (!event->removed()) return;
    const auto gone =
        std::ranges::find(panes_, event->child(), [](const Pane &pane) -> QObject * { return pane.widget; });
    if (gone == panes_.end()) return;
    panes_.erase(gone);
    remakeDividers();
    adjustSubviews();
    updateGeometry();
}

void SplitView::remakeDividers() {
    const size_t wanted = panes_.empty() ? 0 : panes_.size() - 1;
    while (dividers_.size() > wanted) {
        delete dividers_.back();
        dividers_.pop_back();
    }
    while (dividers_.size() < wanted) {
        dividers_.push_back(new SplitViewDivider(static_cast<int>(dividers_.size()), *this));
        dividers_.back()->show();
    }
}

void SplitView::placeWidgets() {
    for (const Pane &pane : panes_)
        pane.widget->setGeometry(wholePixels(pane.frame));
    for (size_t i = 0; i < dividers_.size(); ++i) {
        const double near = positionOfDividerAtIndex(static_cast<int>(i));
        dividers_[i]->setGeometry(wholePixels(vertical_ ? QRectF(near, 0, dividerThickness_, height())
                                                        : QRectF(0, near, width(), dividerThickness_)));
        dividers_[i]->refresh();
    }
}

}  // namespace leafwright
