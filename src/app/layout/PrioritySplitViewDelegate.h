#pragma once

#include "widgets/SplitViewDelegate.h"

#include <map>

namespace leafwright {

/// Lays out a split view by priorities: when its size changes, the pane with the lowest priority number takes
/// the change, down to its minimum length; the next one takes the rest, and so on.
class PrioritySplitViewDelegate final : public SplitViewDelegate {
public:
    /// @param length in points; a pane without one may shrink to nothing @param index 0-based, of the pane
    void setMinimumLength(double length, int index);
    /// Every pane needs a priority of its own: of two with the same one, only the later has it.
    void setPriority(int priority, int index);

    /// The pane before the divider keeps its minimum length; what is proposed does not matter.
    double constrainMinCoordinate(const SplitView &splitView, double proposed, int dividerIndex) override;
    /// The pane after the divider keeps its minimum length; what is proposed does not matter.
    double constrainMaxCoordinate(const SplitView &splitView, double proposed, int dividerIndex) override;
    /// Places panes side by side, also where they stand one above the other.
    /// Raises AssertionFailure if a pane has no priority, or if the panes can't become as small as they
    /// should.
    void resizeSubviewsWithOldSize(SplitView &splitView, const QSizeF &oldSize) override;
    /// The minimum lengths of all panes, and the dividers between them.
    double minimumLength(const SplitView &splitView) const override;

private:
    double minimumLengthOf(int index) const;
    /// What is left of a change of length after one pane took its part.
    double resizeSubview(SplitView &splitView, int index, double delta) const;

    std::map<int, double> lengthsByViewIndex_;
    std::map<int, int> viewIndicesByPriority_;
};

}  // namespace leafwright
