#pragma once

#include "contents/TextLine.h"

namespace leafwright {

/// The spans of a page on their baselines: one vector a row, from top to bottom, each from left to right.
/// Text that does not run from left to right is left out, and so is what is drawn twice at one place.
std::vector<std::vector<LineSpan>> spanRows(const std::vector<TextSpan> &spans);

/// Parts a row where a gap is too wide for one line. A number at the beginning keeps its title.
std::vector<std::vector<LineSpan>> partedAtGaps(std::vector<LineSpan> row);

}  // namespace leafwright
