#include "pageview/PDFView.h"

#include <QScrollBar>

// From place to place in a PDFView.

namespace leafwright {

const PDFPage *PDFView::currentPage() const {
    return isEmpty() ? nullptr : &page(currentPageIndex());
}

int PDFView::currentPageIndex() const {
    if (isEmpty()) return -1;
    const auto [first, last] = visiblePages();
    if (pinnedPage_ && *pinnedPage_ >= first && *pinnedPage_ <= last) return *pinnedPage_;
    return layout_.pageNear(verticalScrollBar()->value() + viewport()->height() / 2);
}

void PDFView::goToPage(const PDFPage *page) {
    if (page && document_ && document_->page(page->index()) == page) goToDestination({page->index(), {}});
}

void PDFView::goToDestination(const PDFDestination &destination) {
    const Anchor left = anchorAt({0, 0});
    const QPoint before(horizontalScrollBar()->value(), verticalScrollBar()->value());
    goStraightTo(destination);
    const QPoint after(horizontalScrollBar()->value(), verticalScrollBar()->value());
    // Who hardly moves has not left the place.
    if ((after - before).manhattanLength() <= 2 * PageLayout::gap) return;
    history_.leave(left);
    Q_EMIT historyChanged();
}

std::optional<PDFDestination> PDFView::currentDestination() const {
    if (isEmpty()) return std::nullopt;
    const PDFPage &shown = *currentPage();
    const QPointF corner = convertPointFromPage(shown.transform().toPage(QPointF(0, 0)), shown);
    const QPointF seen(std::max(0.0, corner.x()), std::max(0.0, corner.y()));
    return PDFDestination{shown.index(), convertPointToPage(seen, shown)};
}

void PDFView::showText(int pageIndex, const TextRange &range, Leaving leaving) {
    if (pageIndex < 0 || pageIndex >= layout_.pageCount()) return;
    awaitedText_.reset();
    if (pageIndex != currentPageIndex()) {
        if (leaving == Leaving::Noted) {
            goToDestination({pageIndex, {}});
        } else {
            goStraightTo({pageIndex, {}});
        }
    }
    if (const auto contents = contentsOf(pageIndex)) return goToText(*contents, pageIndex, range);
    awaitedText_ = {pageIndex, range};
    requestContents();
}

/// The rectangle around text as the page is shown; absent for text of which nothing is to be seen.
std::optional<QRectF> PDFView::shownRectOf(const PageContents &contents, int pageIndex,
                                           const TextRange &range) const {
    Rect bounds;
    for (const Rect &line : contents.text.rects(range))
        bounds = bounds.united(line);
    if (bounds.isEmpty()) return std::nullopt;
    return page(pageIndex).transform().toShown(bounds);
}

void PDFView::goToText(const PageContents &contents, int pageIndex, const TextRange &range) {
    const auto text = shownRectOf(contents, pageIndex, range);
    if (!text) return goStraightTo({pageIndex, {}});
    const QRectF inView(shownToView(text->topLeft(), pageIndex), shownToView(text->bottomRight(), pageIndex));
    if (QRectF(viewport()->rect()).contains(inView)) return;
    // With what stands before it.
    constexpr double partAbove = 0.3;
    scrollTo(pageIndex, text->topLeft() - QPointF(0, partAbove * viewport()->height() / layout_.scale()));
}

void PDFView::goBack() {
    returnTo(history_.goBack(anchorAt({0, 0})));
}

void PDFView::goForward() {
    returnTo(history_.goForward(anchorAt({0, 0})));
}

void PDFView::returnTo(const std::optional<Anchor> &place) {
    if (!place) return;
    keepingPage([&] {
        pinnedPage_.reset();
        restore(*place);
    });
    Q_EMIT historyChanged();
}

void PDFView::goStraightTo(const PDFDestination &destination) {
    const int index = destination.pageIndex;
    if (index < 0 || index >= layout_.pageCount()) return;
    if (isZeroPoint(destination.point)) {
        scrollTo(index, {0, -PageLayout::gap / layout_.scale()});
    } else {
        scrollTo(index, page(index).transform().toShown(destination.point));
    }
}

/// Puts a point of a page as shown at the top of the view, and moves sideways only if it were out of sight.
/// A point off the page, which files may name, counts as the nearest one on it or in the gap above.
void PDFView::scrollTo(int index, const QPointF &shown) {
    keepingPage([&] {
        const QSizeF size = layout_.pageSize(index);
        const QPointF onPage(std::clamp(shown.x(), 0.0, size.width()),
                             std::clamp(shown.y(), -PageLayout::gap / layout_.scale(), size.height()));
        const QPointF target = shownToView(onPage, index);
        verticalScrollBar()->setValue(verticalScrollBar()->value() + qRound(target.y()));
        if (target.x() < 0 || target.x() >= viewport()->width())
            horizontalScrollBar()->setValue(horizontalScrollBar()->value() + qRound(target.x()) -
                                            PageLayout::gap);
        pinnedPage_ = index;
    });
}

void PDFView::goToNextPage() {
    if (canGoToNextPage()) goStraightTo({currentPageIndex() + 1, {}});
}

void PDFView::goToPreviousPage() {
    if (canGoToPreviousPage()) goStraightTo({currentPageIndex() - 1, {}});
}

void PDFView::goToFirstPage() {
    goToDestination({0, {}});
}

void PDFView::goToLastPage() {
    goToDestination({layout_.pageCount() - 1, {}});
}

bool PDFView::canGoToNextPage() const {
    return currentPageIndex() + 1 < layout_.pageCount();
}

bool PDFView::canGoToPreviousPage() const {
    return currentPageIndex() > 0;
}

}  // namespace leafwright
