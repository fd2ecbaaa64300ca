#include "tree/TreeNode.h"

#include <algorithm>

namespace leafwright {

size_t TreeNode::row() const {
    if (!parent_) return 0;
    const std::vector<TreeNode *> &siblings = parent_->children_;
    if (row_ >= siblings.size() || siblings[row_] != this)
        parent_->numberRows(parent_->numberedRows_, siblings.size());
    return row_;
}

IndexPath TreeNode::indexPath() const {
    QList<size_t> positions;
    for (const TreeNode *node = this; node->parent_; node = node->parent_)
        positions.append(node->row());
    std::reverse(positions.begin(), positions.end());
    return IndexPath::indexPathWithIndexes(std::move(positions));
}

size_t TreeNode::depth() const {
    size_t steps = 0;
    for (const TreeNode *node = parent_; node; node = node->parent_)
        ++steps;
    return steps;
}

bool TreeNode::isDescendantOf(const TreeNode &ancestor) const {
    const TreeNode *node = this;
    while (node && node != &ancestor)
        node = node->parent_;
    return node != nullptr;
}

void TreeNode::childrenChangedFrom(size_t position) {
    numberedRows_ = static_cast<quint32>(std::min<size_t>(numberedRows_, position));
}

void TreeNode::numberRows(size_t begin, size_t end) const {
    for (size_t row = begin; row < end; ++row)
        children_[row]->row_ = static_cast<quint32>(row);
    numberedRows_ = static_cast<quint32>(std::max<size_t>(numberedRows_, end));
}

}  // namespace leafwright
