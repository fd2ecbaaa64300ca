#pragma once

#include "cli/Console.h"
#include "cli/batch/BatchJob.h"

namespace leafwright::cli {

/// What came of a job, as a line of a batch's output and of its log.
struct JobResult {
    enum class Status { Done, Failed, Skipped };

    QString file;  ///< Null where the line could not be understood.
    QString out = {};
    Status status = Status::Failed;
    std::optional<double> seconds = {};
    FileFacts facts = {};
    std::optional<qint64> peakBytes = {};
    QString message = {};     ///< What was said; null where nothing was.
    QByteArray printed = {};  ///< What the command printed, where that went nowhere else; null for nothing.
    bool printedIsJson = false;  ///< Otherwise it is a text.
};

/// The line of a result, with a line feed. What was printed stands there as the JSON that it is, or as a
/// text. @param signature what the job is known by; null where the line could not be understood
QByteArray lineOf(const JobResult &result, const QByteArray &signature);
/// The same with what a log knows the job's file by, without what was printed; logLineIn() knows such a line.
/// @param mark absent where there was no file
QByteArray logLineOf(const JobResult &result, const QByteArray &signature,
                     const std::optional<JobMark> &mark);

}  // namespace leafwright::cli
