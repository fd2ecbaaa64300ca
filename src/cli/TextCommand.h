#pragma once

#include "cli/Command.h"

namespace leafwright::cli {

/// `text FILE`: the runs of text that heading detection works on.
class TextCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

}  // namespace leafwright::cli
