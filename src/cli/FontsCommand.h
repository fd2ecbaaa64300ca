#pragma once

#include "cli/Command.h"

namespace leafwright::cli {

/// `fonts FILE`: the font census and the heading level map guessed from it.
class FontsCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

}  // namespace leafwright::cli
