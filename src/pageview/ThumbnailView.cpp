#include "pageview/ThumbnailView.h"

#include "widgets/DimmedSelection.h"

#include <QAbstractListModel>
#include <QEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <cmath>

namespace leafwright {

namespace {

/// Room for some hundred thumbnails of the usual size.
constexpr qint64 mostImageBytes = qint64{32} << 20;

/// The space around a thumbnail and its label, in pixels.
constexpr int margin = 6;

/// The pages of a document, by their labels.
class PageListModel final : public QAbstractListModel {
public:
    PageListModel(const PDFDocument *document, QObject *parent)
        : QAbstractListModel(parent), document_(document) {}

    int rowCount(const QModelIndex &parent = {}) const override {
        return document_ && !parent.isValid() ? document_->pageCount() : 0;
    }
    QVariant data(const QModelIndex &index, int role) const override {
        if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)
            return document_->pageLabel(index.row());
        return {};
    }
    Qt::ItemFlags flags(const QModelIndex &index) const override {
        return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren
                               : Qt::NoItemFlags;
    }

private:
    const PDFDocument *document_;
};

/// Draws a page's thumbnail with its label below.
class ThumbnailDelegate final : public QStyledItemDelegate {
public:
    explicit ThumbnailDelegate(ThumbnailView *view) : QStyledItemDelegate(view), view_(view) {}

