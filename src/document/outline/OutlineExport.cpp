#include "document/outline/OutlineExport.h"

#include "model/OutlineEdits.h"

#include <stdexcept>

namespace leafwright {

namespace {

/// The horizontal middle of the page's top edge.
QPointF defaultPoint(const Rect &mediaBox) {
    return {mediaBox.width * 0.5, mediaBox.y + mediaBox.height};
}

}  // namespace

std::unique_ptr<PDFOutline> OutlineExport::run(MyOutlineItem &root) {
    finalOutlineDict_.clear();
    finalOutlineArray_.clear();
    addChildrenOf(root, QString(), 1);
    std::stable_sort(
        finalOutlineArray_.begin(), finalOutlineArray_.end(),
        [](const NumberedItem &a, const NumberedItem &b) { return a.item->levelnum() > b.item->levelnum(); });
    return linkEntries();
}

/// Numbers everything below the item, parents before children and siblings in order.
void OutlineExport::addChildrenOf(MyOutlineItem &item, const QString &prefix, quint64 level) {
    struct Siblings {
        MyOutlineItem *parent;
        QString prefix;
        size_t next = 0;
    };
    std::vector<Siblings> open;  // the way down to where we are; no recursion, trees may be deep
    open.push_back({&item, prefix});
    while (!open.empty()) {
        Siblings &siblings = open.back();
        if (siblings.next == siblings.parent->children().size()) {
            open.pop_back();
            continue;
        }
        const QString position = QString::number(siblings.next);
        const QString levelstr = siblings.prefix.isNull() ? position : siblings.prefix + u'.' + position;
        MyOutlineItem &child = *siblings.parent->children()[siblings.next];
        ++siblings.next;
        number(child, levelstr, level + open.size() - 1);
        open.push_back({&child, levelstr});
    }
}

void OutlineExport::number(MyOutlineItem &item, const QString &levelstr, quint64 level) {
    if (level > deepestLevel) throw std::length_error("the outline is nested too deeply");
    item.setLevelnum(level);
    item.setLevelstr(levelstr);
    auto entry = std::make_unique<PDFOutline>(item.pageTitle());
    entry->setDestination(destinationOf(item));
    entry->setEntry(item.entry());
    finalOutlineDict_.insert(levelstr, entry.get());
    finalOutlineArray_.push_back({&item, std::move(entry)});
}

std::optional<PDFDestination> OutlineExport::destinationOf(MyOutlineItem &item) const {
    const Target target = item.target();
    const auto *page = std::get_if<PageTarget>(&target);
    if (!page) return std::nullopt;
    const auto imported = pages_.keepsImported ? page->importedPage : std::nullopt;
    const int index = imported ? *imported : pages_.getRealPageArrayIndex(page->label).value_or(0);
    const std::optional<Rect> mediaBox = pages_.mediaBox(index);
    if (!page->point) OutlineEdits::setDefaultPoint(item, defaultPoint(mediaBox.value_or(Rect())));
    if (!mediaBox) return std::nullopt;
    return PDFDestination{index, item.pointOnPage()};
}

/// Parents take their children in when those have taken in theirs, so an item's position is always the
/// number of children that its parent has by then.
std::unique_ptr<PDFOutline> OutlineExport::linkEntries() {
    auto root = std::make_unique<PDFOutline>();
    for (NumberedItem &numbered : finalOutlineArray_) {
        const QString parent = numbered.item->wantedParent();
        PDFOutline &target = parent == QLatin1String("Root") ? *root : *finalOutlineDict_.value(parent);
        target.insertChildAtIndex(std::move(numbered.entry), numbered.item->attachPoint());
    }
    return root;
}

}  // namespace leafwright
