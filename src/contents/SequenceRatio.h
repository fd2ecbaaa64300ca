#pragma once

#include <QStringView>

namespace leafwright {

/// How alike two texts are, from 0 to 1: twice the characters in common blocks over all characters. The
/// blocks are the longest common stretch, then the longest ones left and right of it, and so on (Ratcliff and
/// Metzener, "Pattern Matching: The Gestalt Approach", Dr. Dobb's Journal, July 1988).
/// @param least below this the exact number does not matter, and 0 may be returned
double sequenceRatio(QStringView a, QStringView b, double least = 0);

}  // namespace leafwright
