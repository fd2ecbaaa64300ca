#pragma once

#include "tree/TreeController.h"

namespace leafwright {

/// The number of top-level nodes.
size_t countOfTopLevel(const TreeController &controller);

}  // namespace leafwright
