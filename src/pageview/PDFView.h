#pragma once

#include "pageview/PageHistory.h"
#include "pageview/PageImageCache.h"
#include "pageview/PageLayout.h"
#include "pageview/RenderQueue.h"
#include "pdf/PDFDocument.h"
#include "pdf/PDFSelection.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>

#include <map>
#include <memory>
#include <optional>
#include <vector>

class PDFViewTextDrag;

namespace leafwright {

/// Shows the pages of a document, one below the other, on a gray ground. Pages are drawn on threads; until
/// one is ready, an image of it at another scale or white paper stands in.
///
/// View points are in pixels of the viewport, origin at its top left. Page points are in page space.
class PDFView : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit PDFView(QWidget *parent = nullptr);
    ~PDFView() override;

    /// Shows another document, from its first page. Before this returns, no thread uses the old one any more.
    /// @param document not owned, must outlive its being shown; may be null
    void setDocument(PDFDocument *document);
    PDFDocument *document() const { return document_; }

    /// What stands in the place of the pages where there are none.
    void setPlaceholderText(const QString &text);

    /// The first and the last page that can be seen, 0-based; the last before the first if there is none.
    std::pair<int, int> visiblePages() const;
    /// The page in the middle of the view or, right after going to a page, that one; null without a document.
    const PDFPage *currentPage() const;
    /// Shows a page, with its top at the top of the view where there is enough below it. Null does nothing.
    void goToPage(const PDFPage *page);
    /// Shows a point at the top of the view; the zero point is no particular spot, but the top of the page.
    /// A page index out of range does nothing.
    void goToDestination(const PDFDestination &destination);
    /// The current page and the top left of what is seen of it, which goToDestination() shows like this;
    /// absent without pages.
    std::optional<PDFDestination> currentDestination() const;
    /// The four steps stay where they are when there is no such page.
    void goToNextPage();
    void goToPreviousPage();
    void goToFirstPage();
    void goToLastPage();
    bool canGoToNextPage() const;
    bool canGoToPreviousPage() const;
    /// To where the view was before the last jump, that is, before it went to a page or a destination other
    /// than by a step; and back again. Stays where there is nowhere to go.
    void goBack();
    void goForward();
    bool canGoBack() const { return history_.canGoBack(); }
    bool canGoForward() const { return history_.canGoForward(); }

    /// Pixels per point.
    double scaleFactor() const { return layout_.scale(); }
    /// Sets the scale, within bounds, and ends automatic scaling. What is in the middle of the view stays
    /// there.
    void setScaleFactor(double scale);
    /// Whether the scale follows the width of the view, so that the widest page fits.
    bool autoScales() const { return autoScales_; }
    void setAutoScales(bool on);
    void zoomIn();
    void zoomOut();
    /// The same as setAutoScales(true).
    void zoomToFit();
    /// Makes the current page as large as can be seen whole, and shows it.
    void zoomToPage();
    /// A point of the page becomes one of the screen.
    void zoomToActualSize();

    /// The part of a page that is shown, its crop box, in page space; empty for null.
    Rect boundsForDisplayBox(const PDFPage *page) const;
    /// The page under a view point. @param nearest whether to take the nearest page where there is none
    /// under it. Null if there is no such page.
    const PDFPage *pageForPoint(const QPointF &viewPoint, bool nearest) const;
    /// A page of the document shown is asked for in these. The point may lie outside the page.
    QPointF convertPointToPage(const QPointF &viewPoint, const PDFPage &page) const;
    QPointF convertPointFromPage(const QPointF &pagePoint, const PDFPage &page) const;
    QRectF convertRectFromPage(const Rect &rect, const PDFPage &page) const;

    /// The selected text; absent when nothing is selected.
    const std::optional<PDFSelection> &currentSelection() const { return currentSelection_; }
    /// An empty selection selects nothing.
    void setCurrentSelection(const std::optional<PDFSelection> &selection);
    void clearSelection() { setCurrentSelection(std::nullopt); }
    /// Text to be marked beside the selection.
    const std::vector<PDFSelection> &highlightedSelections() const { return highlightedSelections_; }
    void setHighlightedSelections(const std::vector<PDFSelection> &selections);
    /// Marks text like the highlighted selections: so much of it that pages are told one by one. The pages
    /// must be those of the document shown.
    void addMarkedText(int pageIndex, const std::vector<TextRange> &ranges);
    void clearMarkedText();
    /// Whether a place that is left can be gone back to.
    enum class Leaving { Noted, Unnoted };
    /// Shows text of a page, which becomes the current one at once; where the text can't be seen there, it is
    /// shown as soon as its place is known. A page index out of range does nothing.
    void showText(int pageIndex, const TextRange &range, Leaving leaving = Leaving::Noted);
    /// A part of a page, in page space.
    struct PageArea {
        int pageIndex = 0;
        Rect rect;

