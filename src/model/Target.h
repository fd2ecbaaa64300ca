#pragma once

#include <QPointF>
#include <QString>

#include <optional>
#include <variant>

namespace leafwright {

/// An entry leads to a page, by the page's label.
struct PageTarget {
    /// As people write it; see MyOutlineItem::pageLabel(). May be empty: pages may have the empty label.
    QString label;
    /// The spot on the page, in page space; absent for no particular one.
    std::optional<QPointF> point = {};
    /// The 0-based page that the entry came with from the file, or was made for, which other pages may share
    /// the label of; absent for an entry whose label somebody has set.
    std::optional<int> importedPage = {};
};

/// An entry leads where its OutlineEntry says: what the file had, or an action.
struct EntryTarget {};

/// Where an entry of the outline leads; the first alternative is nowhere.
using Target = std::variant<std::monostate, PageTarget, EntryTarget>;

}  // namespace leafwright
