#pragma once

#include "model/MyOutlineItem.h"

#include <functional>

namespace leafwright {

/// An entry of the file whose page label, which nobody has edited, stands for another page than the one that
/// the entry leads to in the file: the last of those with that label.
struct EntryElsewhere {
    QString title;
    int before = 0;  ///< The page in the file, 0-based.
    int now = 0;     ///< The page that its label stands for, 0-based.
};

/// How many such entries there are, and the first of them in tree order.
struct EntriesElsewhere {
    static constexpr size_t mostNamed = 3;

    size_t count = 0;
    std::vector<EntryElsewhere> first;  ///< `mostNamed` at most.

    /// For people: "“One” (page 1, now 3), “Two” (page 2, now 4) and 5 more".
    QString list() const;
};

/// Goes through everything below an item. @param pageOfLabel the 0-based index of the page that a label
/// stands for; nothing is the first page
EntriesElsewhere entriesElsewhere(const MyOutlineItem &root,
                                  const std::function<std::optional<int>(const QString &label)> &pageOfLabel);

}  // namespace leafwright
