#include "document/window/HeadingMapMarks.h"

#include "autotoc/HeadingLevelMap.h"
#include "categories/PageFonts.h"
#include "document/MyDocument.h"
#include "document/window/HeadingMapModel.h"
#include "pageview/PDFView.h"

#include <QEvent>
#include <QItemSelectionModel>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>

namespace leafwright {

HeadingMapMarks::HeadingMapMarks(MyDocument &document, PDFView &pages, QTableView &table, QWidget &findBar)
    : document_(document), pages_(pages), table_(table), findBar_(findBar) {
    findBar.installEventFilter(this);
    timer_.setSingleShot(true);
    timer_.setInterval(0);
    connect(&timer_, &QTimer::timeout, this, &HeadingMapMarks::update);
    const auto again = [this] { timer_.start(); };
    connect(&pages, &PDFView::documentChanged, this, [this] {
        forget();
        timer_.start();
    });
    connect(&pages, &PDFView::selectionChanged, this, again);
    connect(&pages, &PDFView::scaleChanged, this, again);
    connect(pages.verticalScrollBar(), &QScrollBar::valueChanged, this, again);
    connect(table.selectionModel(), &QItemSelectionModel::selectionChanged, this, again);
    connect(&document.headingMapModel(), &QAbstractItemModel::dataChanged, this, again);
    connect(&document.headingMapModel(), &QAbstractItemModel::modelReset, this, again);
}

bool HeadingMapMarks::eventFilter(QObject *watched, QEvent *event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::ShowToParent || type == QEvent::HideToParent) timer_.start();
    return QObject::eventFilter(watched, event);
}

void HeadingMapMarks::forget() {
    font_.clear();
    ranges_.clear();
    marks_.clear();
}

QString HeadingMapMarks::selectedFont() const {
    const QModelIndexList rows = table_.selectionModel()->selectedRows();
    if (rows.isEmpty()) return {};
    return fontIDOf(document_.listH1H2H3Config().at(static_cast<size_t>(rows.first().row())));
}

const std::vector<TextRange> &HeadingMapMarks::rangesOn(const PDFPage &page) {
    static const std::vector<TextRange> none;
    if (const auto known = ranges_.find(page.index()); known != ranges_.end()) return known->second;
    // To read it would hold up the scrolling.
    if (!page.document().hasReadPageText(page.index())) return none;
    return ranges_[page.index()] = rangesOfFontID(page, font_);
}

std::vector<TextRange> HeadingMapMarks::marksOn(const PDFPage &page) {
    const auto &selection = pages_.currentSelection();
    const std::vector<TextRange> selected =
        selection ? selection->rangesOnPage(page) : std::vector<TextRange>();
    std::vector<TextRange> marks;
    for (const TextRange &range : rangesOn(page))
        if (std::ranges::find(selected, range) == selected.end()) marks.push_back(range);
    return marks;
}

void HeadingMapMarks::update() {
    timer_.stop();
    const QString font = selectedFont();
    if (font != font_) {
        font_ = font;
        ranges_.clear();
    }
    std::map<int, std::vector<TextRange>> marks;
    if (!font.isNull() && pages_.document() && findBar_.isHidden()) {
        const auto [first, last] = pages_.visiblePages();
        for (int i = first; i <= last; ++i)
            if (auto ranges = marksOn(*pages_.document()->page(i)); !ranges.empty())
                marks[i] = std::move(ranges);
    }
    if (marks != marks_) show(marks);
    marks_ = std::move(marks);
}

void HeadingMapMarks::show(const std::map<int, std::vector<TextRange>> &marks) {
    PDFSelection selection;
    for (const auto &[index, ranges] : marks)
        for (const TextRange &range : ranges)
            selection.add(*pages_.document()->page(index), range);
    pages_.setHighlightedSelections(selection.isEmpty() ? std::vector<PDFSelection>()
                                                        : std::vector{selection});
}

}  // namespace leafwright
