#include "pageview/PageLayout.h"

#include <algorithm>
#include <cmath>

namespace leafwright {

namespace {

/// Scroll bars count in int. Half of its range leaves room for gaps and for device pixels.
constexpr double largestLength = 1 << 29;

int pixels(double length) {
    return std::max(1, static_cast<int>(std::lround(length)));
}

}  // namespace

PageLayout::PageLayout(const std::vector<QSizeF> &sizes) : sizes_(sizes) {
    tops_.reserve(sizes.size());
    for (const QSizeF &size : sizes) {
        tops_.push_back(height_);
        height_ += size.height();
        width_ = std::max(width_, size.width());
    }
    const double longest = std::max(height_, width_);
    if (longest > 0) largestScale_ = std::min(largestScale_, largestLength / longest);
    setScale(scale_);
}

void PageLayout::setScale(double scale) {
    scale_ = std::clamp(scale, smallestScale(), largestScale());
}

double PageLayout::scaleToFitWidth(int width) const {
    if (!(width_ > 0)) return 1;
    return std::clamp((width - 2 * gap) / width_, smallestScale(), largestScale());
}

QSize PageLayout::contentSize() const {
    if (sizes_.empty()) return {0, 0};
    return {pixels(width_ * scale_) + 2 * gap, bottomOf(pageCount() - 1) + gap};
}

QRect PageLayout::pageRect(int index, int contentWidth) const {
    const int width = pixels(pageSize(index).width() * scale_);
    const int top = topOf(index);
    return {(contentWidth - width) / 2, top, width, bottomOf(index) - top};
}

int PageLayout::pageNear(int y) const {
    int first = 0;
    int last = pageCount() - 1;
    while (first < last) {
        const int middle = (first + last) / 2;
        // Half of the gap below a page is nearer to it than to the next.
        if (y < bottomOf(middle) + gap / 2) {
            last = middle;
        } else {
            first = middle + 1;
        }
    }
    return first;
}

int PageLayout::topOf(int index) const {
    return static_cast<int>(std::floor(tops_[static_cast<size_t>(index)] * scale_)) + gap * (index + 1);
}

int PageLayout::bottomOf(int index) const {
    return topOf(index) + pixels(pageSize(index).height() * scale_);
}

}  // namespace leafwright
