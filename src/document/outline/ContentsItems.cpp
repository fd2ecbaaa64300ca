#include "document/outline/ContentsItems.h"

namespace leafwright {

namespace {

/// Builds a tree of items that come in order with their levels.
class ItemNesting {
public:
    void add(std::unique_ptr<MyOutlineItem> item, int level) {
        while (above_.size() > 1 && above_.back().level >= level)
            above_.pop_back();
        above_.push_back({&above_.back().item->appendChild(std::move(item)), level});
    }
    MyOutlineItem::Children takeItems() { return root_.takeChildren(); }

private:
    struct Open {
        MyOutlineItem *item;
        int level;
    };
    MyOutlineItem root_;
    std::vector<Open> above_{{&root_, 0}};
};

std::unique_ptr<MyOutlineItem> itemOf(const ContentsEntry &entry, const TextPages &pages) {
    return std::make_unique<MyOutlineItem>(
        entry.title, PageTarget{pages.pageLabel(entry.pageIndex), entry.point, entry.pageIndex});
}

/// An item without its children.
struct LooseItem {
    std::unique_ptr<MyOutlineItem> item;
    int level = 1;
    bool hasEntry = false;
};

/// Takes a tree apart; in tree order.
std::vector<LooseItem> takenApart(MyOutlineItem::Children top) {
    std::vector<LooseItem> items;
    std::vector<LooseItem> ahead;
    const auto addReversed = [&ahead](MyOutlineItem::Children children, int level) {
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            ahead.push_back({std::move(*child), level});
    };
    addReversed(std::move(top), 1);
    while (!ahead.empty()) {
        items.push_back(std::move(ahead.back()));
        ahead.pop_back();
        addReversed(items.back().item->takeChildren(), items.back().level + 1);
    }
    return items;
}

size_t numberOf(const ContentsEntry &entry) {
    return static_cast<size_t>(-1 - entry.id);
}

}  // namespace

MyOutlineItem::Children itemsOfContents(const FoundContents &found, const TextPages &pages) {
    ItemNesting nesting;
    for (const ContentsEntry &entry : found.entries)
        nesting.add(itemOf(entry, pages), entry.level);
    return nesting.takeItems();
}

std::vector<OutlinePosition> itemsInOrder(const MyOutlineItem &root) {
    std::vector<OutlinePosition> items;
    std::vector<OutlinePosition> ahead{{&root, 0}};
    while (!ahead.empty()) {
        const OutlinePosition each = ahead.back();
        ahead.pop_back();
        if (each.level > 0) items.push_back(each);
        const auto &children = each.item->children();
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            ahead.push_back({child->get(), each.level + 1});
    }
    return items;
}

MyOutlineItem::Children completedItems(MyOutlineItem::Children existing, const FoundContents &completed,
                                       const TextPages &pages) {
    std::vector<LooseItem> items = takenApart(std::move(existing));
    for (const ContentsEntry &entry : completed.entries) {
        if (entry.id < 0) items.at(numberOf(entry)).hasEntry = true;
    }
    ItemNesting nesting;
    size_t next = 0;
    const auto addThoseWithoutEntry = [&] {
        for (; next < items.size() && !items[next].hasEntry; ++next)
            nesting.add(std::move(items[next].item), items[next].level);
    };
    addThoseWithoutEntry();
    for (const ContentsEntry &entry : completed.entries) {
        if (entry.id >= 0) {
            nesting.add(itemOf(entry, pages), entry.level);
            continue;
        }
        nesting.add(std::move(items[next].item), items[next].level);
        ++next;
        addThoseWithoutEntry();
    }
    return nesting.takeItems();
}

}  // namespace leafwright
