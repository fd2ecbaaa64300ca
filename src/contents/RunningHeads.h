#pragma once

#include "contents/PageLines.h"

namespace leafwright {

/// Marks the lines that are running heads and feet: texts at the top or bottom that come again on other pages
/// at the same height, page numbers that advance with the pages, and what stands in a row with them.
void markRunningHeads(std::vector<PageLines> &pages);

}  // namespace leafwright
