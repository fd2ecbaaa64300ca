#pragma once

#include "model/MyOutlineItem.h"
#include "pdf/TextPages.h"

namespace leafwright {

/// An entry as the lines of a text tell it.
struct EntryParts {
    QString title = {};
    /// The label of its page; absent where only the number is told.
    std::optional<QString> pageLabel = {};
    /// The number of its page, from 1; 0 for none.
    qint64 pageNumber = 0;
    /// The spot on the page, in page space; (0, 0) for no particular one.
    QPointF point = {};
    OutlineEntry entry = {};
};

/// Makes the item. A label counts before a number, as in all forms, and the number tells then which of the
/// pages with that label is meant. @return it, or what is wrong: there is no page of the number, say
std::variant<std::unique_ptr<MyOutlineItem>, QString> itemOfEntry(const EntryParts &parts,
                                                                  const TextPages &pages);

/// The number of a page in decimal digits; absent for anything else, and for what no page can have.
std::optional<qint64> pageNumberOf(QStringView digits);

}  // namespace leafwright
