#pragma once

#include "support/PdfBuilder.h"

#include <string>
#include <vector>

namespace leafwright::test {

/// Gives a PDF an outline of entries "0", "1", ... in a row, each with keys such as "/F 1 /C [1 0 0]"; the
/// last is open and has two more below it, "a" and "b".
void addEntries(PdfBuilder &pdf, const std::vector<std::string> &keys);

/// The same with all that an entry can have (ISO 32000-2, table 151 and 12.6.4), and what nobody knows: 24
/// entries that lead to the second page, to other files, or do what only viewers know.
void addEntriesOfAllKinds(PdfBuilder &pdf);

}  // namespace leafwright::test
