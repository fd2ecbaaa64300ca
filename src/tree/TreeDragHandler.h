#pragma once

#include <QMimeData>

#include <vector>

namespace leafwright {

class TreeNode;

/// Answers what a TreeController is asked about drags, because what a drag carries is none of its business.
/// Places are given as the parent, which is null for the top level, and the position among its children
/// before which the dragged goes; -1 is a drop onto the parent itself, or behind everything for the top
/// level.
class TreeDragHandler {
public:
    virtual ~TreeDragHandler() = default;

    /// Puts nodes, given in tree order, into the data of a drag that begins. @return false for no drag
    virtual bool writeNodes(const std::vector<TreeNode *> &nodes, QMimeData &data) = 0;
    virtual bool canDrop(const QMimeData &data, TreeNode *parent, int childIndex) = 0;
    /// @return whether it was dropped
    virtual bool drop(const QMimeData &data, TreeNode *parent, int childIndex) = 0;
};

}  // namespace leafwright
