#include "cli/batch/Distribution.h"

#include <algorithm>
#include <cmath>

namespace leafwright::cli {

namespace {

constexpr int steps = 16;
constexpr double least = 1.0 / 1024;  // what is less counts as this

int octaveOf(int step) {
    return static_cast<int>(std::floor(static_cast<double>(step) / steps));
}

}  // namespace

void Distribution::add(double number) {
    if (!std::isfinite(number)) return;
    ++counts_[static_cast<int>(std::floor(std::log2(std::max(number, least)) * steps))];
    ++count_;
    sum_ += number;
    largest_ = std::max(largest_, number);
}

double Distribution::quantile(double part) const {
    const auto wanted = static_cast<qint64>(std::ceil(part * static_cast<double>(count_)));
    qint64 passed = 0;
    for (const auto &[step, count] : counts_) {
        passed += count;
        if (passed >= wanted) return std::min(largest_, std::exp2((step + 0.5) / steps));
    }
    return largest_;
}

std::vector<Distribution::Bar> Distribution::bars() const {
    std::vector<Bar> bars;
    if (counts_.empty()) return bars;
    const int first = octaveOf(counts_.begin()->first);
    const int last = octaveOf(counts_.rbegin()->first);
    for (int octave = first; octave <= last; ++octave)
        bars.push_back({std::exp2(octave), 0});
    for (const auto &[step, count] : counts_)
        bars.at(static_cast<size_t>(octaveOf(step) - first)).count += count;
    return bars;
}

}  // namespace leafwright::cli
