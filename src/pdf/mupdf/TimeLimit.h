#pragma once

#include <mupdf/fitz.h>

#include <chrono>

namespace leafwright::mupdf {

/// Makes MuPDF give up a run that takes too long: sets the abort flag of the run's cookie when the time is
/// over. Holds while this lives. Cheap enough for every page; one thread watches over all runs.
class TimeLimit {
public:
    TimeLimit(fz_cookie &cookie, std::chrono::steady_clock::duration limit);
    ~TimeLimit();
    TimeLimit(const TimeLimit &) = delete;
    TimeLimit &operator=(const TimeLimit &) = delete;

private:
    fz_cookie &cookie_;
};

}  // namespace leafwright::mupdf
