#pragma once

#include "cli/Console.h"
#include "cli/batch/ForkServer.h"

#include <QStringList>

#include <functional>
#include <optional>

namespace leafwright::cli {

/// Does a job for each of many files, on as many threads as there are cores, the largest first, with a
/// progress bar. A file that fails does not stop the others; the failed ones are listed at the end, in the
/// order of the files. Once there was a request to end the program (Interruption), no file is begun any more.
/// @param command whose workers the job is given
/// @param job gets a file, and who starts workers for this thread; returns why it failed, or nothing. Called
/// from several threads at once.
/// @return whether all files are done, and well
bool runBatch(const QStringList &files, const QString &command,
              const std::function<std::optional<QString>(const QString &, ForkServer &)> &job,
              Console &console);

}  // namespace leafwright::cli
