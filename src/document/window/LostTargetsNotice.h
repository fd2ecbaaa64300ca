#pragma once

#include "document/outline/OutlineRelinking.h"

namespace leafwright {

class NoticeBars;

/// Tells in a bar what items have lost with the pages that they were made for; takes the bar away where they
/// have lost nothing.
void showLostTargets(NoticeBars &notices, const LostTargets &lost);

}  // namespace leafwright
