#include "pageview/PDFView.h"
#include "pageview/PageTiles.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <cmath>

namespace leafwright {

namespace {

/// No page that is read has as much to be marked; one that has keeps nobody waiting.
constexpr size_t mostMarksOfPage = 20'000;

qint64 bytesOf(const RenderRequest &request) {
    return qint64{4} * request.clip.width() * request.clip.height();
}

/// A colour to lay over paper so that the print shows through: lighter than the given one.
QColor markColour(const QColor &colour) {
    const auto lighter = [](int part) { return (part + 2 * 255) / 3; };
    return {lighter(colour.red()), lighter(colour.green()), lighter(colour.blue())};
}

/// As light as a colour; for what is selected in a view without the keyboard.
QColor grey(const QColor &colour) {
    const int lightness = qGray(colour.rgb());
    return {lightness, lightness, lightness};
}

}  // namespace

void PDFView::paintEvent(QPaintEvent *event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), palette().color(QPalette::Dark));
    const auto [first, last] = visiblePages();
    for (int i = first; i <= last; ++i) {
        const QRect rect = pageRectInView(i);
        if (!rect.intersects(event->rect())) continue;
        painter.save();
        painter.translate(rect.left(), rect.top() + layout_.pageSize(i).height() * layout_.scale());
        painter.scale(layout_.scale(), -layout_.scale());
        drawPage(painter, page(i));
        painter.restore();
    }
    if (isEmpty() && document_) drawPlaceholder(painter);
    if (requestedScale_ != deviceScale()) pagesMoved();  // another screen
}

void PDFView::setPlaceholderText(const QString &text) {
    placeholderText_ = text;
    setAccessibleDescription(document_ && isEmpty() ? text : QString());
    viewport()->update();
}

void PDFView::drawPlaceholder(QPainter &painter) const {
    const int margin = 2 * fontMetrics().height();
    painter.setPen(palette().color(QPalette::BrightText));
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignCenter | Qt::TextWordWrap, placeholderText_);
}

void PDFView::drawPage(QPainter &painter, const PDFPage &page) {
    const QRectF target = painter.worldTransform().mapRect(QRectF({0, 0}, layout_.pageSize(page.index())));
    painter.save();
    painter.setWorldTransform(QTransform());
    drawImages(painter, page, target);
    painter.restore();
    painter.save();
    drawMarks(painter, page);
    painter.restore();
}

/// The size of a page as it is shown, in device pixels.
QSize PDFView::devicePageSize(int index) const {
    const QSizeF size = layout_.pageSize(index) * deviceScale();
    return {std::max(1, qRound(size.width())), std::max(1, qRound(size.height()))};
}

/// Draws what there is of a page's image on white. @param target the whole page
void PDFView::drawImages(QPainter &painter, const PDFPage &page, const QRectF &target) {
    const int index = page.index();
    const double ratio = painter.device()->devicePixelRatioF();
    const double scale = target.width() / layout_.pageSize(index).width() * ratio;
    const bool inView = std::abs(scale - deviceScale()) < 1e-6 * deviceScale();
    painter.fillRect(target, Qt::white);

    std::vector<std::pair<RenderRequest, QImage>> sharp;
    bool complete = inView;
    if (inView) {
        const QRectF seen = painter.device() == viewport() ? QRectF(viewport()->rect()) & target : target;
        const QRectF part((seen.topLeft() - target.topLeft()) * ratio, seen.size() * ratio);
        for (const QRect &tile : tilesOfPage(devicePageSize(index), part.toAlignedRect())) {
            const RenderRequest request{index, deviceScale(), tile};
            QImage image = images_.find(request);
            complete = complete && !image.isNull();
            sharp.emplace_back(request, std::move(image));
        }
    }
    if (!complete) {
        painter.setClipRect(target, Qt::IntersectClip);
        for (const auto &[request, image] : images_.imagesAtOtherScale(index, inView ? deviceScale() : 0)) {
            const double zoom = scale / request.scale / ratio;
            const QRectF place(target.topLeft() + QPointF(request.clip.topLeft()) * zoom,
                               QSizeF(request.clip.size()) * zoom);
            painter.drawImage(place, image, QRectF(image.rect()));
        }
    }
    for (const auto &[request, image] : sharp) {
        const QRectF place(target.topLeft() + QPointF(request.clip.topLeft()) / ratio,
                           QSizeF(request.clip.size()) / ratio);
        painter.drawImage(place, image, QRectF(image.rect()));
    }
}

/// Draws what is selected and highlighted on a page, as far as its text has been read.
void PDFView::drawMarks(QPainter &painter, const PDFPage &page) {
    const PageTransform transform = page.transform();
    const double height = layout_.pageSize(page.index()).height();
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    const auto fill = [&](const std::vector<Rect> &rects, const QColor &colour) {
        for (const Rect &rect : rects) {
            const QRectF shown = transform.toShown(rect);
            painter.fillRect(QRectF(shown.x(), height - shown.bottom(), shown.width(), shown.height()),
                             colour);
        }
    };
    if (!highlightedSelections_.empty()) {
        fill(rectsOf(highlightedSelections_, page, highlightRects_), markColour(Qt::yellow));
    }
    fill(rectsOfMarkedText(page.index()), markColour(Qt::yellow));
    if (highlightedArea_ && highlightedArea_->pageIndex == page.index())
        fill({highlightedArea_->rect}, markColour(Qt::yellow));
    if (currentSelection_) {
        const QColor highlight = palette().color(QPalette::Active, QPalette::Highlight);
        fill(rectsOf({*currentSelection_}, page, selectionRects_),
             markColour(hasFocus() ? highlight : grey(highlight)));
    }
}

