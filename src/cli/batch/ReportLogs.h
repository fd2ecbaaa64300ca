#pragma once

#include "cli/batch/HashFile.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace leafwright::cli {

/// A job as a line of a batch's log tells of it.
struct ReportedJob {
    QString file;  ///< Null where the batch could not understand what was asked for.
    QString out;
    bool isDone = false;
    std::optional<double> seconds;
    std::optional<double> pages;
    std::optional<double> entries;
    std::optional<double> megabytes;  ///< The most memory that it has had.
    std::optional<double> bytes;      ///< The size of its file.
    QString message;
};

/// Reads the logs of batches, or what they have written to standard output: each job once, as done where any
/// line says so, else by its last line. Keeps no line in memory.
class ReportLogs {
public:
    explicit ReportLogs(QStringList paths) : paths_(std::move(paths)) {}

    /// @return why the logs can't be read; absent when all of them were
    std::optional<QString> read(const std::function<void(const ReportedJob &job)> &visit);
    /// What was left out: last lines that were cut off. For people.
    const QStringList &notices() const { return notices_; }

private:
    struct Line;
    using Visit = std::function<std::optional<QString>(const Line &line)>;
    std::optional<QString> eachLine(const Visit &visit);
    std::optional<QString> linesOf(const QString &path, qint64 &end, qint64 &number, const Visit &visit);

    QStringList paths_;
    std::vector<qint64> ends_;  ///< How many lines each log had at first; a batch may be adding to it.
    QStringList notices_;
    HashFile counted_;  ///< The number of the line that counts, for each job.
};

}  // namespace leafwright::cli
