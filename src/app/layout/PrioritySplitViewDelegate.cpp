#include "app/layout/PrioritySplitViewDelegate.h"

#include "platform/Assertion.h"
#include "widgets/SplitView.h"

#include <algorithm>
#include <cmath>

namespace leafwright {

namespace {

/// Less than this is a matter of rounding.
constexpr double tolerance = 0.5;

void checkCount(const SplitView &splitView, int validViews) {
    if (validViews == splitView.subviewCount()) return;
    failAssertion(QString::asprintf(
        "Number of valid views in priority list is less than the subview count of split view %p.",
        static_cast<const void *>(&splitView)));
}

void checkRemainder(const SplitView &splitView, double delta) {
    if (std::abs(delta) < tolerance) return;
    // The width is told for either direction.
    failAssertion(QString::asprintf("Split view %p resized smaller than minimum %s of %f",
                                    static_cast<const void *>(&splitView),
                                    splitView.isVertical() ? "width" : "height", splitView.width() - delta));
}

/// Along x, for either direction.
void placeSubviews(SplitView &splitView) {
    double offset = 0;
    for (int i = 0; i < splitView.subviewCount(); ++i) {
        splitView.setFrameOrigin(i, {offset, splitView.frameOfSubview(i).y()});
        offset += splitView.frameOfSubview(i).width() + splitView.dividerThickness();
    }
}

}  // namespace

void PrioritySplitViewDelegate::setMinimumLength(double length, int index) {
    lengthsByViewIndex_[index] = length;
}

void PrioritySplitViewDelegate::setPriority(int priority, int index) {
    viewIndicesByPriority_[priority] = index;
}

double PrioritySplitViewDelegate::minimumLengthOf(int index) const {
    const auto found = lengthsByViewIndex_.find(index);
    return found == lengthsByViewIndex_.end() ? 0 : found->second;
}

double PrioritySplitViewDelegate::constrainMinCoordinate(const SplitView &splitView, double /*proposed*/,
                                                         int dividerIndex) {
    return splitView.originOfSubview(dividerIndex) + minimumLengthOf(dividerIndex);
}

double PrioritySplitViewDelegate::constrainMaxCoordinate(const SplitView &splitView, double /*proposed*/,
                                                         int dividerIndex) {
    // The divider's thickness is left out: it lies between this coordinate and the pane's far end.
    return splitView.originOfSubview(dividerIndex) + splitView.lengthOfSubview(dividerIndex) +
           splitView.lengthOfSubview(dividerIndex + 1) - minimumLengthOf(dividerIndex + 1);
}

double PrioritySplitViewDelegate::resizeSubview(SplitView &splitView, int index, double delta) const {
    double length = splitView.lengthOfSubview(index);
    const double minimum = minimumLengthOf(index);
    if (delta > 0 || length + delta >= minimum) {
        length += delta;
        delta = 0;
    } else if (delta < 0) {
        delta += length - minimum;
        length = minimum;
    }
    const QSizeF bounds = splitView.size();
    splitView.setFrameSize(
        index, splitView.isVertical() ? QSizeF(length, bounds.height()) : QSizeF(bounds.width(), length));
    return delta;
}

void PrioritySplitViewDelegate::resizeSubviewsWithOldSize(SplitView &splitView, const QSizeF &oldSize) {
    double delta = splitView.lengthOf(splitView.size()) - splitView.lengthOf(oldSize);
    int validViews = 0;
    for (const auto &[priority, index] : viewIndicesByPriority_) {
        if (index < 0 || index >= splitView.subviewCount()) continue;
        delta = resizeSubview(splitView, index, delta);
        ++validViews;
    }
    checkCount(splitView, validViews);
    checkRemainder(splitView, delta);
    placeSubviews(splitView);
}

double PrioritySplitViewDelegate::minimumLength(const SplitView &splitView) const {
    double length = splitView.dividerThickness() * std::max(0, splitView.subviewCount() - 1);
    for (int i = 0; i < splitView.subviewCount(); ++i)
        length += minimumLengthOf(i);
    return length;
}

}  // namespace leafwright
