#pragma once

#include <QtGlobal>

#include <map>
#include <vector>

namespace leafwright::cli {

/// How numbers above 0 are spread, to a twentieth or so of each, however many there are.
class Distribution {
public:
    void add(double number);

    qint64 count() const { return count_; }
    double sum() const { return sum_; }
    double largest() const { return largest_; }
    /// The number that a part of all does not exceed. @param part from 0 to 1; 0.5 is the median
    double quantile(double part) const;

    /// How many numbers lie within a power of two.
    struct Bar {
        double from;  ///< Up to twice that.
        qint64 count;
    };
    /// From the first that has any to the last.
    std::vector<Bar> bars() const;

private:
    std::map<int, qint64> counts_;  ///< By sixteenths of a power of two.
    qint64 count_ = 0;
    double sum_ = 0;
    double largest_ = 0;
};

}  // namespace leafwright::cli
