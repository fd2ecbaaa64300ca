#pragma once

#include <QSizeF>

namespace leafwright {

class SplitView;

/// Decides how a split view lays out its panes. What a method raises (see AssertionFailure) the split view
/// logs, and leaves its panes as they were.
class SplitViewDelegate {
public:
    virtual ~SplitViewDelegate() = default;

    /// The least coordinate of a divider's near edge, along the split axis, in points.
    /// @param proposed what would hold without a delegate: the near edge of the pane before the divider
    /// @param dividerIndex 0-based; divider i stands between panes i and i + 1
    virtual double constrainMinCoordinate(const SplitView &splitView, double proposed, int dividerIndex) = 0;
    /// The greatest coordinate of a divider's near edge.
    /// @param proposed what would hold without a delegate: the pane after the divider has no length left
    virtual double constrainMaxCoordinate(const SplitView &splitView, double proposed, int dividerIndex) = 0;
    /// Lays out the panes after a change of the split view's size, by setting their frames.
    /// @param oldSize the size that the panes filled until now
    virtual void resizeSubviewsWithOldSize(SplitView &splitView, const QSizeF &oldSize) = 0;
    /// The least length of the split view in which the panes can be laid out.
    virtual double minimumLength(const SplitView &splitView) const = 0;
};

}  // namespace leafwright
