#pragma once

#include "cli/Command.h"

namespace leafwright::cli {

/// `run STEPS FILE`: plays a script of commands and gestures on a document with its window.
class RunCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

}  // namespace leafwright::cli
