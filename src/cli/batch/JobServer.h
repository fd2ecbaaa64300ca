#pragma once

#include <QStringList>

#include <functional>

namespace leafwright::cli {

class Console;

/// Serves the ForkServer that has started this process: does the jobs that it sends, each in a copy of this
/// process, and tells what came of them, until it is gone. For main(), while there is one thread only, where
/// workerOf() is WorkerOf::Pool.
/// @param run runs a command line, in the copy @return the program's exit code
int serveJobs(const std::function<int(const QStringList &arguments, Console &console)> &run);

}  // namespace leafwright::cli
