#pragma once

#include "cli/Command.h"
#include "cli/batch/BatchJob.h"
#include "cli/batch/WorkerJob.h"

#include <QMap>

namespace leafwright::cli {

/// The command that a batch runs, with the options that all jobs share; makes the work of one job of it.
class JobCommand {
public:
    /// @param words the command, its options, and its arguments but for the file, as they stand behind
    /// batch's own options @param folder where the results go of jobs that do not say so; may be empty
    /// @return what is wrong with them
    static std::variant<JobCommand, QString> read(const QStringList &words, const QString &folder);

    /// One job, ready to be done.
    struct Task {
        WorkerJob work;           ///< Without its limits.
        QString out;              ///< The result; may be empty.
        QString pdf;              ///< The PDF that is written, where the result is one.
        QStringList read;         ///< What is read beside the file.
        QStringList written;      ///< What is written besides.
        bool printsJson = false;  ///< Otherwise a text is printed.
        QByteArray signature;     ///< Tells it from jobs on other files, or with other options or results.

        /// Whether everything is there that the job writes, by whomever it was written.
        bool resultsAreThere() const;
    };
    /// @return the task, or why the job can't be done
    std::variant<Task, QString> taskOf(const BatchJob &job) const;

    QString name() const { return info_.name; }
    /// How long a file may take where nobody says so; 0 is as long as it likes.
    std::chrono::seconds usualTimeLimit() const;

private:
    JobCommand(CommandInfo info, QString folder) : info_(std::move(info)), folder_(std::move(folder)) {}

    bool printsResults() const;
    std::optional<QString> readShared(const QStringList &words);
    QString formatOf(const BatchJob &job) const;
    bool printsJson(const BatchJob &job) const;
    QString outOf(const BatchJob &job) const;
    std::optional<QString> unknownMember(const BatchJob &job) const;
    std::optional<QString> addOption(const QCommandLineOption &option, const BatchJob &job, Task &task) const;
    std::optional<QString> addArguments(const BatchJob &job, Task &task) const;

    CommandInfo info_;
    QString folder_;
    QMap<QString, QString> options_;    ///< Those that are given for all jobs; null for one without a value.
    QMap<QString, QString> arguments_;  ///< The same of arguments, by their names as members have them.
};

}  // namespace leafwright::cli
