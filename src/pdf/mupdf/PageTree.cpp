#include "pdf/mupdf/PageTree.h"

#include <QSet>

namespace leafwright::mupdf {

namespace {

/// Calls `visit(page)` for every page in order, until it returns false.
template <typename Visit>
void walkPages(const Object &root, PageTree::Kids trust, Visit &&visit) {
    struct Pending {
        Object object;
        bool presumedPage = false;
    };
    QSet<int> visitedNodes;
    std::vector<Pending> pending{{root}};
    while (!pending.empty()) {
        const Object object = std::move(pending.back().object);
        const bool presumedPage = pending.back().presumedPage;
        pending.pop_back();
        if (presumedPage || isPage(object)) {
            if (!visit(object)) return;
            continue;
        }
        const Object kids = object.get(PDF_NAME(Kids));
        if (!kids.isArray()) continue;
        if (const int number = object.objectNumber()) {
            if (visitedNodes.contains(number)) continue;
            visitedNodes.insert(number);
        }
        const int size = kids.size();
        const bool allPages =
            trust == PageTree::Kids::Presumed && object.get(PDF_NAME(Count)).toInt() == size;
        for (int i = size - 1; i >= 0; --i) {
            Object kid = kids.at(i);
            const bool presumed = allPages && kid.isIndirect();
            pending.push_back({std::move(kid), presumed});
        }
    }
}

}  // namespace

bool isPage(const Object &object) {
    return object.isDict() && !object.get(PDF_NAME(Kids)).isArray() &&
           object.get(PDF_NAME(Type)).toName() != "Pages";
}

PageTree::PageTree(const Object &root, Kids kids) {
    walkPages(root, kids, [this](const Object &page) {
        const int number = page.objectNumber();
        if (number != 0 && !indexByNumber_.contains(number)) indexByNumber_.insert(number, count());
        numbers_.push_back(number);
        return true;
    });
}

Object pageWithoutNumber(const Object &root, int index) {
    Object found;
    walkPages(root, PageTree::Kids::LookedAt, [&found, &index](const Object &page) {
        if (index-- > 0) return true;
        found = page;
        return false;
    });
    return found;
}

}  // namespace leafwright::mupdf
