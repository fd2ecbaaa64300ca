#pragma once

#include "contents/ContentsEntries.h"

namespace leafwright {

/// Closes gaps between levels: each entry is one deeper than the nearest one before it that stands above it.
class LevelNesting {
public:
    /// The level of the next entry, from 1. @param level as it was found; any number
    int nested(int level);

private:
    std::vector<int> above_;  // as they were found
};

/// Gives each entry of a printed contents its level, from what the rows say alone: numbering, indent, style.
void assignPrintedLevels(std::vector<PrintedEntry> &entries, const BodyStyle &body);

}  // namespace leafwright
