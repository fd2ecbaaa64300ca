#include "document/outline/UndoSupport.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

class Visits : public UndoSupport {
public:
    using UndoSupport::UndoSupport;
    void registerObserversForOutlineItem(MyOutlineItem &item) override {
        registered.append(item.pageTitle());
    }
    void unregisterObserversForOutlineItem(MyOutlineItem &item) override {
        unregistered.append(item.pageTitle());
    }
    QStringList registered;
    QStringList unregistered;
};

MyOutlineItem &add(MyOutlineItem &parent, const QString &title) {
    MyOutlineItem &child = parent.appendChild(std::make_unique<MyOutlineItem>());
    child.setPageTitle(title);
    return child;
}

TEST(UndoSupport, StartingAndStoppingOnAnEmptyOutlineVisitsTheRootOnly) {
    MyOutlineItem root;
    Visits visits(root);
    visits.startObservingOutlineItemsForUndoSupport();
    visits.stopObservingOutlineItemsForUndoSupport();
    EXPECT_EQ(visits.registered, QStringList{"Untitled"});
    EXPECT_EQ(visits.unregistered, QStringList{"Untitled"});
}

TEST(UndoSupport, VisitsEveryItemInTreeOrder) {
    MyOutlineItem root;
    MyOutlineItem &a = add(root, "a");
    add(a, "a1");
    add(a, "a2");
    add(root, "b");
    Visits visits(root);
    visits.startObservingOutlineItemsForUndoSupport();
    EXPECT_EQ(visits.registered, (QStringList{"Untitled", "a", "a1", "a2", "b"}));
    visits.unregisterObserversForItemTree(a);
    EXPECT_EQ(visits.unregistered, (QStringList{"a", "a1", "a2"}));
}

TEST(UndoSupport, TheHooksChangeNothing) {
    MyOutlineItem root;
    UndoSupport support(root);
    support.registerObserversForOutlineItem(root);
    support.observeValueForKeyPath("pageTitle", root);
    support.unregisterObserversForOutlineItem(root);
    EXPECT_EQ(root.description(), MyOutlineItem().description());
}

}  // namespace
}  // namespace leafwright
