#include "pageview/PDFView.h"

#include "pageview/PDFViewTextDrag.h"

#include <QEvent>
#include <QResizeEvent>
#include <QScrollBar>

namespace leafwright {

namespace {

/// Pages of some windows full in either direction. Grows with the window, see resizeEvent().
constexpr qint64 usualImageBytes = qint64{96} << 20;

constexpr double zoomStep = 1.25;

std::vector<QSizeF> shownSizes(const PDFDocument &document) {
    std::vector<QSizeF> sizes;
    sizes.reserve(static_cast<size_t>(document.pageCount()));
    for (int i = 0; i < document.pageCount(); ++i)
        sizes.push_back(document.page(i)->transform().shownSize());
    return sizes;
}

}  // namespace

PDFView::PDFView(QWidget *parent)
    : QAbstractScrollArea(parent), images_(usualImageBytes), textDrag_(new PDFViewTextDrag(this)) {
    setAccessibleName(tr("Page"));
    setFocusPolicy(Qt::StrongFocus);
    // A bar that comes and goes would change the width, and with it the scale that fits.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    connect(&queue_, &RenderQueue::finished, this, &PDFView::takeResult);
}

PDFView::~PDFView() {
    queue_.setDocument(nullptr);
}

void PDFView::setDocument(PDFDocument *document) {
    const bool hadSelection = currentSelection_.has_value();
    queue_.setDocument(document);
    document_ = document;
    resetPages();
    const double scale = layout_.scale();
    layout_ = document ? PageLayout(shownSizes(*document)) : PageLayout();
    setAccessibleDescription(document && isEmpty() ? placeholderText_ : QString());
    layout_.setScale(autoScales_ ? layout_.scaleToFitWidth(viewport()->width()) : scale);
    keepingPage([this] {
        updateScrollBars();
        horizontalScrollBar()->setValue(0);
        verticalScrollBar()->setValue(0);
    });
    pagesMoved();
    Q_EMIT documentChanged();
    Q_EMIT historyChanged();
    if (layout_.scale() != scale) Q_EMIT scaleChanged();
    if (hadSelection) Q_EMIT selectionChanged();
}

/// Forgets all that is known of the pages of the document before.
void PDFView::resetPages() {
    images_.clear();
    currentSelection_.reset();
    highlightedSelections_.clear();
    highlightedArea_.reset();
    selectionRects_.clear();
    highlightRects_.clear();
    markedText_.clear();
    markedTextRects_.clear();
    awaitedText_.reset();
    contents_.clear();
    textLengths_.clear();
    gesture_ = Gesture::None;
    dragIsOpen_ = false;
    awaited_ = Awaited::None;
    pointerPage_.reset();
    autoScrollTimer_.stop();
    pinnedPage_.reset();
    history_.clear();
    notedPage_ = -2;  // the next one is told of in any case, also if there is none
}

// Pages

void PDFView::notePageChange() {
    const int current = currentPageIndex();
    if (current == notedPage_) return;
    notedPage_ = current;
    Q_EMIT pageChanged();
}

// Scale

void PDFView::setScaleFactor(double scale) {
    autoScales_ = false;
    applyScale(scale, QRectF(viewport()->rect()).center());
}

void PDFView::setAutoScales(bool on) {
    autoScales_ = on;
    if (on) applyScale(layout_.scaleToFitWidth(viewport()->width()), {0, 0});
}

void PDFView::zoomIn() {
    setScaleFactor(layout_.scale() * zoomStep);
}

void PDFView::zoomOut() {
    setScaleFactor(layout_.scale() / zoomStep);
}

void PDFView::zoomToFit() {
    setAutoScales(true);
}

void PDFView::zoomToPage() {
    if (isEmpty()) return;
    const int index = currentPageIndex();
    const QSizeF page = layout_.pageSize(index);
    const QSizeF room = viewport()->size() - QSize(2 * PageLayout::gap, 2 * PageLayout::gap);
    setScaleFactor(std::min(room.width() / page.width(), room.height() / page.height()));
    goStraightTo({index, {}});
}

void PDFView::zoomToActualSize() {
    setScaleFactor(1);
}

/// Sets the scale so that what is at a view point stays there.
void PDFView::applyScale(double scale, const QPointF &viewPoint) {
    const double before = layout_.scale();
    keepingPage([&] {
        const Anchor anchor = anchorAt(viewPoint);
        layout_.setScale(scale);
        updateScrollBars();
        restore(anchor);
    });
    if (layout_.scale() == before) return;
    pagesMoved();
    Q_EMIT scaleChanged();
}

PDFView::Anchor PDFView::anchorAt(const QPointF &viewPoint) const {
    if (isEmpty()) return {};
    const int index = layout_.pageNear(verticalScrollBar()->value() + qRound(viewPoint.y()));
    const QRectF rect = pageRectInView(index);
    const QPointF offset = viewPoint - rect.topLeft();
    return {viewPoint, index, {offset.x() / rect.width(), offset.y() / rect.height()}};
}

void PDFView::restore(const Anchor &anchor) {
    if (isEmpty()) return;
    const QRectF rect = pageRectInView(anchor.pageIndex);
    const QPointF now =
        rect.topLeft() + QPointF(anchor.fraction.x() * rect.width(), anchor.fraction.y() * rect.height());
    const QPointF move = now - anchor.viewPoint;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + qRound(move.x()));
    verticalScrollBar()->setValue(verticalScrollBar()->value() + qRound(move.y()));
}

