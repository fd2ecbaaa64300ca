#include "cli/CommandLine.h"

#include "cli/Commands.h"
#include "cli/ProgramStart.h"
#include "texts/Translated.h"

namespace leafwright::cli {

namespace {

constexpr Translated translated{"CommandLine"};

QString overview() {
    QString text = translated(
        "Usage: leafwright-cli COMMAND [options] ARGUMENTS\n"
        "Reads, builds and writes the outline (bookmarks) of PDF files.\n\nCommands:\n");
    constexpr int column = 10;
    for (const auto &command : commands()) {
        const CommandInfo info = command->info();
        text += QLatin1String("  ") + info.name.leftJustified(column) + info.summary + u'\n';
    }
    text += translated(
        "\n\"leafwright-cli COMMAND --help\" explains a command.\n"
        "Exit status: 0 done, 1 failed, 2 wrong usage.\n");
    return text;
}

ExitCode dispatch(const QStringList &arguments, Console &console) {
    if (arguments.isEmpty()) {
        console.message(translated("no command given; try --help"));
        return WrongUsage;
    }
    const QString &name = arguments.first();
    if (name == QLatin1String("--help") || name == QLatin1String("-h") || name == QLatin1String("help")) {
        console.write(overview());
        return Done;
    }
    if (name == QLatin1String("--version") || name == QLatin1String("-v")) {
        console.write(QByteArrayLiteral("leafwright-cli " LEAFWRIGHT_VERSION "\n"));
        return Done;
    }
    for (const auto &command : commands()) {
        if (command->info().name == name) return parseAndRun(*command, arguments.sliced(1), console);
    }
    console.message(translated("there is no command \"%1\"; try --help").arg(name));
    return WrongUsage;
}

}  // namespace

const std::vector<std::unique_ptr<Command>> &commands() {
    static const auto all = [] {
        std::vector<std::unique_ptr<Command>> list;
        list.push_back(std::make_unique<InfoCommand>());
        list.push_back(std::make_unique<LabelsCommand>());
        list.push_back(std::make_unique<OutlineCommand>());
        list.push_back(std::make_unique<TextCommand>());
        list.push_back(std::make_unique<FontsCommand>());
        list.push_back(std::make_unique<ContentsCommand>());
        list.push_back(std::make_unique<AutoTOCCommand>());
        list.push_back(std::make_unique<MiniTOCCommand>());
        list.push_back(std::make_unique<ApplyCommand>());
        list.push_back(std::make_unique<RunCommand>());
        list.push_back(std::make_unique<BatchCommand>());
        list.push_back(std::make_unique<ReportCommand>());
        return list;
    }();
    return all;
}

int runCommandLine(const QStringList &arguments, Console &console) {
    const ExitCode code = dispatch(arguments, console);
    const auto problem = console.flush();
    if (problem && code == Done) {
        console.message(*problem);
        return Failed;
    }
    // A batch tells itself what came of its jobs.
    const bool isOnItsOwn = workerOf() == WorkerOf::None || workerOf() == WorkerOf::Command;
    if (code == Done && isOnItsOwn && !console.outcome().isEmpty()) console.message(console.outcome());
    return code;
}

}  // namespace leafwright::cli
