#pragma once

#include "cli/Console.h"
#include "cli/WorkerProcess.h"

#include <QStringList>

#include <chrono>
#include <optional>

namespace leafwright::cli {

/// What a worker of a batch is to do.
struct WorkerJob {
    QStringList arguments;  ///< Of the command line, the command first.
    QString printTo = {};   ///< The file that takes what the command prints; empty to have it handed back.
    QString out = {};       ///< The file that it writes, whoever does so; may be empty.
    std::chrono::seconds timeLimit{0};  ///< When to end it; 0 is never.
    qint64 memoryLimit =
        0;  ///< Bytes that it may ask of the system for itself alone; 0 is as many as it likes.
};

/// What came of it.
struct WorkerReport {
    WorkerEnd end;
    double seconds = 0;  ///< From its start to its end.
    qint64 peakBytes =
        0;  ///< The most memory that it has had, with the program's own that all workers share.
    FileFacts facts;
    QByteArray said;              ///< Its messages; of very many, the first.
    QByteArray printed;           ///< Its results, unless they went to a file.
    bool printedTooMuch = false;  ///< The results are more than are handed back.
};

// As they are sent from process to process.
QByteArray encoded(const WorkerJob &job);
QByteArray encoded(const WorkerReport &report);
/// @return nothing for bytes that are none
std::optional<WorkerJob> decodedJob(const QByteArray &bytes);
std::optional<WorkerReport> decodedReport(const QByteArray &bytes);

}  // namespace leafwright::cli
