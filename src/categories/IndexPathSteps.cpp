#include "categories/IndexPathSteps.h"

namespace leafwright {

std::optional<IndexPath> nextaunt(const IndexPath &path) {
    return nextsibling(path.indexPathByRemovingLastIndex());
}

std::optional<IndexPath> nextsibling(const IndexPath &path) {
    if (path.isEmpty()) return std::nullopt;
    return path.indexPathByRemovingLastIndex().indexPathByAddingIndex(path.lastIndex() + 1);
}

}  // namespace leafwright
