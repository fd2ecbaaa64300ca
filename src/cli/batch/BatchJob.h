#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>
#include <variant>

namespace leafwright::cli {

/// A line of a batch's input: what is to be done with one file.
struct BatchJob {
    QString file;
    QString out = {};          ///< Null where the line has none.
    QJsonObject options = {};  ///< What else it has: options and arguments of the command, by their names.
};

/// Reads a line: an object of JSON with "file", "out" and options, or a path as it stands. What can't be
/// understood is refused. @return the job, or what is wrong with the line
std::variant<BatchJob, QString> readJob(const QByteArray &line);

/// What a file is known by from one start of a batch to the next.
struct JobMark {
    qint64 size = 0;      ///< Bytes.
    qint64 modified = 0;  ///< Nanoseconds since the start of 1970, UTC.
};

/// The mark of the file at a path; nothing, and errno set, where there is none.
std::optional<JobMark> markOfJob(const QString &file);

}  // namespace leafwright::cli
