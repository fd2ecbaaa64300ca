#include "categories/TreeControllerLookup.h"

namespace leafwright {

TreeNode *isTreeNode(const TreeController &controller, TreeNode &node, const MyOutlineItem &aMatch) {
    // Upwards from the item, since the way down may be any of 100,000.
    TreeNode *step = controller.nodeForItem(aMatch);
    if (step == &node) return step;
    while (step && step->parentNode() != &node)
        step = step->parentNode();
    return step;
}

TreeNode *treeNodeForRealObject(const TreeController &controller, const MyOutlineItem &item) {
    TreeNode &root = controller.arrangedObjects();
    TreeNode *top = isTreeNode(controller, root, item);
    return top == &root ? nullptr : top;
}

size_t countOfTopLevel(const TreeController &controller) {
    return controller.arrangedObjects().childCount();
}

}  // namespace leafwright
