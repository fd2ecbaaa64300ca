#pragma once

#include "tree/IndexPath.h"

#include <QString>

#include <vector>

namespace leafwright {

class MyDocument;
class TreeNode;

/// The commands that change which items are selected or unfolded, and leave the tree as it is.
class SelectionCommands {
public:
    /// Registers the commands. @param document must outlive this
    explicit SelectionCommands(MyDocument &document);

    /// Selects every item that the outline shows; those in folded items are not shown.
    void selectTOCAll();
    /// Selects all items of one level, whether or not they are shown. @param level 1 for the top level
    void selectTOCOnlyLevel(int level);
    /// Unfolds the selected items and everything below them.
    void applyTOCExpand();
    void applyTOCCollapse();
    /// Goes to the field that says which entries are shown.
    void filterOutline();
    /// Selects and shows the entry that is being read; beeps where there is none.
    void revealCurrentEntry();
    /// Opens a sheet that asks for a text, and selects the items whose titles contain it.
    void runSearchSelectSheet();
    /// Selects the items whose titles contain a term, without those that a filter hides; beeps and keeps the
    /// selection if there are none.
    void searchAndSelect(const QString &term);

private:
    /// Those that searchAndSelect() selects, in tree order.
    std::vector<IndexPath> matches(const QString &term) const;

    MyDocument &document_;
};

/// The paths of a node and of those below it whose titles contain a term, in tree order.
std::vector<IndexPath> recursiveMatchIndexPathsInSubTree(TreeNode &node, const QString &term);

}  // namespace leafwright
