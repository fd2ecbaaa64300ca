#pragma once

#include <QStringList>

#include <optional>

namespace leafwright::test {

/// What became of a command that ran in a process of its own.
struct Trial {
    int status = 0;      ///< Its exit status; -1 where a signal ended it.
    int signal = 0;      ///< That signal.
    double seconds = 0;  ///< Of the processor, its children included.
    double megabytes = 0;
};

/// Runs leafwright-cli in a copy of this process, which saves its start. What it prints is dropped.
/// @param messages gets what it says on standard error
Trial tryCommand(const QStringList &arguments, const QString &messages);

/// Runs another program. @return its exit status; -1 where it did not end by itself
int runQuietly(const char *program, const QString &argument, const QString &path);

}  // namespace leafwright::test
