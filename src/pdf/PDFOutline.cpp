#include "pdf/PDFOutline.h"

#include "model/TreeWalk.h"

#include <iterator>
#include <stdexcept>

namespace leafwright {

PDFOutline::~PDFOutline() {
    // A chain of entries as deep as a hostile file likes must not become a chain of calls.
    std::vector<std::unique_ptr<PDFOutline>> doomed = std::move(children_);
    while (!doomed.empty()) {
        const std::unique_ptr<PDFOutline> entry = std::move(doomed.back());
        doomed.pop_back();
        std::move(entry->children_.begin(), entry->children_.end(), std::back_inserter(doomed));
        entry->children_.clear();
    }
}

PDFOutline &PDFOutline::insertChildAtIndex(std::unique_ptr<PDFOutline> child, int index) {
    if (index < 0 || index > numberOfChildren()) throw std::out_of_range("outline child index");
    return **children_.insert(children_.begin() + index, std::move(child));
}

qsizetype PDFOutline::countOfDescendants() const {
    qsizetype count = 0;
    walkBelow(*this, [&count](const PDFOutline & /*entry*/, size_t /*depth*/) { ++count; });
    return count;
}

}  // namespace leafwright
