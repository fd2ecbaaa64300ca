#pragma once

#include <optional>
#include <utility>
#include <vector>

namespace leafwright {

/// The places that jumps have left, to go back to and forth between, as in a browser.
template <typename Place>
class PageHistory {
public:
    /// A jump leaves a place. What there was to go forward to is forgotten, and so is the oldest of very
    /// many.
    void leave(const Place &place) {
        forward_.clear();
        push(back_, place);
    }
    bool canGoBack() const { return !back_.empty(); }
    bool canGoForward() const { return !forward_.empty(); }
    /// The place to go to; absent where there is none. @param from the present place
    std::optional<Place> goBack(const Place &from) { return step(back_, forward_, from); }
    std::optional<Place> goForward(const Place &from) { return step(forward_, back_, from); }
    void clear() {
        back_.clear();
        forward_.clear();
    }

private:
    static constexpr size_t mostPlaces = 100;

    static void push(std::vector<Place> &places, const Place &place) {
        if (places.size() == mostPlaces) places.erase(places.begin());
        places.push_back(place);
    }
    static std::optional<Place> step(std::vector<Place> &out, std::vector<Place> &in, const Place &from) {
        if (out.empty()) return std::nullopt;
        push(in, from);
        const Place place = out.back();
        out.pop_back();
        return place;
    }

    std::vector<Place> back_;
    std::vector<Place> forward_;
};

}  // namespace leafwright
