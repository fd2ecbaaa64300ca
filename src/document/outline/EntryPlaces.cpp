#include "document/outline/EntryPlaces.h"

#include <algorithm>
#include <functional>

namespace leafwright {

void EntryPlaces::sort() {
    std::ranges::stable_sort(entries_, std::less<>(), &Entry::place);
}

std::optional<size_t> EntryPlaces::entryAt(const ReadingPlace &place) const {
    const auto behind = std::ranges::upper_bound(entries_, place, std::less<>(), &Entry::place);
    if (behind == entries_.begin()) return std::nullopt;
    return std::prev(behind)->number;
}

}  // namespace leafwright
