#include "document/outline/ContentsItems.h"

namespace leafwright {

MyOutlineItem::Children itemsOfContents(const FoundContents &found, const TextPages &pages) {
    struct Open {
        MyOutlineItem *item;
        int level;
    };
    MyOutlineItem root;
    std::vector<Open> above{{&root, 0}};
    for (const ContentsEntry &entry : found.entries) {
        auto item = std::make_unique<MyOutlineItem>();
        item->setPageTitle(entry.title);
        item->setPageLabel(pages.pageLabel(entry.pageIndex));
        item->setImportedPage(entry.pageIndex);
        item->setPointOnPage(entry.point);
        while (above.size() > 1 && above.back().level >= entry.level)
            above.pop_back();
        above.push_back({&above.back().item->appendChild(std::move(item)), entry.level});
    }
    return root.takeChildren();
}

}  // namespace leafwright
