#pragma once

#include "model/MyOutlineItem.h"
#include "pdf/Geometry.h"
#include "pdf/PDFOutline.h"

#include <functional>
#include <memory>
#include <optional>

namespace leafwright {

/// What the export needs to know of the document's pages.
struct ExportPages {
    /// The 0-based index of the page with a label; nothing for a label that no page has.
    std::function<std::optional<int>(const QString &label)> getRealPageArrayIndex;
    /// The media box of the page at a 0-based index; nothing when there is no such page.
    std::function<std::optional<Rect>(int index)> mediaBox;
    /// Whether imported items whose label nobody has edited lead to the page that they came with, rather than
    /// to the one that their label stands for.
    bool keepsImported = false;
};

/// Turns a tree of items into an outline for a PDF.
///
/// Every item is numbered and gets an entry, parents before what is below them and siblings in order, each
/// linked into its parent at its own position. An item's label is resolved to a page (an unknown one to the
/// first page); an item at no particular spot gets, and keeps, the middle of its page's top edge. An item
/// whose label is absent leads to no page, before as after.
class OutlineExport {
public:
    explicit OutlineExport(ExportPages pages) : pages_(std::move(pages)) {}

    /// Exports the children of `root`.
    std::unique_ptr<PDFOutline> run(MyOutlineItem &root) const;

private:
    std::unique_ptr<PDFOutline> entryFor(MyOutlineItem &item) const;
    std::optional<PDFDestination> destinationOf(MyOutlineItem &item) const;

    ExportPages pages_;
};

}  // namespace leafwright
