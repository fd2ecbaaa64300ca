#pragma once

#include "pdf/mupdf/Object.h"

#include <QHash>

#include <vector>

namespace leafwright::mupdf {

/// The pages of a document in order, found by one walk over the page tree (ISO 32000-1, 7.7.3).
///
/// The walk goes by what is there, not by the /Count entries, which may lie; it stops at loops, and
/// needs neither recursion nor a look-up from the root for every page.
class PageTree {
public:
    PageTree() = default;
    /// @param pages the catalog's /Pages.
    explicit PageTree(const Object &pages);

    int count() const { return static_cast<int>(pages_.size()); }
    const Object &page(int index) const { return pages_.at(index); }
    /// The 0-based index of the page with this object number, -1 if there is none.
    int indexOf(int objectNumber) const { return indexByNumber_.value(objectNumber, -1); }

private:
    std::vector<Object> pages_;
    QHash<int, int> indexByNumber_;
};

}  // namespace leafwright::mupdf
