#pragma once

#include "pdf/PDFOutline.h"

#include <QHashFunctions>
#include <QString>

#include <vector>

namespace leafwright {

/// What an entry of a file is found again by in another edition of that file. Several may have the same.
struct EntryKey {
    QString title;
    QString action;  ///< The action's type; empty for none, and where the entry leads to a page.

    friend bool operator==(const EntryKey &, const EntryKey &) = default;
    friend size_t qHash(const EntryKey &key, size_t seed = 0) {
        return qHashMulti(seed, key.title, key.action);
    }
};

/// @param leadsToPage in the file; which way it says so is for the file to choose
EntryKey entryKey(const QString &title, bool leadsToPage, const OutlineEntry &entry);
EntryKey entryKey(const PDFOutline &entry);

/// An entry as the items know it that stand for it.
struct EntryInFile {
    int number = 0;  ///< Of its object.
    EntryKey key;
};

/// All that have a number, in the outline's order.
std::vector<EntryInFile> entriesInFile(const PDFOutline &outline);

}  // namespace leafwright
