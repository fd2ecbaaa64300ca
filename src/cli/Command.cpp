#include "cli/Command.h"

#include "cli/WorkerProcess.h"
#include "texts/Translated.h"

#include <algorithm>
#include <new>
#include <system_error>
#include <unistd.h>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"Command"};

QString usageLine(const CommandInfo &info) {
    QString line = QLatin1String("leafwright-cli ") + info.name;
    if (!info.options.isEmpty()) line += QLatin1String(" [options]");
    for (const Argument &argument : info.arguments)
        line += u' ' + argument.name;
    return line;
}

/// The parser's own help begins with a usage line that does not know about subcommands.
QString helpText(const CommandInfo &info, const QCommandLineParser &parser) {
    const QString text = parser.helpText();
    return translated("Usage: %1").arg(usageLine(info)) + text.mid(text.indexOf(u'\n'));
}

bool hasReadableTimeLimit(const QCommandLineParser &parser) {
    if (!parser.isSet(timeoutOption())) return true;
    constexpr int aYear = 366 * 24 * 60 * 60;
    bool isNumber = false;
    const int seconds = parser.value(timeoutOption()).toInt(&isNumber);
    return isNumber && seconds >= 0 && seconds <= aYear;
}

/// An option that is given nothing, as by a variable of the shell that is not set: its name and what it
/// wants; null if there is none.
QString emptyOption(const CommandInfo &info, const QCommandLineParser &parser) {
    for (const QCommandLineOption &option : info.options) {
        if (option.valueName().isEmpty() || !parser.isSet(option)) continue;
        const QStringList values = parser.values(option);
        if (std::ranges::any_of(values, &QString::isEmpty))
            return QLatin1String("--") + option.names().last() + u' ' + option.valueName();
    }
    return {};
}

bool isStandardOutput(const QString &value) {
    return value == QLatin1String("-");
}

/// Whether the PDF goes to standard output because "-o -" says so.
bool pours(const CommandInfo &info, const QCommandLineParser &parser) {
    const bool hasOutput = std::ranges::any_of(info.options, [](const QCommandLineOption &option) {
        return option.names() == outputOption().names();
    });
    return hasOutput && isStandardOutput(parser.value(outputOption()));
}

/// What else would go there, into the PDF: the option's name; null if there is none.
QString optionThatPrints(const CommandInfo &info, const QCommandLineParser &parser) {
    for (const QCommandLineOption &option : info.options) {
        if (option.names() == outputOption().names() || !parser.isSet(option)) continue;
        QString name = QLatin1String("--") + option.names().last();
        if (isStandardOutput(parser.value(option))) return name + QLatin1String(" -");
        if (info.printingOptions.contains(option.names().last())) return name;
    }
    return {};
}

/// Runs the command in a process that is ended when its time is over.
ExitCode runWithin(std::chrono::seconds limit, const CommandInfo &info, const QStringList &arguments,
                   const QCommandLineParser &parser, Console &console) {
    console.flush();
    const WorkerProcess worker(QStringList{info.name} + arguments, WorkerOf::Command);
    const WorkerEnd end = worker.run(limit, console.resultsDescriptor(),
                                     [&console](const QByteArray &text) { console.relay(text); });
    const auto reason = end.reason(limit);
    if (!reason) return static_cast<ExitCode>(end.code);
    console.message(parser.positionalArguments().join(u' ') + QLatin1String(": ") + *reason);
    return Failed;
}

ExitCode runParsed(const Command &command, const CommandInfo &info, const QStringList &arguments,
                   const QCommandLineParser &parser, Console &console) {
    const auto limit = timeLimit(parser).value_or(std::chrono::seconds(0));
    if (limit.count() > 0 && workerOf() == WorkerOf::None && !command.limitsTime(parser))
        return runWithin(limit, info, arguments, parser, console);
    if (pours(info, parser) && ::isatty(STDOUT_FILENO) == 1) {
        console.message(
            translated("standard output is a terminal, which can't show a PDF; nothing was written"));
        return Failed;
    }
    const QString what = parser.positionalArguments().join(u' ') + QLatin1String(": ");
    try {
        return command.run(parser, console);
    } catch (const std::bad_alloc &) {
        console.message(what + translated("there is not enough memory"));
    } catch (const std::system_error &error) {
        // A thread, say, that could not be started.
        console.message(what + QString::fromLocal8Bit(error.what()));
    }
    return Failed;
}

}  // namespace

