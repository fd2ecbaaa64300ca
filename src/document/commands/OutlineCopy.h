#pragma once

#include <QString>

namespace leafwright {

class MyDocument;
class TreeNode;

/// The number of steps from a node up to the invisible root: 1 for a top-level node, 0 for the root.
int levelOfItem(const TreeNode &node);
/// n blanks.
QString spaceStringOfLength(quint32 n);
/// n full stops; none if n is not positive.
QString dotStringOfLength(qint32 n);

/// Copies the selected titles as text, a line each, indented by a blank a level.
class OutlineCopy {
public:
    /// @param document must outlive this
    explicit OutlineCopy(MyDocument &document) : document_(document) {}

    /// Without a selection, the clipboard keeps what it holds.
    void copySelectedItemsToClipboard();

private:
    MyDocument &document_;
};

}  // namespace leafwright
