#pragma once

#include "cli/Command.h"

namespace leafwright::cli {

/// `minitoc FILE --page N --text SAMPLE -o OUT`: adds an entry with every heading that looks like the sample.
class MiniTOCCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

}  // namespace leafwright::cli
