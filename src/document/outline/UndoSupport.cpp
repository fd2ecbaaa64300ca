#include "document/outline/UndoSupport.h"

#include "model/TreeWalk.h"

namespace leafwright {

void UndoSupport::registerObserversForItemTree(MyOutlineItem &item) {
    walkTree(item, [this](MyOutlineItem &each, size_t /*depth*/) { registerObserversForOutlineItem(each); });
}

void UndoSupport::unregisterObserversForItemTree(MyOutlineItem &item) {
    walkTree(item,
             [this](MyOutlineItem &each, size_t /*depth*/) { unregisterObserversForOutlineItem(each); });
}

}  // namespace leafwright
