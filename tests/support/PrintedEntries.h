#pragma once

#include "contents/ContentsEntries.h"
#include "contents/Numbering.h"

namespace leafwright::test {

/// An entry of printed contents as it is read, with the number of its page; nothing is known of where it
/// leads.
inline PrintedEntry printedEntry(const QString &title, const QString &number) {
    PrintedEntry entry;
    entry.title = title;
    entry.number = number;
    entry.numbering = numberingOf(title);
    return entry;
}

}  // namespace leafwright::test
