#pragma once

#include "tree/IndexPath.h"

#include <QString>

#include <memory>
#include <optional>

namespace leafwright {

class MyDocument;
class MyOutlineItem;
class TreeNode;

/// The commands that change the shape of the outline. All but removeNodeAtIndexPath() count a change, also
/// when there was nothing to move. Some refuse where editing is not allowed: silently, or with a beep.
class StructuralEdits {
public:
    /// Registers the commands. @param document must outlive this
    explicit StructuralEdits(MyDocument &document);

    /// Each selected item becomes the sibling right after its parent. Top-level items stay.
    void moveLeft();
    /// Each selected item becomes the last child of the sibling before it. First children stay.
    void moveRight();
    /// Each selected item changes places with the sibling before it. First children stay.
    void moveUp();
    /// Each run of selected neighbours changes places with the sibling after it. Last runs stay.
    void moveDown();

    /// Adds an item for the page shown after the first selected item, or at the end, and edits its title.
    /// Refuses silently.
    void addSiblingOutlineItem();
    /// Adds an item for the page shown as the last child of the first selected item, or at the end, and edits
    /// its title. Refuses with a beep.
    void addChildOutlineItem();
    /// Removes the selected items with all below them. Refuses with a beep.
    void removeOutlineItems();
    /// Makes the first selected item's children its following siblings. Refuses silently.
    void promoteChildrenOutlineItem();
    /// Throws std::out_of_range if there is no such item.
    void removeNodeAtIndexPath(const IndexPath &path);

    /// Adds an item titled with the text selected on the pages after the first selected item, or at the end.
    void addSelectedTextAsTOCSibling();
    /// The same as its last child.
    void addSelectedTextAsTOCChild();
    /// Capitalises the title of the outline's selected row, if there is one; refuses with a beep.
    void changeOutlineItemToTitleCase();

    /// A title for an item on the page shown: the word in the largest type, or "Untitled".
    QString getSuggestedTitleOnCurrentPage() const;

private:
    bool mayEdit() const;
    void tellRemoved(size_t count, size_t unseen) const;
    std::unique_ptr<MyOutlineItem> itemForCurrentPage() const;
    std::unique_ptr<MyOutlineItem> itemForSelectedText() const;
    TreeNode *firstSelected() const;
    IndexPath endOfTopLevel() const;
    void showSelected();
    void editSelectedTitle();

    MyDocument &document_;
};

/// Whether a text is made of letters only, and of one at least.
bool checkLegitimateTitle(const QString &title);

}  // namespace leafwright
