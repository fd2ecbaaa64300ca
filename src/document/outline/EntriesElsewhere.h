#pragma once

#include "model/MyOutlineItem.h"

#include <functional>

namespace leafwright {

/// An entry of the file whose page label, which nobody has edited, stands for another page than the one that
/// the entry leads to in the file.
struct EntryElsewhere {
    QString title;
    int before = 0;  ///< The page in the file, 0-based.
    int now = 0;     ///< The page that its label stands for, 0-based.
};

/// How many such entries there are for one reason, and the first of them in tree order.
struct EntriesOfOneReason {
    static constexpr size_t mostNamed = 3;

    size_t count = 0;
    std::vector<EntryElsewhere> first;  ///< `mostNamed` at most.

    void add(EntryElsewhere entry);
    /// For people: "“One” (page 1, now 3), “Two” (page 2, now 4) and 5 more".
    QString list() const;
};

/// All such entries, by the reasons why their labels stand for other pages.
struct EntriesElsewhere {
    EntriesOfOneReason byRepeatedLabels;  ///< Labels stand for the last page that has them.
    /// Labels that begin with "p" are printed page numbers, and stand for the page that has that number.
    EntriesOfOneReason byPrintedNumbers;

    bool isEmpty() const { return byRepeatedLabels.count == 0 && byPrintedNumbers.count == 0; }
};

/// Goes through everything below an item. @param pageOfLabel the 0-based index of the page that a label
/// stands for; nothing is the first page
EntriesElsewhere entriesElsewhere(const MyOutlineItem &root,
                                  const std::function<std::optional<int>(const QString &label)> &pageOfLabel);

}  // namespace leafwright
