#pragma once

#include "widgets/SplitViewDelegate.h"

#include <QList>
#include <QRectF>
#include <QWidget>

#include <vector>

namespace leafwright {

class SplitViewDivider;

/// Panes in a row, or one above the other, with dividers between them that mouse and keyboard move. A
/// delegate decides about lengths. Frames are in points (Qt's device-independent pixels), origin at the top
/// left of the split view; they may be fractions, the widgets are set to the nearest whole ones.
class SplitView : public QWidget {
    Q_OBJECT

public:
    explicit SplitView(QWidget *parent = nullptr);

    /// Appends a pane, owned by the split view from then on, and gives all panes equal lengths.
    void addSubview(QWidget *pane);
    /// The panes in their order.
    QList<QWidget *> subviews() const;
    int subviewCount() const { return static_cast<int>(panes_.size()); }

    /// Whether the panes stand side by side (so that the dividers are vertical), as they do at the start.
    bool isVertical() const { return vertical_; }
    void setVertical(bool vertical);
    /// The gap between two panes, in points.
    double dividerThickness() const { return dividerThickness_; }
    void setDividerThickness(double thickness);

    /// @param delegate not owned; null for none, which lets dividers go anywhere and resizes in proportion
    void setDelegate(SplitViewDelegate *delegate);
    SplitViewDelegate *delegate() const { return delegate_; }

    /// The frame of a pane. @param index 0-based, within range, here and below
    QRectF frameOfSubview(int index) const { return panes_[static_cast<size_t>(index)].frame; }
    void setFrameSize(int index, const QSizeF &size);
    void setFrameOrigin(int index, const QPointF &origin);
    /// Where a pane begins and how long it is along the split axis.
    double originOfSubview(int index) const;
    double lengthOfSubview(int index) const;
    /// What is along the split axis in a size.
    double lengthOf(const QSizeF &size) const { return vertical_ ? size.width() : size.height(); }

    /// The near edge of a divider, along the split axis.
    double positionOfDividerAtIndex(int dividerIndex) const;
    /// Moves a divider as near to a position as the delegate allows; the two panes beside it change. An index
    /// without a divider does nothing.
    void setPositionOfDividerAtIndex(double position, int dividerIndex);
    /// The least and the greatest position of a divider; the same twice where it can't move.
    std::pair<double, double> rangeOfDividerAtIndex(int dividerIndex) const;
    /// The widget of a divider, which takes mouse and keyboard.
    QWidget *dividerAtIndex(int dividerIndex) const;

    /// Lays out the panes in proportion to their lengths, the last one up to the end.
    void adjustSubviews();

    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// A divider was moved or the panes were laid out anew.
    void subviewsResized();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void childEvent(QChildEvent *event) override;

private:
    struct Pane {
        QWidget *widget = nullptr;
        QRectF frame;
    };

    void resizeSubviews();
    void setFrameAlongAxis(int index, double origin, double length);
    void remakeDividers();
    void placeWidgets();

    std::vector<Pane> panes_;
    std::vector<SplitViewDivider *> dividers_;
    SplitViewDelegate *delegate_ = nullptr;
    bool vertical_ = true;
    double dividerThickness_;
    QSizeF filledSize_;  ///< The size that the panes fill.
};

}  // namespace leafwright
