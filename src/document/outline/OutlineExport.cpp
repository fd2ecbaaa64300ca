#include "document/outline/OutlineExport.h"

#include "model/OutlineEdits.h"
#include "model/TreeWalk.h"

namespace leafwright {

namespace {

/// The horizontal middle of the page's top edge.
QPointF defaultPoint(const Rect &mediaBox) {
    return {mediaBox.width * 0.5, mediaBox.y + mediaBox.height};
}

}  // namespace

std::unique_ptr<PDFOutline> OutlineExport::run(MyOutlineItem &root) const {
    struct Parent {
        PDFOutline *entry = nullptr;
        std::shared_ptr<const LevelNumber> number;
    };
    auto outline = std::make_unique<PDFOutline>();
    std::vector<Parent> way{{outline.get(), nullptr}};  // the way down to where we are
    walkBelow(root, [&](MyOutlineItem &item, size_t depth) {
        way.resize(depth + 1);
        PDFOutline &parent = *way.back().entry;
        const int position = parent.numberOfChildren();
        auto number = std::make_shared<const LevelNumber>(way.back().number, static_cast<size_t>(position));
        OutlineEdits::setNumber(item, depth + 1, number);
        way.push_back({&parent.insertChildAtIndex(entryFor(item), position), std::move(number)});
    });
    return outline;
}

std::unique_ptr<PDFOutline> OutlineExport::entryFor(MyOutlineItem &item) const {
    auto entry = std::make_unique<PDFOutline>(item.pageTitle());
    entry->setDestination(destinationOf(item));
    entry->setEntry(item.entry());
    return entry;
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

}  // namespace leafwright
