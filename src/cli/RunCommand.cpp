#include "cli/Commands.h"
#include "cli/FileClash.h"
#include "cli/OpenFile.h"
#include "cli/ScriptLibrary.h"
#include "texts/Translated.h"

namespace leafwright::cli {

namespace {

const QString reportOption = QStringLiteral("report");
const QString listOption = QStringLiteral("list");

constexpr Translated translated{"RunCommand"};

}  // namespace

CommandInfo RunCommand::info() const {
    return {QStringLiteral("run"),
            translated("Plays a script: whatever can be done in the window."),
            translated(
                "STEPS is a JSON array of commands and gestures, which are played on FILE. FILE changes only "
                "where the script saves it. When a step can't be played, nothing at all is written."),
            {{QStringLiteral("STEPS"), translated("The script; \"-\" is standard input.")},
             {QStringLiteral("FILE"), translated("The PDF.")}},
            {outputOption(),
             {reportOption, translated("Tells what came of each step, as JSON; \"-\" is standard output."),
              QStringLiteral("R")},
             keepPagesOption(),
             {listOption, translated("Lists all commands as JSON instead, without arguments.")}},
            listOption};
}

ExitCode RunCommand::run(const QCommandLineParser &arguments, Console &console) const {
    const auto scripts = scriptLibrary();
    if (const auto *problem = std::get_if<QString>(&scripts)) {
        console.message(*problem);
        return Failed;
    }
    const ScriptLibrary &library = *std::get<const ScriptLibrary *>(scripts);
    if (arguments.isSet(listOption)) {
        library.listActions(console);
        return Done;
    }
    const ScriptRequest request{arguments.positionalArguments()[0], arguments.positionalArguments()[1],
                                outputOf(arguments), arguments.value(reportOption),
                                arguments.isSet(keepPagesOption().names().first())};
    if (const auto clash = clashOf({request.file, {request.steps}, request.out, {request.report}})) {
        console.message(*clash);
        return Failed;
    }
    return library.play(request, console);
}

}  // namespace leafwright::cli
