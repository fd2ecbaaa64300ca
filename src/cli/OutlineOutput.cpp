#include "cli/OutlineOutput.h"

#include "cli/Batch.h"
#include "cli/FileClash.h"
#include "cli/Interruption.h"
#include "cli/WorkerProcess.h"
#include "files/FileReading.h"
#include "model/TreeWalk.h"
#include "texts/CountText.h"
#include "texts/Translated.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace leafwright::cli {

namespace {

const QString outDirOption = QStringLiteral("out-dir");

constexpr Translated translated{"OutlineOutput"};

/// A file name that two inputs share, which would make one output overwrite the other.
QString sharedFileName(const QStringList &files) {
    QSet<QString> names;
    for (const QString &file : files) {
        QString name = QFileInfo(file).fileName();
        if (names.contains(name)) return name;
        names.insert(name);
    }
    return {};
}

/// The arguments that have a command do one file of several as it would do all of them. @param own options of
/// this file
QStringList argumentsFor(const QString &file, const QString &out, const CommandInfo &command,
                         const QCommandLineParser &given, const QStringList &own) {
    QStringList arguments{command.name, QLatin1String("--output=") + out};
    for (const QCommandLineOption &option : command.options) {
        const QString name = option.names().last();
        if (!given.isSet(option) || name == outDirOption || outputOption().names().contains(name)) continue;
        for (const QString &value :
             option.valueName().isEmpty() ? QStringList{QString()} : given.values(option))
            arguments += QLatin1String("--") + name + (value.isNull() ? QString() : u'=' + value);
    }
    if (given.isSet(quietOption())) arguments.append(QStringLiteral("--quiet"));
    // Of an option that is given twice, the last one counts.
    return arguments + own + QStringList{QStringLiteral("--"), file};
}

/// Why a worker failed; where it has not, what it said is passed on.
std::optional<QString> failureOf(const QString &file, const WorkerEnd &end, std::chrono::seconds limit,
                                 const QByteArray &said, Console &console) {
    if (const auto reason = end.reason(limit)) return file + QLatin1String(": ") + *reason;
    if (end.code != Done) return Console::messageText(said);
    if (!said.isEmpty()) console.relay(said);
    return std::nullopt;
}

/// Does a file that is alone in a process of its own, which may use all cores and print results.
/// @return why that failed
std::optional<QString> doInProcess(const QString &file, const QStringList &arguments,
                                   std::chrono::seconds limit, Console &console) {
    QByteArray said;
    const WorkerProcess worker(arguments, WorkerOf::Command);
    const WorkerEnd end =
        worker.run(limit, console.resultsDescriptor(), [&said](const QByteArray &text) { said += text; });
    return failureOf(file, end, limit, said, console);
}

/// Does one of many files. @return why that failed
std::optional<QString> doInPool(const QString &file, const QString &out, const QStringList &arguments,
                                std::chrono::seconds limit, ForkServer &workers, Console &console) {
    const WorkerReport report = workers.run({.arguments = arguments, .out = out, .timeLimit = limit});
    return failureOf(file, report.end, limit, report.said, console);
}

}  // namespace

QList<QCommandLineOption> OutlineOutput::options() {
    const QCommandLineOption outDir(outDirOption,
                                    translated("Where the PDFs go that are made of several files, under "
                                               "their own names; made if it is not there."),
                                    QStringLiteral("DIR"));
    return {outputOption(), outDir};
}

OutlineOutput::OutlineOutput(const QCommandLineParser &arguments)
    : files_(arguments.positionalArguments()),
      out_(outputOf(arguments)),
      folder_(arguments.value(outDirOption)) {}

std::optional<QString> OutlineOutput::problem() const {
    if (out_.isEmpty() == folder_.isEmpty())
        return translated("either -o OUT or --out-dir DIR must be given");
    if (folder_.isEmpty() && files_.size() > 1) return translated("several files need --out-dir DIR");
    if (const QString name = sharedFileName(files_); !name.isEmpty())
        return translated("two of the files are named \"%1\"").arg(name);
    QStringList targets;
    for (const QString &file : files_)
        targets.append(targetOf(file));
    return clashOfResults(files_, targets);
}

bool OutlineOutput::makeFolder(Console &console) const {
    return folder_.isEmpty() || cli::makeFolder(folder_, console);
}

bool OutlineOutput::isAlone() const {
    return files_.size() == 1 && workerOf() != WorkerOf::Batch;
}

bool OutlineOutput::run(const CommandInfo &command, const QCommandLineParser &arguments, const Job &job,
                        Console &console) const {
    if (!isFolder()) {
        const auto alone = [&job](const QString &file, ForkServer & /*workers*/) { return job.run(file); };
        return runBatch(files_, command.name, alone, console);
    }
    const Interruption interruption;
    const std::chrono::seconds limit = timeLimit(arguments).value_or(job.limit);
    console.flush();
    const auto each = [&](const QString &file, ForkServer &workers) {
        const QStringList own = job.optionsOf ? job.optionsOf(file) : QStringList();
        const QString out = targetOf(file);
        const QStringList words = argumentsFor(file, out, command, arguments, own);
        return isAlone() ? doInProcess(file, words, limit, console)
                         : doInPool(file, out, words, limit, workers, console);
    };
    const bool isDone = runBatch(files_, command.name, each, console);
    // Of a file that is alone, its process has told.
    if (isDone && !isAlone())
        console.tellOutcome(translated("%1: %2 written").arg(folder_, fileCountText(files_.size())));
    return isDone;
}

QString OutlineOutput::targetOf(const QString &file) const {
    return folder_.isEmpty() ? out_ : QDir(folder_).filePath(QFileInfo(file).fileName());
}

bool makeFolder(const QString &path, Console &console) {
    const auto reason = leafwright::makeFolder(path);
    if (reason) console.message(translated("%1: the folder could not be made: %2").arg(path, *reason));
    return !reason;
}

void appendEntries(OutlineDocument &document, MyOutlineItem::Children entries) {
    OutlineEdits &edits = document.edits();
    const OutlineEdits::Transaction edit(edits, QStringLiteral("append"));
    for (auto &entry : entries)
        edits.insert(document.root(), document.root().children().size(), std::move(entry));
}

std::optional<QString> writeEntries(OutlineDocument &document, MyOutlineItem::Children entries, bool keep,
                                    const QString &out, Console &console) {
    // Otherwise a document of scanned pages would lose the outline that it has.
    if (keep || entries.empty()) document.importOutline();
    appendEntries(document, std::move(entries));
    console.tellEntries(countBelow(document.root()));
    if (const auto error = document.write(out, OutlineDocument::saveFinalPDF)) return error->message;
    tellWritten(out, document, console);
    return std::nullopt;
}

void tellWritten(const QString &out, const OutlineDocument &document, Console &console) {
    const QString name = out == standardOutputPath() ? translated("standard output") : out;
    console.tellOutcome(translated("%1 written, %2").arg(name, entryCountText(countBelow(document.root()))));
}

}  // namespace leafwright::cli
