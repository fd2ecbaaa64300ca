#pragma once

#include "cli/Command.h"

namespace leafwright::cli {

/// `outline FILE`: the outline as JSON, plus lines or indented text.
class OutlineCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

}  // namespace leafwright::cli
