#pragma once

#include "pdf/TextPages.h"

#include <optional>

namespace leafwright {

/// Estimates the offset between page labels and the page numbers printed on the pages (label number minus
/// printed number) from a middle page and the second after it: a number among the first or last 15 words
/// of the one, and that number plus 2 among those of the other. Of several such pairs the last counts.
/// Nothing for fewer than 11 pages, pages with fewer than 10 characters, and when no pair is found.
/// May run on any thread.
std::optional<qint32> estimatePrintedPageOffset(const TextPages &pages);

}  // namespace leafwright
