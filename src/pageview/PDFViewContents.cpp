#include "pageview/PDFView.h"

namespace leafwright {

namespace {

/// Contents of so many pages are kept although nobody needs them at the moment.
constexpr size_t usualContents = 16;

/// So many pages are asked for at once; the others when these are read.
constexpr size_t mostRequests = 64;

bool contains(const Rect &rect, const QPointF &point) {
    return point.x() >= rect.x && point.x() <= rect.right() && point.y() >= rect.y && point.y() <= rect.top();
}

}  // namespace

bool PDFView::hasMarks(const PDFPage &page) const {
    const auto marks = [&page](const PDFSelection &selection) {
        return !selection.rangesOnPage(page).empty();
    };
    return (currentSelection_ && marks(*currentSelection_)) || markedText_.contains(page.index()) ||
           std::any_of(highlightedSelections_.begin(), highlightedSelections_.end(), marks);
}

/// Whether the text and links of a page are needed for what is going on.
bool PDFView::needsContents(int pageIndex) const {
    if (pointerPage_ == pageIndex) return true;
    if (awaited_ != Awaited::None && awaitedPoint_.pageIndex == pageIndex) return true;
    if (awaitedText_ && awaitedText_->pageIndex == pageIndex) return true;
    if ((gesture_ != Gesture::None || dragIsOpen_) &&
        (anchor_.pageIndex == pageIndex || head_.pageIndex == pageIndex))
        return true;
    const auto [first, last] = visiblePages();
    return pageIndex >= first && pageIndex <= last && hasMarks(page(pageIndex));
}

void PDFView::requestContents() {
    std::vector<RenderRequest> wanted;
    const auto want = [&](int index) {
        const RenderRequest request{index, 1, {}};
        if (std::find(wanted.begin(), wanted.end(), request) == wanted.end()) wanted.push_back(request);
    };
    const auto wantContents = [&](int index) {
        if (needsContents(index) && !contentsOf(index)) want(index);
    };
    if (awaitedText_) wantContents(awaitedText_->pageIndex);
    if (pointerPage_) wantContents(*pointerPage_);
    for (const int index : {awaitedPoint_.pageIndex, anchor_.pageIndex, head_.pageIndex})
        wantContents(index);
    const auto [first, last] = visiblePages();
    for (int i = first; i <= last; ++i)
        wantContents(i);
    if (dragIsOpen_) {
        const auto [top, bottom] = std::minmax({anchor_.pageIndex, head_.pageIndex});
        for (int i = top; i <= bottom && wanted.size() < mostRequests; ++i) {
            if (!textLengths_.contains(i)) want(i);
        }
    }
    queue_.setWanted(PageWork::Contents, wanted);
}

void PDFView::takeContents(const PageResult &result) {
    const int index = result.request.pageIndex;
    textLengths_[index] = result.contents->text.length();
    // Of pages in the midst of a long selection the length is enough.
    if (needsContents(index) && !contentsOf(index)) contents_.emplace_back(index, result.contents);
    for (auto kept = contents_.begin(); contents_.size() > usualContents && kept != contents_.end();) {
        kept = needsContents(kept->first) ? kept + 1 : contents_.erase(kept);
    }
    answer();
    if (awaitedText_ && awaitedText_->pageIndex == index) {
        const AwaitedText awaited = *std::exchange(awaitedText_, std::nullopt);
        const auto [first, last] = visiblePages();
        // Who has gone elsewhere meanwhile stays there.
        if (index >= first && index <= last) goToText(*result.contents, index, awaited.range);
    }
    if (dragIsOpen_) updateDragSelection();
    if (pointerPage_ == index) pointAt(pointer_);
    if (hasMarks(page(index))) viewport()->update();
    requestContents();
}

std::shared_ptr<const PageContents> PDFView::contentsOf(int pageIndex) const {
    for (const auto &[index, contents] : contents_) {
        if (index == pageIndex) return contents;
    }
    return nullptr;
}

PDFView::PagePoint PDFView::pagePointNear(const QPointF &viewPoint) const {
    const PDFPage *const nearest = pageForPoint(viewPoint, true);
    return {nearest->index(), convertPointToPage(viewPoint, *nearest)};
}

bool PDFView::isOnSelection(const PagePoint &place) const {
    const auto rects = selectionRects_.find(place.pageIndex);
    if (rects == selectionRects_.end()) return false;
    return std::any_of(rects->second.begin(), rects->second.end(),
                       [&place](const Rect &rect) { return contains(rect, place.point); });
}

/// The link under a point of the view, if the page's links have been read.
std::optional<PDFLink> PDFView::linkAt(const QPointF &viewPoint) const {
    const PDFPage *const under = pageForPoint(viewPoint, false);
    const auto contents = under ? contentsOf(under->index()) : nullptr;
    if (!contents) return std::nullopt;
    const QPointF point = convertPointToPage(viewPoint, *under);
    // The last is on top.
    for (auto link = contents->links.rbegin(); link != contents->links.rend(); ++link) {
        if (contains(link->bounds, point)) return *link;
    }
    return std::nullopt;
}

// Selection

void PDFView::setCurrentSelection(const std::optional<PDFSelection> &selection) {
    dragIsOpen_ = false;
    select(selection);
}

void PDFView::select(const std::optional<PDFSelection> &selection) {
    const bool none = !selection || selection->isEmpty();
    if (none && !currentSelection_) return;
    currentSelection_ = none ? std::nullopt : selection;
    selectionRects_.clear();
    viewport()->update();
    if (!isEmpty()) requestContents();
    Q_EMIT selectionChanged();
}

void PDFView::setHighlightedArea(const std::optional<PageArea> &area) {
    highlightedArea_ = area;
    viewport()->update();
}

void PDFView::setHighlightedSelections(const std::vector<PDFSelection> &selections) {
    highlightedSelections_ = selections;
    highlightRects_.clear();
    viewport()->update();
    if (!isEmpty()) requestContents();
}

void PDFView::addMarkedText(int pageIndex, const std::vector<TextRange> &ranges) {
    std::vector<TextRange> &marked = markedText_[pageIndex];
    marked.insert(marked.end(), ranges.begin(), ranges.end());
    markedTextRects_.erase(pageIndex);
    const auto [first, last] = visiblePages();
    if (pageIndex < first || pageIndex > last) return;
    viewport()->update();
    requestContents();
}

void PDFView::clearMarkedText() {
    markedText_.clear();
    markedTextRects_.clear();
    viewport()->update();
}

void PDFView::copy() {
    if (currentSelection_) Q_EMIT copyRequested(currentSelection_->string());
}

void PDFView::dragSelectionTo(const QPointF &viewPoint) {
    head_ = pagePointNear(viewPoint);
    dragIsOpen_ = true;
    updateDragSelection();
}

/// Selects what lies between the two ends of a drag, as far as it has been read.
void PDFView::updateDragSelection() {
    PagePoint first = anchor_;
    PagePoint last = head_;
    if (last.pageIndex < first.pageIndex) std::swap(first, last);
    PDFSelection selection;
    bool complete = true;
    for (int i = first.pageIndex; i <= last.pageIndex; ++i) {
        const auto range = draggedRange(i, first, last);
        if (range) {
            selection.add(page(i), *range);
        } else {
            complete = false;
        }
    }
    dragIsOpen_ = !complete;
    select(selection);
    if (!complete) requestContents();
}

/// What a drag covers of a page's text; nothing when it has not been read.
std::optional<TextRange> PDFView::draggedRange(int pageIndex, const PagePoint &first,
                                               const PagePoint &last) const {
    if (pageIndex != first.pageIndex && pageIndex != last.pageIndex) {
        const auto length = textLengths_.find(pageIndex);
        if (length == textLengths_.end()) return std::nullopt;
        return TextRange{0, length->second};
    }
    const auto contents = contentsOf(pageIndex);
    if (!contents) return std::nullopt;
    const TextSelector &text = contents->text;
    if (first.pageIndex == last.pageIndex) return text.rangeBetween(first.point, last.point);
    if (pageIndex == first.pageIndex) {
        const int caret = text.caretNear(first.point);
        return TextRange{caret, text.length() - caret};
    }
    return TextRange{0, text.caretNear(last.point)};
}

}  // namespace leafwright
