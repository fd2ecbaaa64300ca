#pragma once

#include "cli/Command.h"

namespace leafwright::cli {

/// `contents FILE -o OUT`: reads a PDF as a reader does, and makes what it finds the outline.
class ContentsCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

}  // namespace leafwright::cli
