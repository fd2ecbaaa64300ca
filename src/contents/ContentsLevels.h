#pragma once

#include "contents/ContentsEntries.h"

namespace leafwright {

/// Gives each entry of a printed contents its level, from what the rows say alone: numbering, indent, style.
void assignPrintedLevels(std::vector<PrintedEntry> &entries, const BodyStyle &body);

}  // namespace leafwright
