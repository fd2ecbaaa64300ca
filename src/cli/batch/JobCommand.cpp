#include "cli/batch/JobCommand.h"

#include "cli/CommandLine.h"
#include "exchange/OutlineFormat.h"
#include "files/FileName.h"
#include "files/FileReading.h"
#include "texts/Translated.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"JobCommand"};

const QStringList &commandNames() {
    static const QStringList names{
        QStringLiteral("autotoc"), QStringLiteral("contents"), QStringLiteral("apply"), QStringLiteral("run"),
        QStringLiteral("info"),    QStringLiteral("outline"),  QStringLiteral("fonts")};
    return names;
}

/// Options that a batch sets itself, or that mean nothing in one.
bool isTheBatchs(const CommandInfo &info, const QCommandLineOption &option) {
    const QString name = option.names().last();
    return name == QLatin1String("output") || name == QLatin1String("out-dir") || name == info.aloneOption;
}

/// What the name of a file with what is printed in a format ends in, without a dot.
QString extensionOf(const QString &formatName) {
    const OutlineFormat *format = outlineFormatNamed(formatName);
    const char *own = format && formatName != u"plus" ? format->extensions.front() : nullptr;
    return QLatin1String(own ? own : "txt");
}

/// Options that name a file to be written, of which each job needs its own.
bool namesResult(const QString &option) {
    return option == QLatin1String("report") || option == QLatin1String("save-map");
}

/// Options that name a file to be read.
bool namesSource(const QString &option) {
    return option == QLatin1String("map");
}

/// "TREE" is the member "tree".
QString memberOf(const Argument &argument) {
    QString name = argument.name.toLower();
    while (name.endsWith(u'.'))
        name.chop(1);
    return name;
}

bool isFile(const Argument &argument) {
    return memberOf(argument) == QLatin1String("file");
}

/// Adds what makes a signature, of which no two parts run into each other.
void addTo(QByteArray &signature, const QString &part) {
    signature += fileNameBytes(part) + '\0';
}

/// What tells a file from what stood there before, or will; the same wherever there is none.
QString stateOf(const QString &path) {
    const auto mark = markOfJob(path);
    return mark ? QString::number(mark->size) + u' ' + QString::number(mark->modified) : QString();
}

}  // namespace

bool JobCommand::Task::resultsAreThere() const {
    return (out.isEmpty() || fileExists(out)) && std::ranges::all_of(written, fileExists);
}

std::variant<JobCommand, QString> JobCommand::read(const QStringList &words, const QString &folder) {
    const QString name = words.value(0);
    if (!commandNames().contains(name))
        return translated("\"%1\" is no command of a batch; there are %2")
            .arg(name, commandNames().join(u' '));
    for (const auto &command : commands()) {
        if (command->info().name != name) continue;
        JobCommand result(command->info(), folder);
        if (auto problem = result.readShared(words)) return *problem;
        return result;
    }
    return name;
}

std::optional<QString> JobCommand::readShared(const QStringList &words) {
    QCommandLineParser parser;
    parser.addOptions(info_.options);
    if (!parser.parse(words)) return parser.errorText();
    for (const QCommandLineOption &option : info_.options) {
        if (!parser.isSet(option)) continue;
        const QString name = option.names().last();
        if (isTheBatchs(info_, option) || namesResult(name))
            return translated("--%1 is not for all jobs; each says it in its line").arg(name);
        const bool hasValue = !option.valueName().isEmpty();
        options_[name] = hasValue ? parser.value(option) : QString();
        if (hasValue && options_[name].isEmpty()) return translated("--%1: the value is empty").arg(name);
    }
    const QStringList given = parser.positionalArguments();
    qsizetype next = 0;
    for (const Argument &argument : info_.arguments) {
        if (isFile(argument) || next == given.size()) continue;
        if (given[next] == QLatin1String("-")) return translated("standard input has the jobs");
        arguments_[memberOf(argument)] = given[next++];
    }
    if (next == given.size()) return std::nullopt;
    return translated("\"%1\": the files are told by standard input").arg(given[next]);
}

std::chrono::seconds JobCommand::usualTimeLimit() const {
    const bool recognises =
        options_.contains(QStringLiteral("ocr")) || options_.contains(QStringLiteral("ocr-language"));
    return std::chrono::seconds(recognises ? 0 : 60);
}

bool JobCommand::printsResults() const {
    return std::ranges::none_of(info_.options, [](const QCommandLineOption &option) {
        return option.names().contains(QStringLiteral("output"));
    });
}

/// Whether what a command that prints its results prints for a job is JSON.
QString JobCommand::formatOf(const BatchJob &job) const {
    const QString usual = QStringLiteral("json");
    const QJsonValue own = job.options.value(QLatin1String("format"));
    return own.isUndefined() ? options_.value(QStringLiteral("format"), usual) : own.toString(usual);
}

