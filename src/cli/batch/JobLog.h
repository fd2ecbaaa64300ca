#pragma once

#include "cli/batch/BatchJob.h"
#include "cli/batch/HashFile.h"

namespace leafwright::cli {

/// The file in which a batch notes what came of its jobs, a line each, so that a second start knows what is
/// done. One batch writes it at a time. Whatever it can't be sure of, it refuses.
class JobLog {
public:
    JobLog() = default;
    ~JobLog();
    JobLog(const JobLog &) = delete;
    JobLog &operator=(const JobLog &) = delete;

    /// Opens the log, or makes it, and reads what is done. A last line that was cut off, as a batch leaves
    /// that is killed while it writes, is taken out; what is not certain to be a log's stays, and is refused.
    /// @return why the log can't be used; absent when all is well
    std::optional<QString> open(const QString &path);
    bool isOpen() const { return file_ >= 0; }

    enum class Known {
        No,
        Done,   ///< By a start before this one, or this one; the file is as it was then.
        Begun,  ///< This start has the same job already.
        Failed  ///< The disk can't tell; see whyNotKnown().
    };
    /// What is known of a job, which counts as begun from now on unless it is done.
    Known begin(const QByteArray &signature, const JobMark &mark);
    QString whyNotKnown() const { return jobs_.problem().value_or(QString()); }

    /// Adds a line, all or nothing. By one thread at a time. @return why it is not there
    std::optional<QString> add(const QByteArray &line);
    /// Waits until the disk has all lines. @return why it has not
    std::optional<QString> finish() const;

private:
    std::optional<QString> lock() const;
    std::optional<QString> readLines();
    std::optional<QString> cutOff(const QByteArray &last, qint64 begin) const;
    std::optional<QString> readLine(const QByteArray &line, qint64 number);
    QString problem(const QString &reason) const;

    QString path_;
    int file_ = -1;
    bool hasOwnLine_ = false;  ///< One is just as a batch writes it.
    HashFile jobs_;
};

}  // namespace leafwright::cli
