#pragma once

#include "model/MyOutlineItem.h"

namespace leafwright {

/// The frame of an undo that watches items: hooks called for every item, which do nothing yet. No change
/// of the outline is recorded.
class UndoSupport {
public:
    /// @param root must outlive this
    explicit UndoSupport(MyOutlineItem &root) : root_(root) {}
    virtual ~UndoSupport() = default;
    UndoSupport(const UndoSupport &) = delete;
    UndoSupport &operator=(const UndoSupport &) = delete;

    /// Called for every item of the tree when it is loaded, and for one added as a sibling.
    virtual void registerObserversForOutlineItem(MyOutlineItem & /*item*/) {}
    virtual void unregisterObserversForOutlineItem(MyOutlineItem & /*item*/) {}
    /// What a watched property's change would call.
    virtual void observeValueForKeyPath(const QString & /*keyPath*/, MyOutlineItem & /*item*/) {}

    /// Calls the hook for the item and everything below it, in tree order.
    void registerObserversForItemTree(MyOutlineItem &item);
    void unregisterObserversForItemTree(MyOutlineItem &item);

    void startObservingOutlineItemsForUndoSupport() { registerObserversForItemTree(root_); }
    void stopObservingOutlineItemsForUndoSupport() { unregisterObserversForItemTree(root_); }

private:
    MyOutlineItem &root_;
};

}  // namespace leafwright
