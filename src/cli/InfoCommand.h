#pragma once

#include "cli/Command.h"

namespace leafwright::cli {

/// `info FILE`: what kind of file it is.
class InfoCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

}  // namespace leafwright::cli
