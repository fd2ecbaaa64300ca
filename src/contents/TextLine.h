#pragma once

#include "contents/ContentsPages.h"

#include <algorithm>

namespace leafwright {

/// A distance that is further than any on a page: nothing stands there.
constexpr double noGap = 999;

/// A span as part of a line.
struct LineSpan {
    const TextSpan *span = nullptr;
    double baseline = 0;  ///< The line's; another than the span's where that is raised or lowered.

    double left() const { return span->box.left(); }
    double right() const { return span->box.right(); }
};

/// What a line of text looks like, by most of its letters.
struct LineLook {
    double size = 0;  ///< The largest one that a fifth of the letters have.
    bool bold = false;
    bool italic = false;
    bool mono = false;
    bool capitals = false;
    QString family;     ///< See lookOfFontName().
    quint32 color = 0;  ///< 0xAARRGGBB
};

/// Text on one baseline without wide gaps: a line of a column. Places are on the page as it is read, y down.
struct TextLine {
    QString text;
    LineLook look;
    int page = 0;
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    double baseline = 0;
    double letters = 0;           ///< Letters and digits; a tenth for a span without any.
    std::vector<LineSpan> spans;  ///< In reading order; empty once they are no longer needed.

    int row = 0;              ///< Index of the page's row that it stands on.
    int column = 0;           ///< 1 in the second of two columns.
    int previous = -1;        ///< Index of the nearest line above that overlaps in x.
    int next = -1;            ///< The nearest such line below.
    double gapAbove = noGap;  ///< From baseline to baseline.
    double gapBelow = noGap;

    bool isBody = false;      ///< In the style of the running text.
    bool isRunning = false;   ///< Part of a running head or foot.
    bool inContents = false;  ///< Part of a printed contents.

    double centre() const { return (left + right) / 2; }
    double width() const { return right - left; }
};

/// Makes one line of spans, which must not be empty and stand from left to right in the reading frame.
TextLine makeLine(std::vector<LineSpan> spans, int page);

/// A value rounded to the next half.
double roundedToHalf(double value);

/// Adds up weights by value, and tells which value has most.
template <typename Value>
class Tally {
public:
    void add(const Value &value, double weight = 1) {
        const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                        [&value](const auto &e) { return e.first == value; });
        if (entry == entries_.end()) {
            entries_.emplace_back(value, weight);
        } else {
            entry->second += weight;
        }
    }
    bool isEmpty() const { return entries_.empty(); }
    double weight(const Value &value) const {
        for (const auto &[v, w] : entries_) {
            if (v == value) return w;
        }
        return 0;
    }
    /// The heaviest value, and the first of several; the tally must not be empty.
    const std::pair<Value, double> &heaviest() const {
        return *std::max_element(entries_.begin(), entries_.end(),
                                 [](const auto &a, const auto &b) { return a.second < b.second; });
    }
    double total() const {
        double sum = 0;
        for (const auto &entry : entries_)
            sum += entry.second;
        return sum;
    }
    /// In the order in which the values came.
    const std::vector<std::pair<Value, double>> &entries() const { return entries_; }

private:
    std::vector<std::pair<Value, double>> entries_;
};

}  // namespace leafwright
