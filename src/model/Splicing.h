#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

namespace leafwright {

/// Moves elements of one list to a gap in the same or another one. The gap is given by its position before
/// that; in the same list it must not be amid the elements.
template <typename Element>
void splice(std::vector<Element> &from, size_t first, size_t count, std::vector<Element> &to, size_t gap) {
    const auto begin = from.begin() + static_cast<std::ptrdiff_t>(first);
    const auto end = begin + static_cast<std::ptrdiff_t>(count);
    const auto place = to.begin() + static_cast<std::ptrdiff_t>(gap);
    if (&from != &to) {
        to.insert(place, std::make_move_iterator(begin), std::make_move_iterator(end));
        from.erase(begin, end);
    } else if (gap < first) {
        std::rotate(place, begin, end);
    } else {
        std::rotate(begin, end, place);
    }
}

}  // namespace leafwright
