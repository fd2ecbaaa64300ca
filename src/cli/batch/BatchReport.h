#pragma once

#include "cli/batch/Distribution.h"
#include "cli/batch/ReportLogs.h"

#include <QMap>

#include <vector>

namespace leafwright::cli {

/// What many jobs come to: how many are done and why others failed, what they cost, and which cost most. Its
/// size does not grow with their number.
class BatchReport {
public:
    void add(const ReportedJob &job);

    qint64 doneCount() const { return done_; }
    qint64 failedCount() const { return failed_; }
    double entryCount() const { return entries_; }
    double pageCount() const { return pages_; }
    const Distribution &seconds() const { return seconds_; }
    const Distribution &megabytes() const { return megabytes_; }

    /// Why jobs failed: messages without the names of their files.
    struct Reason {
        QString text;
        qint64 count = 0;
        QString example;  ///< A file of which that was said.
    };
    /// The most frequent first. Of very many, the first that came; the others are one at the end.
    std::vector<Reason> reasons() const;

    /// The jobs that took longest, and those with the largest files, of which there are at most 20.
    const std::vector<ReportedJob> &slowest() const { return slowest_; }
    const std::vector<ReportedJob> &largest() const { return largest_; }

private:
    qint64 done_ = 0;
    qint64 failed_ = 0;
    double entries_ = 0;
    double pages_ = 0;
    Distribution seconds_;
    Distribution megabytes_;
    QMap<QString, Reason> reasons_;
    qint64 otherReasons_ = 0;
    std::vector<ReportedJob> slowest_;
    std::vector<ReportedJob> largest_;
};

/// The report as a page of HTML that needs nothing else.
QString pageOf(const BatchReport &report);

/// The first line of the table of jobs, as CSV (RFC 4180).
QByteArray headOfTable();
/// A job's line.
QByteArray rowOf(const ReportedJob &job);

}  // namespace leafwright::cli
