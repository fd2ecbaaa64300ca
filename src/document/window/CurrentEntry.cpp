#include "document/window/CurrentEntry.h"

#include "document/MyDocument.h"
#include "model/TreeWalk.h"
#include "outlineview/OutlineView.h"
#include "pageview/PDFView.h"
#include "tree/TreeController.h"

#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace leafwright {

namespace {

/// Who has gone to an entry reads it, although its title is a little below the top of the view.
constexpr double pixelsBelowTop = 24;
constexpr int pauseBeforeLook = 100;  // milliseconds
/// So many take a millisecond or two.
constexpr size_t entriesAtOnce = 2'000;

}  // namespace

CurrentEntry::CurrentEntry(MyDocument &document, PDFView &pages, OutlineView &outline)
    : document_(document), pages_(pages), outline_(outline) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &CurrentEntry::look);
    const auto again = [this] { lookAgain(); };
    connect(&pages, &PDFView::pageChanged, this, again);
    connect(&pages, &PDFView::documentChanged, this, again);
    connect(pages.verticalScrollBar(), &QScrollBar::valueChanged, this, again);
    const TreeController *tree = &document.treecontroller();
    connect(tree, &QAbstractItemModel::rowsInserted, this, again);
    connect(tree, &QAbstractItemModel::rowsRemoved, this, again);
    connect(tree, &QAbstractItemModel::rowsMoved, this, again);
    connect(tree, &QAbstractItemModel::layoutChanged, this, again);
    connect(tree, &QAbstractItemModel::dataChanged, this, again);
}

CurrentEntry::~CurrentEntry() = default;

void CurrentEntry::lookAgain() {
    if (!timer_.isActive()) timer_.start(pauseBeforeLook);
}

void CurrentEntry::reveal() {
    if (!document_.pdfDoc()) return document_.platform().beep();
    reveals_ = true;
    look();
}

void CurrentEntry::finish() {
    while (timer_.isActive() && !document_.isBusy()) {
        timer_.stop();
        look();
    }
}

/// Marks the entry that is being read, or goes on finding out where entries lead.
void CurrentEntry::look() {
    if (!document_.pdfDoc()) return;
    if (document_.isBusy()) return timer_.start(pauseBeforeLook);
    if (!placesAreCurrent()) beginPlaces();
    if (!addPlaces()) return timer_.start(0);
    TreeNode *entry = entryShown();
    outline_.setMarkedItem(entry);
    if (!std::exchange(reveals_, false)) return;
    if (!entry) return document_.platform().beep();
    outline_.revealItems({entry});
    document_.treecontroller().setSelectedNodes({entry});
    outline_.setFocus();
}

bool CurrentEntry::placesAreCurrent() const {
    return places_ && places_->structureRevision == document_.treecontroller().structureRevision() &&
           places_->revision == document_.edits().revision() &&
           places_->printedPageOffset == document_.printedPageOffset();
}

void CurrentEntry::beginPlaces() {
    const TreeController &tree = document_.treecontroller();
    places_ = std::make_unique<Places>();
    places_->structureRevision = tree.structureRevision();
    places_->revision = document_.edits().revision();
    places_->printedPageOffset = document_.printedPageOffset();
    places_->nodes.reserve(tree.nodeCount());
    walkBelow(tree.arrangedObjects(),
              [this](TreeNode &node, size_t /*depth*/) { places_->nodes.push_back(&node); });
}

/// @return whether all are there
bool CurrentEntry::addPlaces() {
    if (places_->added == places_->nodes.size()) return true;
    const size_t end = std::min(places_->nodes.size(), places_->added + entriesAtOnce);
    for (; places_->added < end; ++places_->added) {
        const auto place = placeOf(*places_->nodes[places_->added]);
        if (place) places_->entries.add(places_->added, *place);
    }
    if (end < places_->nodes.size()) return false;
    places_->entries.sort();
    return true;
}

std::optional<ReadingPlace> CurrentEntry::placeOf(const TreeNode &node) const {
    const MyOutlineItem &item = *node.representedObject();
    const auto index = document_.outline().knownPageIndexOfItem(item);
    const PDFPage *page = index ? document_.pdfDoc()->page(*index) : nullptr;
    if (!page) return std::nullopt;
    const QPointF point = item.pointOnPage();
    return ReadingPlace{*index, isZeroPoint(point) ? 0 : page->transform().toShown(point).y()};
}

/// Where the view of the pages is.
std::optional<ReadingPlace> CurrentEntry::placeShown() const {
    const PDFPage *page = pages_.currentPage();
    if (!page) return std::nullopt;
    const QPointF top = pages_.convertPointToPage({0, pixelsBelowTop}, *page);
    return ReadingPlace{page->index(), std::max(pixelsBelowTop, page->transform().toShown(top).y())};
}

TreeNode *CurrentEntry::entryShown() const {
    const auto place = placeShown();
    const auto entry = place ? places_->entries.entryAt(*place) : std::nullopt;
    return entry ? places_->nodes[*entry] : nullptr;
}

}  // namespace leafwright
