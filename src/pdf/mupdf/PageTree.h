#pragma once

#include "pdf/PDFError.h"
#include "pdf/mupdf/Object.h"

#include <QHash>

#include <optional>
#include <vector>

namespace leafwright::mupdf {

/// The pages of a document in order, by object number (ISO 32000-1, 7.7.3). It holds nothing of the reader
/// that found it, so that all readers of the file share it.
class PageTree {
public:
    enum class Kids {
        LookedAt,  ///< Every kid is loaded to see whether it is a page; /Count entries, which may lie, count
                   ///< not.
        Presumed   ///< Where a node counts as many pages as it has kids, they are taken for pages unseen.
    };

    PageTree() = default;
    /// Walks the tree, without recursion, and stopping at loops. Throws Error when it has no end.
    /// @param root the catalog's /Pages
    PageTree(const Object &root, Kids kids);

    int count() const { return static_cast<int>(numbers_.size()); }
    /// The object number of a page; 0 for one that, against the rules, is no object of its own.
    int numberOf(int index) const { return numbers_.at(index); }
    /// The 0-based index of the page with this object number, -1 if there is none.
    int indexOf(int objectNumber) const { return indexByNumber_.value(objectNumber, -1); }
    /// Why pages may be missing: a part of the tree could not be read.
    const std::optional<PDFError> &problem() const { return problem_; }

private:
    std::vector<int> numbers_;
    QHash<int, int> indexByNumber_;
    std::optional<PDFError> problem_;
};

/// Whether an object is a page rather than a node of the tree or something else.
bool isPage(const Object &object);

/// Finds the pages that are no objects of their own, by walking to them. @return by index; null for all
/// others
std::vector<Object> pagesWithoutNumber(const Object &root);

}  // namespace leafwright::mupdf