ExitCode parseAndRun(const Command &command, const QStringList &arguments, Console &console) {
    const CommandInfo info = command.info();
    QCommandLineParser parser;
    if (info.endsWithCommand)
        parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    parser.setApplicationDescription(info.description.isEmpty() ? info.summary
                                                                : info.summary + u'\n' + info.description);
    for (const Argument &argument : info.arguments) {
        parser.addPositionalArgument(argument.name, argument.description);
    }
    parser.addOptions(info.options);
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  translated("Shows this help."));
    parser.addOptions({quietOption(), timeoutOption(), help});

    if (!parser.parse(QStringList{info.name} + arguments))
        return wrongUsage(command, parser.errorText(), console);
    if (parser.isSet(help)) {
        console.write(helpText(info, parser));
        return Done;
    }
    if (!hasReadableTimeLimit(parser)) {
        return wrongUsage(command, translated("--timeout wants a number of seconds, or 0"), console);
    }
    if (const QString option = emptyOption(info, parser); !option.isNull()) {
        return wrongUsage(command, translated("%1: the value is empty").arg(option), console);
    }
    if (!info.aloneOption.isEmpty() && parser.isSet(info.aloneOption)) return command.run(parser, console);
    if (const QString other = pours(info, parser) ? optionThatPrints(info, parser) : QString();
        !other.isNull()) {
        return wrongUsage(command, translated("-o - and %1 would be printed into each other").arg(other),
                          console);
    }
    const qsizetype given = parser.positionalArguments().size();
    const qsizetype wanted = info.arguments.size();
    const bool openEnded = wanted > 0 && info.arguments.last().name.endsWith(QLatin1String("..."));
    if (given < wanted || (given > wanted && !openEnded)) {
        return wrongUsage(
            command,
            given < wanted
                ? translated("%1 is missing").arg(info.arguments[given].name)
                : translated("unexpected argument \"%1\"").arg(parser.positionalArguments()[wanted]),
            console);
    }
    const ExitCode code = runParsed(command, info, arguments, parser, console);
    if (parser.isSet(quietOption())) console.tellOutcome({});
    return code;
}

ExitCode wrongUsage(const Command &command, const QString &problem, Console &console) {
    const CommandInfo info = command.info();
    console.message(info.name + QLatin1String(": ") + problem);
    console.message(translated("usage: %1").arg(usageLine(info)));
    return WrongUsage;
}

QCommandLineOption quietOption() {
    return {{QStringLiteral("q"), QStringLiteral("quiet")},
            translated("Does not say what was done, only what is wrong.")};
}

QCommandLineOption timeoutOption() {
    return {QStringLiteral("timeout"),
            translated("Gives a file up that takes longer than this; 0 lets it take as long "
                       "as it likes."),
            QStringLiteral("SECONDS")};
}

std::optional<std::chrono::seconds> timeLimit(const QCommandLineParser &arguments) {
    if (!arguments.isSet(timeoutOption())) return std::nullopt;
    return std::chrono::seconds(arguments.value(timeoutOption()).toInt());
}

QCommandLineOption outputOption() {
    return {{QStringLiteral("o"), QStringLiteral("output")},
            translated("The PDF to write; \"-\" is standard output. It may be the input, which is then "
                       "replaced when the new file is complete."),
            QStringLiteral("OUT")};
}

QString outputOf(const QCommandLineParser &arguments) {
    const QString path = arguments.value(outputOption());
    return isStandardOutput(path) ? standardOutputPath() : path;
}

QString standardOutputPath() {
    return QStringLiteral("/dev/stdout");
}

}  // namespace leafwright::cli
