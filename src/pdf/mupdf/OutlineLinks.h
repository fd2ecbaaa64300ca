#pragma once

#include "pdf/PDFOutline.h"

#include <vector>

namespace leafwright::mupdf {

/// An entry of an outline with the object numbers that it is linked by (ISO 32000-1, table 153); 0 for none.
struct LinkedEntry {
    struct Links {
        int parent = 0;
        int previous = 0;
        int next = 0;
        int first = 0;
        int last = 0;

        friend bool operator==(const Links &, const Links &) = default;
    };

    const PDFOutline *entry = nullptr;
    qsizetype parentIndex = -1;  ///< In the list; -1 for the root.
    int number = 0;              ///< Its own.
    Links links;
    qsizetype visible = 0;  ///< How many entries below it are seen when it is open.

    /// The value of /Count: negative for a closed entry. The root shows its children always.
    qsizetype count() const { return parentIndex < 0 || entry->entry().open ? visible : -visible; }
};

/// Lists the root and all entries below it: siblings in a row, parents before their children. Their own
/// numbers are those in the file.
std::vector<LinkedEntry> listedEntries(const PDFOutline &root);

/// Links the entries by their own numbers.
void linkEntries(std::vector<LinkedEntry> &entries);

}  // namespace leafwright::mupdf
