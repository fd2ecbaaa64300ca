#pragma once

#include <mupdf/fitz.h>

#include <chrono>

namespace leafwright::mupdf {

/// Makes MuPDF give up a run that takes too long: sets the abort flag of the run's cookie when the time is
/// over. The time is that of the processor which the thread that made this uses: a disk that wakes up or a
/// busy machine takes none of it. Holds while this lives, on that thread. Cheap enough for every page; one
/// thread watches over all runs.
class TimeLimit {
public:
    TimeLimit(fz_cookie &cookie, std::chrono::nanoseconds limit);
    ~TimeLimit();
    TimeLimit(const TimeLimit &) = delete;
    TimeLimit &operator=(const TimeLimit &) = delete;

    /// Whether the run has been told to give up for this.
    bool isOver() const;

private:
    fz_cookie &cookie_;
};

}  // namespace leafwright::mupdf
