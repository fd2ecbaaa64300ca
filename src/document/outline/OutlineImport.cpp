#include "document/outline/OutlineImport.h"

namespace leafwright {

bool addOutlineChildren(const PDFOutline &entry, MyOutlineItem &item, const TextPages &pages) {
    struct Copy {
        const PDFOutline *from;
        MyOutlineItem *to;
    };
    bool someWithoutSpot = false;
    std::vector<Copy> pending{{&entry, &item}};  // no recursion: files nest as deep as they like
    while (!pending.empty()) {
        const auto [from, to] = pending.back();
        pending.pop_back();
        const std::optional<PDFDestination> &destination = from->destination();
        to->setPageLabel(destination ? pages.pageLabel(destination->pageIndex) : QString());
        to->setImportedPage(destination ? std::optional(destination->pageIndex) : std::nullopt);
        to->setPageTitle(from->label());
        to->setPointOnPage(destination ? destination->point : QPointF());
        to->setEntry(from->entry());
        someWithoutSpot = someWithoutSpot || (destination && isZeroPoint(destination->point));
        for (int i = 0; i < from->numberOfChildren(); ++i) {
            pending.push_back({&from->childAtIndex(i), &to->appendChild(std::make_unique<MyOutlineItem>())});
        }
    }
    return someWithoutSpot;
}

}  // namespace leafwright
