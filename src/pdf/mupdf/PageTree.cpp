#include "pdf/mupdf/PageTree.h"

#include <QSet>

namespace leafwright::mupdf {

PageTree::PageTree(const Object &pages) {
    QSet<int> visitedNodes;
    std::vector<Object> pending{pages};
    while (!pending.empty()) {
        Object node = std::move(pending.back());
        pending.pop_back();
        if (!node.isDict()) continue;
        const int number = node.objectNumber();
        const Object kids = node.get("Kids");
        if (!kids.isArray()) {
            if (node.get("Type").toName() == "Pages") continue;  // an empty node
            if (number != 0 && !indexByNumber_.contains(number)) indexByNumber_.insert(number, count());
            pages_.push_back(std::move(node));
            continue;
        }
        if (number != 0) {
            if (visitedNodes.contains(number)) continue;
            visitedNodes.insert(number);
        }
        for (int i = kids.size() - 1; i >= 0; --i)
            pending.push_back(kids.at(i));
    }
}

}  // namespace leafwright::mupdf
