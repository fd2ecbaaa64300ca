#pragma once

#include "contents/HeadingFeatures.h"

namespace leafwright {

/// Gives each candidate the probability of being a heading: a logistic regression of its features, of which
/// each candidate is then pulled towards its style. The weights were learned from documents whose authors
/// made an outline.
void scoreHeadings(HeadingCandidates &headings, const BodyStyle &body);

/// The probability by the features alone.
double headingProbability(const HeadingFeatures &features);

/// What a candidate must have at least to count as a heading where nothing else is known.
constexpr double acceptedProbability = 0.35;

}  // namespace leafwright
