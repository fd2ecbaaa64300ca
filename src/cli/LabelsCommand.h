#pragma once

#include "cli/Command.h"

namespace leafwright::cli {

/// `labels FILE`: the page labels.
class LabelsCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

}  // namespace leafwright::cli
