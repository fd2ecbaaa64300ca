#include "document/outline/UndoSupport.h"

#include <ranges>

namespace leafwright {

namespace {

/// Visits an item and everything below it in tree order; without recursion, since trees may be deep.
template <typename Visit>
void walk(MyOutlineItem &top, Visit &&visit) {
    std::vector<MyOutlineItem *> ahead{&top};
    while (!ahead.empty()) {
        MyOutlineItem &item = *ahead.back();
        ahead.pop_back();
        visit(item);
        for (const auto &child : std::views::reverse(item.children()))
            ahead.push_back(child.get());
    }
}

}  // namespace

void UndoSupport::registerObserversForItemTree(MyOutlineItem &item) {
    walk(item, [this](MyOutlineItem &each) { registerObserversForOutlineItem(each); });
}

void UndoSupport::unregisterObserversForItemTree(MyOutlineItem &item) {
    walk(item, [this](MyOutlineItem &each) { unregisterObserversForOutlineItem(each); });
}

}  // namespace leafwright