/// The rectangles around what selections hold of a page, kept for as long as they stay the same.
const std::vector<Rect> &PDFView::rectsOf(const std::vector<PDFSelection> &selections, const PDFPage &page,
                                          std::map<int, std::vector<Rect>> &cache) {
    static const std::vector<Rect> none;
    if (const auto known = cache.find(page.index()); known != cache.end()) return known->second;
    const auto contents = contentsOf(page.index());
    if (!contents) return none;
    std::vector<Rect> &rects = cache[page.index()];
    for (const PDFSelection &selection : selections) {
        for (const TextRange &range : selection.rangesOnPage(page)) {
            const std::vector<Rect> lines = contents->text.rects(range);
            rects.insert(rects.end(), lines.begin(), lines.end());
        }
    }
    return rects;
}

const std::vector<Rect> &PDFView::rectsOfMarkedText(int pageIndex) {
    static const std::vector<Rect> none;
    const auto marked = markedText_.find(pageIndex);
    if (marked == markedText_.end()) return none;
    if (const auto known = markedTextRects_.find(pageIndex); known != markedTextRects_.end())
        return known->second;
    const auto contents = contentsOf(pageIndex);
    if (!contents) return none;
    std::vector<Rect> &rects = markedTextRects_[pageIndex];
    for (const TextRange &range : marked->second) {
        if (rects.size() >= mostMarksOfPage) break;
        const std::vector<Rect> lines = contents->text.rects(range);
        rects.insert(rects.end(), lines.begin(), lines.end());
    }
    return rects;
}

// Images to be drawn

/// To be called when other parts of pages than before may be in sight.
void PDFView::pagesMoved() {
    rendered_ = false;
    viewport()->update();
    scheduleRequests();
}

/// Asks for images once all changes of this turn of the event loop are made.
void PDFView::scheduleRequests() {
    if (requestsScheduled_) return;
    requestsScheduled_ = true;
    QMetaObject::invokeMethod(this, &PDFView::updateRequests, Qt::QueuedConnection);
}

std::vector<RenderRequest> PDFView::tilesIn(const QRect &viewArea) const {
    std::vector<RenderRequest> tiles;
    const double ratio = devicePixelRatioF();
    const int offset = verticalScrollBar()->value();
    const int last = layout_.pageNear(viewArea.bottom() + offset);
    for (int i = layout_.pageNear(viewArea.top() + offset); i <= last; ++i) {
        const QRect rect = pageRectInView(i);
        const QRect seen = rect & viewArea;
        if (seen.isEmpty()) continue;
        const QRectF part(QPointF(seen.topLeft() - rect.topLeft()) * ratio, QSizeF(seen.size()) * ratio);
        for (const QRect &tile : tilesOfPage(devicePageSize(i), part.toAlignedRect()))
            tiles.push_back({i, deviceScale(), tile});
    }
    return tiles;
}

/// The tiles a windowful below and above, as many as there is room for beside those that can be seen.
std::vector<RenderRequest> PDFView::neighbouringTiles(const std::vector<RenderRequest> &visible) const {
    qint64 room = images_.capacity();
    for (const RenderRequest &tile : visible)
        room -= bytesOf(tile);
    std::vector<RenderRequest> neighbours;
    const QRect view = viewport()->rect();
    for (const int dy : {view.height(), -view.height()}) {
        for (const RenderRequest &tile : tilesIn(view.translated(0, dy))) {
            const auto isTile = [&tile](const RenderRequest &other) { return other == tile; };
            if (std::any_of(visible.begin(), visible.end(), isTile) ||
                std::any_of(neighbours.begin(), neighbours.end(), isTile))
                continue;
            room -= bytesOf(tile);
            if (room < 0) return neighbours;
            neighbours.push_back(tile);
        }
    }
    return neighbours;
}

void PDFView::updateRequests() {
    requestsScheduled_ = false;
    if (isEmpty()) return;
    requestedScale_ = deviceScale();
    const std::vector<RenderRequest> visible = tilesIn(viewport()->rect());
    std::vector<RenderRequest> missing;
    // Looking for those that are there keeps them: what is not wanted goes first.
    const auto noteMissing = [&](const RenderRequest &tile) {
        if (images_.find(tile).isNull()) missing.push_back(tile);
    };
    // The current page is what people wait for.
    const int current = currentPageIndex();
    for (const RenderRequest &tile : visible) {
        if (tile.pageIndex == current) noteMissing(tile);
    }
    for (const RenderRequest &tile : visible) {
        if (tile.pageIndex != current) noteMissing(tile);
    }
    const bool complete = missing.empty();
    for (const RenderRequest &tile : neighbouringTiles(visible))
        noteMissing(tile);
    queue_.setWanted(PageWork::Page, missing);
    requestContents();
    if (complete && !rendered_) {
        rendered_ = true;
        Q_EMIT visiblePagesRendered();
    }
}

void PDFView::takeResult(const PageResult &result) {
    if (result.work == PageWork::Page) takeImage(result);
    if (result.work == PageWork::Contents) takeContents(result);
}

void PDFView::takeImage(const PageResult &result) {
    images_.insert(result.request, result.image);
    if (const QRect rect = pageRectInView(result.request.pageIndex); rect.intersects(viewport()->rect()))
        viewport()->update(rect);
    scheduleRequests();
}

}  // namespace leafwright
