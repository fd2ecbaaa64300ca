#pragma once

#include "tree/IndexPath.h"

#include <optional>

namespace leafwright {

// Steps from an index path to one near it. None asks whether there is an item at the new path.

/// The position right after the parent, at the parent's level: [3] for [2, 5]. Absent for a path of length 1
/// or 0.
std::optional<IndexPath> nextaunt(const IndexPath &path);

/// The position right after. Absent for the empty path.
std::optional<IndexPath> nextsibling(const IndexPath &path);

}  // namespace leafwright
