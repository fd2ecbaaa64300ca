#pragma once

#include "cli/Command.h"

namespace leafwright::cli {

/// `autotoc FILE -o OUT`: makes the headings of a document, or of many, its outline.
class AutoTOCCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
    bool limitsTime(const QCommandLineParser &arguments) const override;
};

}  // namespace leafwright::cli
