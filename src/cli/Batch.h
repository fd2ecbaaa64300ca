#pragma once

#include "cli/Console.h"

#include <QStringList>

#include <functional>
#include <optional>

namespace leafwright::cli {

/// Does a job for each of many files, on as many threads as there are cores, with a progress bar. A file
/// that fails does not stop the others; the failed ones are listed at the end. Once there was a request to
/// end the program (Interruption), no file is begun any more.
/// @param job gets a file; returns why it failed, or nothing. Called from several threads at once.
/// @return whether all files are done, and well
bool runBatch(const QStringList &files, const std::function<std::optional<QString>(const QString &)> &job,
              Console &console);

}  // namespace leafwright::cli
