#pragma once

#include "contents/PageLines.h"

namespace leafwright {

/// Gives lines whose text was recognised in images the size that most text near theirs has: there, lines of
/// one style differ by a point or a tenth, which would make each a style of its own. Other pages stay as they
/// are.
void settleRecognisedSizes(std::vector<PageLines> &pages);

}  // namespace leafwright
