#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace leafwright {

/// A place in the order in which pages are read.
struct ReadingPlace {
    int pageIndex = 0;
    double below = 0;  ///< The distance from the top of the page as it is shown, in points.

    friend bool operator==(const ReadingPlace &, const ReadingPlace &) = default;
    friend bool operator<(const ReadingPlace &a, const ReadingPlace &b) {
        return a.pageIndex != b.pageIndex ? a.pageIndex < b.pageIndex : a.below < b.below;
    }
};

/// Where the entries of an outline lead, to find the one that is being read. Entries are known by numbers,
/// which ascend in the order of the outline.
class EntryPlaces {
public:
    /// Adds an entry behind all others. Those that lead to no page are left out.
    void add(size_t entry, const ReadingPlace &place) { entries_.push_back({place, entry}); }
    /// To be called when all are added.
    void sort();
    /// The entry that somebody reads who is at a place: the last one that leads there or before it, and of
    /// those that lead to the same place the last in the outline. Absent before the first.
    std::optional<size_t> entryAt(const ReadingPlace &place) const;

private:
    struct Entry {
        ReadingPlace place;
        size_t number;
    };
    std::vector<Entry> entries_;
};

}  // namespace leafwright
