#pragma once

#include "autotoc/FontCalibration.h"
#include "model/MyOutlineItem.h"

#include <memory>

namespace leafwright {

/// Keeps headings out whose level is more than five below that of the last one let in.
class LevelGate {
public:
    /// @return whether a heading of this level is let in; if it is, the next is measured by it
    bool pass(int level);

private:
    int previousLevel_ = 0;
};

/// AutoTOC by font strings, whose levels are corrected as headings appear: a heading at most three levels
/// deeper than the last one takes the next depth, and so does its font from then on, with the smaller fonts
/// behind it. A heading farther down is dropped, as is one that LevelGate keeps out.
/// @param levels those to begin with; a copy is corrected
/// @param maxDepth the deepest nesting below the top item; headings beyond it are dropped
/// @param findsPoints whether items lead to their text's top left corner, or to no particular spot
/// @return the new top item, as runAutoTOCwithH1H2H3Map() makes it; detached
std::unique_ptr<MyOutlineItem> runCalibratingAutoTOC(const TextPages &pages, CalibratedLevels levels,
                                                     int maxDepth, bool findsPoints = true);

}  // namespace leafwright