// Places

// Not static: which box is displayed is a matter of the view.
// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
Rect PDFView::boundsForDisplayBox(const PDFPage *page) const {
    return page ? page->cropBox() : Rect();
}

int PDFView::contentWidth() const {
    return std::max(layout_.contentSize().width(), viewport()->width());
}

QRect PDFView::pageRectInView(int index) const {
    return layout_.pageRect(index, contentWidth())
        .translated(-horizontalScrollBar()->value(), -verticalScrollBar()->value());
}

/// From points of the page as shown, origin at its top left, to the view.
QPointF PDFView::shownToView(const QPointF &shown, int index) const {
    return QPointF(pageRectInView(index).topLeft()) + shown * layout_.scale();
}

/// The 0-based indices of the first and the last page that can be seen; the last is -1 without pages.
std::pair<int, int> PDFView::visiblePages() const {
    if (isEmpty()) return {0, -1};
    const int top = verticalScrollBar()->value();
    return {layout_.pageNear(top), layout_.pageNear(top + viewport()->height() - 1)};
}

const PDFPage *PDFView::pageForPoint(const QPointF &viewPoint, bool nearest) const {
    if (isEmpty()) return nullptr;
    const int index = layout_.pageNear(verticalScrollBar()->value() + qFloor(viewPoint.y()));
    if (!nearest && !QRectF(pageRectInView(index)).contains(viewPoint)) return nullptr;
    return &page(index);
}

QPointF PDFView::convertPointToPage(const QPointF &viewPoint, const PDFPage &page) const {
    const QPointF offset = viewPoint - pageRectInView(page.index()).topLeft();
    return page.transform().toPage(offset / layout_.scale());
}

QPointF PDFView::convertPointFromPage(const QPointF &pagePoint, const PDFPage &page) const {
    return shownToView(page.transform().toShown(pagePoint), page.index());
}

QRectF PDFView::convertRectFromPage(const Rect &rect, const PDFPage &page) const {
    const QRectF shown = page.transform().toShown(rect);
    return {shownToView(shown.topLeft(), page.index()), shown.size() * layout_.scale()};
}

void PDFView::updateScrollBars() {
    const QSize content = layout_.contentSize();
    const auto update = [](QScrollBar *bar, int length, int visible) {
        bar->setRange(0, std::max(0, length - visible));
        bar->setPageStep(visible);
        bar->setSingleStep(40);
    };
    update(verticalScrollBar(), content.height(), viewport()->height());
    update(horizontalScrollBar(), content.width(), viewport()->width());
}

void PDFView::resizeEvent(QResizeEvent *event) {
    QAbstractScrollArea::resizeEvent(event);
    // Room for all that can be seen at once, cut into tiles that stand out on every side.
    const QSizeF pixels = QSizeF(viewport()->size()) * devicePixelRatioF() + QSizeF(2048, 2048);
    images_.setCapacity(std::max(
        usualImageBytes, static_cast<qint64>(4 * pixels.width() * pixels.height()) + (qint64{32} << 20)));
    keepingPage([this] { updateScrollBars(); });
    if (autoScales_) applyScale(layout_.scaleToFitWidth(viewport()->width()), {0, 0});
    pagesMoved();
}

void PDFView::scrollContentsBy(int /*dx*/, int /*dy*/) {
    if (!keepsPage_) {
        pinnedPage_.reset();
        notePageChange();
    }
    pagesMoved();
}

void PDFView::changeEvent(QEvent *event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) viewport()->update();
}

}  // namespace leafwright
