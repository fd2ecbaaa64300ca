#pragma once

#include "contents/HeadingFeatures.h"

namespace leafwright {

/// Levels of headings by their style and numbers: a style that is numbered has the depth of its numbers,
/// others the level of numbered ones that look alike, or follow in the order of size. The top level is 1; an
/// entry may be more than one deeper than the one before.
/// @param headings indices of the candidates that are headings
/// @return one level for each
std::vector<int> styleLevels(const HeadingCandidates &candidates, const std::vector<size_t> &headings,
                             const BodyStyle &body);

}  // namespace leafwright
