#pragma once

#include "cli/Console.h"

namespace leafwright::cli {

/// A line on a terminal that shows how many of several jobs are done; elsewhere, and for one, nothing.
/// May be told from any thread.
class ProgressBar {
public:
    ProgressBar(Console &console, int total);
    ~ProgressBar();  ///< Clears the line.
    ProgressBar(const ProgressBar &) = delete;
    ProgressBar &operator=(const ProgressBar &) = delete;

    /// One more job is done. @param name the job's name, shown beside the bar
    void advance(const QString &name);

private:
    void draw(const QString &name);

    Console &console_;
    int total_;
    bool shown_;
    std::mutex mutex_;
    int done_ = 0;
};

}  // namespace leafwright::cli
