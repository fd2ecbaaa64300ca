#pragma once

#include "cli/Command.h"

namespace leafwright::cli {

/// `apply FILE TREE -o OUT`: writes an outline given as JSON or plus lines.
class ApplyCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

}  // namespace leafwright::cli