        friend bool operator==(const PageArea &, const PageArea &) = default;
    };
    /// A place to be marked like such text, whether there is text or not.
    const std::optional<PageArea> &highlightedArea() const { return highlightedArea_; }
    void setHighlightedArea(const std::optional<PageArea> &area);
    /// Asks for the selected text to be copied, with copyRequested(); without any, nothing happens.
    void copy();

    /// Whether all that can be seen of the pages is drawn at the scale of the view.
    bool visiblePagesAreRendered() const { return rendered_; }
    /// The bytes that images of pages take at the moment, and how many they may.
    qint64 imageBytes() const { return images_.bytes(); }
    qint64 imageCapacity() const { return images_.capacity(); }
    /// Draws for this view and those that belong to it.
    RenderQueue &renderQueue() { return queue_; }

Q_SIGNALS:
    void documentChanged();
    void pageChanged();
    void selectionChanged();
    void scaleChanged();
    /// Whether one can go back or forward may have changed.
    void historyChanged();
    /// All that can be seen of the pages is drawn at the scale of the view.
    void visiblePagesRendered();
    /// A link to somewhere outside this document was clicked.
    void linkClicked(const QString &uri);
    /// The user wants this text on the clipboard.
    void copyRequested(const QString &text);

protected:
    /// Draws one page: its image, then what is selected and highlighted on it. The painter maps points of
    /// the page as it is shown, with the origin at its lower left corner and y pointing up; so on a page
    /// without rotation, translating by minus the crop box's origin leads to page space.
    /// Called for every page that can be seen; the painter comes back in the state in which it was given.
    virtual void drawPage(QPainter &painter, const PDFPage &page);
    /// Starts a drag of selected text and returns when it is over.
    virtual void dragText(const QString &text);

    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    /// The second of quick clicks, and of them only; a fourth, say, is a press.
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    /// Claims the keys that lead back and forward, which elsewhere in a window do something else.
    bool event(QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    /// A point on a page.
    struct PagePoint {
        int pageIndex = 0;
        QPointF point;  ///< In page space.
    };
    /// A place that stays where it is in the view while the scale changes.
    struct Anchor {
        QPointF viewPoint;
        int pageIndex = 0;
        QPointF fraction;  ///< Of the page's width and height, from its top left.
    };

    // Places
    const PDFPage &page(int index) const { return *document_->page(index); }
    bool isEmpty() const { return layout_.pageCount() == 0; }
    int contentWidth() const;
    QRect pageRectInView(int index) const;
    QPointF shownToView(const QPointF &shown, int index) const;
    PagePoint pagePointNear(const QPointF &viewPoint) const;
    int currentPageIndex() const;
    Anchor anchorAt(const QPointF &viewPoint) const;
    void restore(const Anchor &anchor);
    void applyScale(double scale, const QPointF &viewPoint);
    void updateScrollBars();
    template <typename Action>
    void keepingPage(Action &&action);
    void goStraightTo(const PDFDestination &destination);
    void scrollTo(int index, const QPointF &shown);
    void returnTo(const std::optional<Anchor> &place);
    void notePageChange();
    void resetPages();

    // Images
    double deviceScale() const { return layout_.scale() * devicePixelRatioF(); }
    QSize devicePageSize(int index) const;
    std::vector<RenderRequest> tilesIn(const QRect &viewArea) const;
    std::vector<RenderRequest> neighbouringTiles(const std::vector<RenderRequest> &visible) const;
    void pagesMoved();
    void scheduleRequests();
    void updateRequests();
    void takeResult(const PageResult &result);
    void takeImage(const PageResult &result);
    void drawImages(QPainter &painter, const PDFPage &page, const QRectF &target);
    void drawMarks(QPainter &painter, const PDFPage &page);
    void drawPlaceholder(QPainter &painter) const;
    const std::vector<Rect> &rectsOf(const std::vector<PDFSelection> &selections, const PDFPage &page,
                                     std::map<int, std::vector<Rect>> &cache);
    const std::vector<Rect> &rectsOfMarkedText(int pageIndex);

    // What is on pages
    bool hasMarks(const PDFPage &page) const;
    bool needsContents(int pageIndex) const;
    void requestContents();
    void takeContents(const PageResult &result);
    std::shared_ptr<const PageContents> contentsOf(int pageIndex) const;
    std::optional<QRectF> shownRectOf(const PageContents &contents, int pageIndex,
                                      const TextRange &range) const;
    void goToText(const PageContents &contents, int pageIndex, const TextRange &range);
    bool isOnSelection(const PagePoint &place) const;
    std::optional<PDFLink> linkAt(const QPointF &viewPoint) const;

    // Input
    /// What the mouse is doing.
    enum class Gesture { None, Click, Selecting, OnSelection };
    /// What a click asked for that waits for the contents of a page.
    enum class Awaited { None, Word, Line, Link };

    void press(const QPoint &viewPoint, bool extend);
    void ask(Awaited awaited, const PagePoint &place);
    void answer();
    void follow(const PDFLink &link);
    void dragSelectionTo(const QPointF &viewPoint);
    void updateDragSelection();
    std::optional<TextRange> draggedRange(int pageIndex, const PagePoint &first, const PagePoint &last) const;
    void select(const std::optional<PDFSelection> &selection);
    void pointAt(const QPointF &viewPoint);
    void pullTo(const QPoint &viewPoint);
    void countClick(const QMouseEvent &event);

    RenderQueue queue_;
    PDFDocument *document_ = nullptr;
    QString placeholderText_;
    PageLayout layout_;
    PageImageCache images_;
    bool autoScales_ = false;
    bool keepsPage_ = false;  ///< While the view itself moves the pages.
    PageHistory<Anchor> history_;
    std::optional<int> pinnedPage_;  ///< The page gone to, current until the view is scrolled.
    int notedPage_ = -1;             ///< The current page of which was told last.
    bool rendered_ = false;
    bool requestsScheduled_ = false;
    double requestedScale_ = 0;

    std::optional<PDFSelection> currentSelection_;
    std::vector<PDFSelection> highlightedSelections_;
    std::optional<PageArea> highlightedArea_;
    std::map<int, std::vector<TextRange>> markedText_;  ///< By page.
    std::map<int, std::vector<Rect>> selectionRects_;   ///< By page, of those seen.
    std::map<int, std::vector<Rect>> highlightRects_;
    std::map<int, std::vector<Rect>> markedTextRects_;
    /// Text that is to be shown when its page has been read.
    struct AwaitedText {
        int pageIndex = 0;
        TextRange range;
    };
    std::optional<AwaitedText> awaitedText_;

    std::vector<std::pair<int, std::shared_ptr<const PageContents>>>
        contents_;                    ///< By page; the latest last.
    std::map<int, int> textLengths_;  ///< By page, of those read.
    Gesture gesture_ = Gesture::None;
    bool dragIsOpen_ = false;  ///< Some of the text that was dragged over is yet to be read.
    PagePoint anchor_;         ///< Where a drag over text began.
    PagePoint head_;           ///< Where it is now.
    Awaited awaited_ = Awaited::None;
    PagePoint awaitedPoint_;
    std::optional<int> pointerPage_;
    QPoint pointer_;
    QPoint pressedAt_;
    std::optional<QPoint> pulledFrom_;  ///< Where the middle button holds the pages.
    int clickCount_ = 0;                ///< Quick clicks in one place so far, the present one included.
    Qt::MouseButton clickButton_ = Qt::NoButton;
    quint64 clickTime_ = 0;  ///< In milliseconds of the window system.
    QPoint clickedAt_;
    QBasicTimer autoScrollTimer_;
    PDFViewTextDrag *textDrag_;
};

/// Does what moves pages without somebody having scrolled: the page gone to stays the current one.
template <typename Action>
void PDFView::keepingPage(Action &&action) {
    const bool within = std::exchange(keepsPage_, true);
    action();
    keepsPage_ = within;
    if (!within) notePageChange();
}

}  // namespace leafwright