bool JobCommand::printsJson(const BatchJob &job) const {
    const QString format = formatOf(job);
    return format == u"json" || format == u"pdfcpu";
}

QString JobCommand::outOf(const BatchJob &job) const {
    if (!job.out.isEmpty() || folder_.isEmpty()) return job.out;
    const QFileInfo file(job.file);
    const QDir folder(folder_);
    if (!printsResults()) return folder.filePath(file.fileName());
    return folder.filePath(file.completeBaseName() + u'.' + extensionOf(formatOf(job)));
}

std::optional<QString> JobCommand::unknownMember(const BatchJob &job) const {
    const QStringList given = job.options.keys();
    for (const QString &name : given) {
        const bool isOption = std::ranges::any_of(info_.options, [&](const QCommandLineOption &option) {
            return option.names().last() == name && !isTheBatchs(info_, option);
        });
        const bool isArgument = std::ranges::any_of(
            info_.arguments, [&](const Argument &argument) { return memberOf(argument) == name; });
        if (!isOption && !isArgument) return translated("%1 has no option \"%2\"").arg(info_.name, name);
    }
    return std::nullopt;
}

std::optional<QString> JobCommand::addOption(const QCommandLineOption &option, const BatchJob &job,
                                             Task &task) const {
    const QString name = option.names().last();
    const bool wantsValue = !option.valueName().isEmpty();
    bool isSet = options_.contains(name);
    QString value = options_.value(name);
    if (const QJsonValue own = job.options.value(name); !own.isUndefined()) {
        const bool isOff = own.isNull() || (own.isBool() && !own.toBool());
        const bool fits = isOff || (wantsValue ? own.isString() || own.isDouble() : own.isBool());
        if (!fits) {
            return wantsValue ? translated("\"%1\" wants a text or a number").arg(name)
                              : translated("\"%1\" wants true or false").arg(name);
        }
        isSet = !isOff;
        value = own.isDouble() ? QString::number(own.toDouble(), 'g', 15) : own.toString();
        if (isSet && wantsValue && value.isEmpty()) return translated("--%1: the value is empty").arg(name);
    }
    if (!isSet) return std::nullopt;
    if (namesSource(name)) task.read.append(value);
    if (namesResult(name) && value == QLatin1String("-")) {
        task.printsJson = true;
    } else if (namesResult(name)) {
        task.written.append(value);
    }
    task.work.arguments.append(QLatin1String("--") + name + (wantsValue ? u'=' + value : QString()));
    return std::nullopt;
}

std::optional<QString> JobCommand::addArguments(const BatchJob &job, Task &task) const {
    task.work.arguments.append(QStringLiteral("--"));
    for (const Argument &argument : info_.arguments) {
        const QString name = memberOf(argument);
        const QJsonValue own = job.options.value(name);
        if (!own.isUndefined() && !own.isNull() && !own.isString())
            return translated("\"%1\" wants a path").arg(name);
        const QString value = isFile(argument) ? job.file : own.toString(arguments_.value(name));
        if (value.isEmpty()) return translated("\"%1\" is missing").arg(name);
        // What a worker could read there has been read by the batch.
        if (value == QLatin1String("-")) return translated("standard input has the jobs");
        task.work.arguments.append(value);
        if (!isFile(argument)) task.read.append(value);
    }
    return std::nullopt;
}

std::variant<JobCommand::Task, QString> JobCommand::taskOf(const BatchJob &job) const {
    if (auto problem = unknownMember(job)) return *problem;
    Task task;
    task.out = outOf(job);
    task.work.arguments.append(info_.name);
    const bool needsOut = !printsResults() && info_.name != QLatin1String("run");
    task.work.out = task.out;
    if (task.out.isEmpty() && needsOut) return translated("\"out\" is missing, and there is no --out-dir");
    if (printsResults()) {
        task.printsJson = printsJson(job);
        task.work.printTo = task.out;
        if (!task.out.isEmpty()) task.written.append(task.out);
    } else if (!task.out.isEmpty()) {
        task.pdf = task.out;
        task.work.arguments.append(QLatin1String("--output=") + task.out);
    }
    for (const QCommandLineOption &option : info_.options) {
        if (isTheBatchs(info_, option)) continue;
        if (auto problem = addOption(option, job, task)) return *problem;
    }
    if (auto problem = addArguments(job, task)) return *problem;
    // The same paths are other files in another working folder.
    const auto file = absolutePath(job.file);
    const auto out = task.out.isEmpty() ? std::optional(QString()) : absolutePath(task.out);
    if (!file || !out) return noWorkingFolder();
    QByteArray whole;
    addTo(whole, *file);
    addTo(whole, *out);
    for (const QString &argument : task.work.arguments)
        addTo(whole, argument);
    for (const QString &path : task.read)
        addTo(whole, stateOf(path));
    task.signature = QCryptographicHash::hash(whole, QCryptographicHash::Sha1).toHex();
    return task;
}

}  // namespace leafwright::cli
