#include "cli/Command.h"

#include <QCoreApplication>

namespace leafwright::cli {

namespace {

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
    return QCoreApplication::translate("Command", "Usage: %1").arg(usageLine(info)) +
           text.mid(text.indexOf(u'\n'));
}

}  // namespace

ExitCode parseAndRun(const Command &command, const QStringList &arguments, Console &console) {
    const CommandInfo info = command.info();
    QCommandLineParser parser;
    parser.setApplicationDescription(info.description.isEmpty() ? info.summary
                                                                : info.summary + u'\n' + info.description);
    for (const Argument &argument : info.arguments) {
        parser.addPositionalArgument(argument.name, argument.description);
    }
    parser.addOptions(info.options);
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QCoreApplication::translate("Command", "Shows this help."));
    parser.addOption(help);

    if (!parser.parse(QStringList{info.name} + arguments))
        return wrongUsage(command, parser.errorText(), console);
    if (parser.isSet(help)) {
        console.write(helpText(info, parser));
        return Done;
    }
    if (!info.aloneOption.isEmpty() && parser.isSet(info.aloneOption)) return command.run(parser, console);
    const qsizetype given = parser.positionalArguments().size();
    const qsizetype wanted = info.arguments.size();
    const bool openEnded = wanted > 0 && info.arguments.last().name.endsWith(QLatin1String("..."));
    if (given < wanted || (given > wanted && !openEnded)) {
        return wrongUsage(
            command,
            given < wanted
                ? QCoreApplication::translate("Command", "%1 is missing").arg(info.arguments[given].name)
                : QCoreApplication::translate("Command", "unexpected argument \"%1\"")
                      .arg(parser.positionalArguments()[wanted]),
            console);
    }
    return command.run(parser, console);
}

ExitCode wrongUsage(const Command &command, const QString &problem, Console &console) {
    const CommandInfo info = command.info();
    console.message(info.name + QLatin1String(": ") + problem);
    console.message(QCoreApplication::translate("Command", "usage: %1").arg(usageLine(info)));
    return WrongUsage;
}

QCommandLineOption outputOption() {
    return {{QStringLiteral("o"), QStringLiteral("output")},
            QCoreApplication::translate("Command",
                                        "The PDF to write. It may be the input, which is then replaced when "
                                        "the new file is complete."),
            QStringLiteral("OUT")};
}

}  // namespace leafwright::cli
