#pragma once

#include "cli/Command.h"

namespace leafwright::cli {

/// The program leafwright-cli: finds the subcommand and runs it. @param arguments without the program's name
int runCommandLine(const QStringList &arguments, Console &console);

/// All subcommands, in the order in which --help lists them.
const std::vector<std::unique_ptr<Command>> &commands();

}  // namespace leafwright::cli
