#pragma once

#include "tree/IndexPath.h"

#include <optional>

namespace leafwright {

// Steps from an index path to one near it. None asks whether there is an item at the new path.

/// The position right after the parent, at the parent's level: [3] for [2, 5]. Absent for a path of length 1
/// or 0.
std::optional<IndexPath> nextaunt(const IndexPath &path);

/// The first child position. Absent for the empty path.
std::optional<IndexPath> nextchild(const IndexPath &path);

/// The position right after. Absent for the empty path.
std::optional<IndexPath> nextsibling(const IndexPath &path);

/// For a level of 1 or more, the position right after the ancestor at that level, level 0 being the top one:
/// [2, 6] for [2, 5, 1] and level 1. For a level below the path's own, the first child position. Level 0
/// gives two indexes, deliberately: the first, and the first plus one. Absent for a negative level.
std::optional<IndexPath> nextOfLevel(const IndexPath &path, qint32 level);

}  // namespace leafwright
