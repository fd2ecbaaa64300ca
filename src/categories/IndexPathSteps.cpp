#include "categories/IndexPathSteps.h"

namespace leafwright {

std::optional<IndexPath> nextaunt(const IndexPath &path) {
    return nextsibling(path.indexPathByRemovingLastIndex());
}

std::optional<IndexPath> nextchild(const IndexPath &path) {
    if (path.isEmpty()) return std::nullopt;
    return path.indexPathByAddingIndex(0);
}

std::optional<IndexPath> nextsibling(const IndexPath &path) {
    if (path.isEmpty()) return std::nullopt;
    return path.indexPathByRemovingLastIndex().indexPathByAddingIndex(path.lastIndex() + 1);
}

std::optional<IndexPath> nextOfLevel(const IndexPath &path, qint32 level) {
    if (level < 0) return std::nullopt;
    if (level > static_cast<qint32>(path.length()) - 1) return path.indexPathByAddingIndex(0);
    IndexPath result = IndexPath::indexPathWithIndex(path.indexAtPosition(0));
    const auto position = static_cast<size_t>(level);
    for (size_t i = 1; i < position; ++i)
        result = result.indexPathByAddingIndex(path.indexAtPosition(i));
    return result.indexPathByAddingIndex(path.indexAtPosition(position) + 1);
}

}  // namespace leafwright