    QSize sizeHint(const QStyleOptionViewItem & /*option*/, const QModelIndex & /*index*/) const override {
        return view_->gridSize();
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override {
        const bool selected = option.state.testFlag(QStyle::State_Selected);
        QPalette palette = option.palette;
        // Lists leave it to their delegates to look whether they have the keyboard.
        if (option.state.testFlag(QStyle::State_Enabled))
            palette.setCurrentColorGroup(option.state.testFlag(QStyle::State_Active) ? QPalette::Active
                                                                                     : QPalette::Inactive);
        painter->save();
        if (selected) painter->fillRect(option.rect, palette.highlight());
        const QRect labelRect = labelRectIn(option.rect);
        const QRect place(option.rect.left(), option.rect.top() + margin, option.rect.width(),
                          labelRect.top() - option.rect.top() - margin);
        const QRect paper = paperIn(place, index.row());
        painter->fillRect(paper, Qt::white);
        if (const QImage image = view_->thumbnail(index.row()); !image.isNull())
            painter->drawImage(paper, image);
        painter->setPen(palette.color(QPalette::Mid));
        painter->drawRect(paper.adjusted(0, 0, -1, -1));
        painter->setFont(view_->labelFont());
        painter->setPen(palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
        const QString label =
            painter->fontMetrics().elidedText(index.data().toString(), Qt::ElideMiddle, labelRect.width());
        painter->drawText(labelRect, Qt::AlignCenter, label);
        if (option.state.testFlag(QStyle::State_HasFocus)) {
            painter->setPen(
                QPen(palette.color(selected ? QPalette::HighlightedText : QPalette::Text), 1, Qt::DotLine));
            painter->drawRect(option.rect.adjusted(1, 1, -2, -2));
        }
        painter->restore();
    }

private:
    QRect labelRectIn(const QRect &cell) const {
        const int height = QFontMetrics(view_->labelFont()).height();
        return {cell.left() + margin, cell.bottom() + 1 - margin - height, cell.width() - 2 * margin, height};
    }

    /// The page's outline, centred in a place.
    QRect paperIn(const QRect &place, int row) const {
        const QSize size = view_->paperSize(row);
        return {place.left() + (place.width() - size.width()) / 2,
                place.top() + (place.height() - size.height()) / 2, size.width(), size.height()};
    }

    ThumbnailView *view_;
};

}  // namespace

ThumbnailView::ThumbnailView(QWidget *parent)
    : QListView(parent), images_(mostImageBytes), labelFont_(QListView::font()) {
    setAccessibleName(tr("Pages"));
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setDragEnabled(false);
    setMovement(Static);
    setFlow(LeftToRight);
    setWrapping(true);
    setResizeMode(Adjust);
    setUniformItemSizes(true);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setItemDelegate(new ThumbnailDelegate(this));
    connect(this, &QListView::clicked, this, [this](const QModelIndex &index) { choosePage(index.row()); });
    connect(this, &QListView::activated, this, [this](const QModelIndex &index) { choosePage(index.row()); });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &ThumbnailView::scheduleRequests);
    takeDocument();
    layOut();
}

ThumbnailView::~ThumbnailView() {
    setPDFView(nullptr);
}

void ThumbnailView::setPDFView(PDFView *view) {
    if (view_) {
        disconnect(view_, nullptr, this, nullptr);
        disconnect(&view_->renderQueue(), nullptr, this, nullptr);
        view_->renderQueue().setWanted(PageWork::Thumbnail, {});
    }
    view_ = view;
    if (view) {
        connect(view, &PDFView::documentChanged, this, &ThumbnailView::takeDocument);
        connect(view, &PDFView::pageChanged, this, &ThumbnailView::followPage);
        connect(view, &QObject::destroyed, this, [this] {
            view_.clear();
            takeDocument();
        });
        connect(&view->renderQueue(), &RenderQueue::finished, this, &ThumbnailView::takeResult);
    }
    takeDocument();
}

void ThumbnailView::takeDocument() {
    images_.clear();
    rendered_ = false;
    const QScopedValueRollback guard(following_, true);
    QAbstractItemModel *const old = model();
    QItemSelectionModel *const oldSelection = selectionModel();
    setModel(new PageListModel(document(), this));
    delete oldSelection;
    delete old;
    tallest_ = 0;
    for (int i = 0; document() && i < document()->pageCount(); ++i) {
        const QSizeF page = document()->page(i)->transform().shownSize();
        tallest_ = std::max(tallest_, page.height() / page.width());
    }
    layOut();
    followPage();
    scheduleRequests();
}

const PDFDocument *ThumbnailView::document() const {
    return view_ ? view_->document() : nullptr;
}

void ThumbnailView::followPage() {
    const PDFPage *const current = view_ ? view_->currentPage() : nullptr;
    if (!current || !model() || current->index() >= model()->rowCount()) return;
    const QScopedValueRollback guard(following_, true);
    const QModelIndex index = model()->index(current->index(), 0);
    setCurrentIndex(index);
    scrollTo(index);
}

void ThumbnailView::choosePage(int index) {
    if (view_ && view_->document()) view_->goToPage(view_->document()->page(index));
}

void ThumbnailView::initViewItemOption(QStyleOptionViewItem *option) const {
    QListView::initViewItemOption(option);
    dimSelection(*option);
}

void ThumbnailView::currentChanged(const QModelIndex &current, const QModelIndex &previous) {
    // A list says that the keyboard went to its current item, wherever the keyboard is.
    if (hasFocus())
        QListView::currentChanged(current, previous);
    else
        QAbstractItemView::currentChanged(current, previous);
    if (!following_ && current.isValid()) choosePage(current.row());
}

void ThumbnailView::setMaximumNumberOfColumns(int columns) {
    maximumColumns_ = std::max(0, columns);
    layOut();
}

void ThumbnailView::setThumbnailSize(const QSizeF &size) {
    thumbnailSize_ = size.expandedTo(QSizeF(8, 8)).boundedTo(QSizeF(1024, 1024));
    images_.clear();
    layOut();
}

void ThumbnailView::setLabelFont(const QFont &font) {
    labelFont_ = font;
    layOut();
}

/// Gives every page a cell; as many cells beside each other as fit and are allowed share the width. Images
/// that are wider than the view are made smaller, and cells are no higher than the tallest of them.
void ThumbnailView::layOut() {
    const int room = viewport()->width() - 1;  // a row that fills the width exactly would be broken
    const double widest = std::max(1, room - 2 * margin);
    place_ = {std::min(thumbnailSize_.width(), widest), thumbnailSize_.height()};
    if (tallest_ > 0) place_.setHeight(std::min(place_.height(), place_.width() * tallest_));
    const int width = qCeil(place_.width()) + 2 * margin;
    const int height = qCeil(place_.height()) + QFontMetrics(labelFont_).height() + 3 * margin;
    int columns = std::max(1, room / width);
    if (maximumColumns_ > 0) columns = std::min(columns, maximumColumns_);
    const QSize cell(std::max(width, room / columns), height);
    if (cell != gridSize()) setGridSize(cell);
    verticalScrollBar()->setSingleStep(height / 4);
    rendered_ = false;
    viewport()->update();
    scheduleRequests();
}

void ThumbnailView::resizeEvent(QResizeEvent *event) {
    QListView::resizeEvent(event);
    layOut();
    if (currentIndex().isValid()) scrollTo(currentIndex());
}

void ThumbnailView::changeEvent(QEvent *event) {
    QListView::changeEvent(event);
    if (event->type() == QEvent::StyleChange) layOut();
}

double ThumbnailView::pageScale(int index) const {
    const QSizeF page = document()->page(index)->transform().shownSize();
    return std::min(place_.width() / page.width(), place_.height() / page.height());
}

QSize ThumbnailView::paperSize(int index) const {
    const QSizeF size = document()->page(index)->transform().shownSize() * pageScale(index);
    return {std::max(1, qRound(size.width())), std::max(1, qRound(size.height()))};
}

RenderRequest ThumbnailView::requestFor(int index) const {
    const double ratio = devicePixelRatioF();
    const QSizeF size = QSizeF(paperSize(index)) * ratio;
    return {index, pageScale(index) * ratio, QRect(0, 0, qRound(size.width()), qRound(size.height()))};
}

QImage ThumbnailView::thumbnail(int index) {
    return images_.find(requestFor(index));
}

/// The first and last page that can be seen; the last is before the first where there is none.
std::pair<int, int> ThumbnailView::visibleRows() const {
    const int count = model() ? model()->rowCount() : 0;
    // Cells come in reading order, so that a place in the view can be searched by halves.
    const auto firstWhere = [&](const auto &holds) {
        int first = 0;
        int end = count;
        while (first < end) {
            const int middle = first + (end - first) / 2;
            if (holds(visualRect(model()->index(middle, 0)))) {
                end = middle;
            } else {
                first = middle + 1;
            }
        }
        return first;
    };
    const int bottom = viewport()->height();
    return {firstWhere([](const QRect &cell) { return cell.bottom() >= 0; }),
            firstWhere([bottom](const QRect &cell) { return cell.top() >= bottom; }) - 1};
}

void ThumbnailView::scheduleRequests() {
    rendered_ = false;
    if (requestsScheduled_) return;
    requestsScheduled_ = true;
    QMetaObject::invokeMethod(this, &ThumbnailView::updateRequests, Qt::QueuedConnection);
}

void ThumbnailView::updateRequests() {
    requestsScheduled_ = false;
    if (!document() || !isVisible()) return;
    const auto [first, last] = visibleRows();
    std::vector<RenderRequest> missing;
    for (int i = first; i <= last; ++i) {
        if (thumbnail(i).isNull()) missing.push_back(requestFor(i));
    }
    view_->renderQueue().setWanted(PageWork::Thumbnail, missing);
    if (missing.empty() && !rendered_) {
        rendered_ = true;
        Q_EMIT visibleThumbnailsRendered();
    }
}

void ThumbnailView::showEvent(QShowEvent *event) {
    QListView::showEvent(event);
    scheduleRequests();
}

void ThumbnailView::takeResult(const PageResult &result) {
    if (result.work != PageWork::Thumbnail) return;
    images_.insert(result.request, result.image);
    update(model()->index(result.request.pageIndex, 0));
    const auto [first, last] = visibleRows();
    const bool complete = [&, top = first, bottom = last] {
        for (int i = top; i <= bottom; ++i) {
            if (!images_.contains(requestFor(i))) return false;
        }
        return true;
    }();
    if (complete && !rendered_) {
        rendered_ = true;
        Q_EMIT visibleThumbnailsRendered();
    }
}

}  // namespace leafwright
