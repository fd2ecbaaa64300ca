#pragma once

#include "model/MyOutlineItem.h"
#include "pdf/Geometry.h"
#include "pdf/PDFOutline.h"

#include <QHash>

#include <functional>
#include <vector>

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
/// Every item is numbered and gets an entry; then the entries are linked, deepest level first, each into
/// its parent at its own position. An item's label is resolved to a page (an unknown one to the first
/// page); an item at no particular spot gets, and keeps, the middle of its page's top edge. An item whose
/// label is absent leads to no page, before as after.
class OutlineExport {
public:
    /// An item deeper than this can't be numbered: the numbers grow with the depth.
    static constexpr quint64 deepestLevel = 10'000;

    explicit OutlineExport(ExportPages pages) : pages_(std::move(pages)) {}

    /// Exports the children of `root`. Throws std::length_error for a tree deeper than `deepestLevel`.
    std::unique_ptr<PDFOutline> run(MyOutlineItem &root);

private:
    /// An item that has been numbered, with the entry made for it until that is linked.
    struct NumberedItem {
        MyOutlineItem *item;
        std::unique_ptr<PDFOutline> entry;
    };

    void addChildrenOf(MyOutlineItem &item, const QString &prefix, quint64 level);
    void number(MyOutlineItem &item, const QString &levelstr, quint64 level);
    std::optional<PDFDestination> destinationOf(MyOutlineItem &item) const;
    std::unique_ptr<PDFOutline> linkEntries();

    ExportPages pages_;
    QHash<QString, PDFOutline *> finalOutlineDict_;  ///< By `levelstr`.
    std::vector<NumberedItem> finalOutlineArray_;    ///< In the order of numbering, then deepest first.
};

}  // namespace leafwright
