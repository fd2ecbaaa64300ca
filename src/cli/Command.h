#pragma once

#include "cli/Console.h"

#include <QCommandLineParser>

#include <chrono>
#include <optional>

namespace leafwright::cli {

/// How a command ends.
enum ExitCode : int {
    Done = 0,
    Failed = 1,
    WrongUsage = 2,
};

/// One positional argument of a command.
struct Argument {
    QString name;  ///< As it stands in the usage line, such as "FILE" or "FILE...".
    QString description;
};

/// What a command says of itself; usage errors and --help come from it.
struct CommandInfo {
    QString name;
    QString summary;      ///< One line.
    QString description;  ///< Further text for --help.
    QList<Argument> arguments;
    QList<QCommandLineOption> options;
    QString aloneOption = {};  ///< The name of an option that stands without the arguments; may be empty.
    QStringList printingOptions = {};  ///< The names of those by which a command that writes a PDF prints.
    /// What begins with the first argument is a command, with options of its own.
    bool endsWithCommand = false;
};

/// One subcommand of leafwright-cli.
class Command {
public:
    virtual ~Command() = default;

    virtual CommandInfo info() const = 0;
    /// Runs with arguments that have been parsed and counted: there are as many as info() lists, or more
    /// where the last one's name ends in "...".
    virtual ExitCode run(const QCommandLineParser &arguments, Console &console) const = 0;
    /// Whether run() sees to it itself that no file takes longer than timeLimit().
    virtual bool limitsTime(const QCommandLineParser & /*arguments*/) const { return false; }
};

/// Parses the arguments behind the command's name and runs it; --help and wrong usage end here.
ExitCode parseAndRun(const Command &command, const QStringList &arguments, Console &console);

/// For run(): says what is wrong with the usage.
ExitCode wrongUsage(const Command &command, const QString &problem, Console &console);

/// The option "-q", which every command has: what it has done is not said.
QCommandLineOption quietOption();

/// The option "--timeout SECONDS", which every command has.
QCommandLineOption timeoutOption();
/// How long a file may take, as the option says; absent without it, 0 for as long as it likes.
std::optional<std::chrono::seconds> timeLimit(const QCommandLineParser &arguments);

/// The option "-o OUT", which every command that writes a PDF has.
QCommandLineOption outputOption();
/// The PDF to write, as that option says: for "-", the path of standard output. Empty without the option.
QString outputOf(const QCommandLineParser &arguments);
QString standardOutputPath();

}  // namespace leafwright::cli
