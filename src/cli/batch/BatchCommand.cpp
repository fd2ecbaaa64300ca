#include "cli/Commands.h"
#include "cli/FileClash.h"
#include "cli/OutlineOutput.h"
#include "cli/batch/BatchRun.h"
#include "files/FileName.h"
#include "texts/Translated.h"

#include <algorithm>
#include <climits>
#include <thread>
#include <unistd.h>

namespace leafwright::cli {

namespace {

const QString jobsOption = QStringLiteral("jobs");
const QString logOption = QStringLiteral("log");
const QString memoryOption = QStringLiteral("memory");
const QString outDirOption = QStringLiteral("out-dir");

constexpr Translated translated{"BatchCommand"};

/// A number within limits; nothing for what is none.
std::optional<int> numberOf(const QCommandLineParser &arguments, const QString &option, int least, int most) {
    bool isNumber = false;
    const int number = arguments.value(option).toInt(&isNumber);
    return isNumber && number >= least && number <= most ? std::optional(number) : std::nullopt;
}

/// What the options ask for. @return what is wrong with them; absent when all is well
std::optional<QString> readLimits(const QCommandLineParser &arguments, BatchLimits &limits) {
    constexpr int mostWorkers = 1024;
    constexpr int mostMegabytes = 1 << 30;
    constexpr qint64 bytesInAMegabyte = 1 << 20;
    limits.workers = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
    if (arguments.isSet(jobsOption)) {
        const auto workers = numberOf(arguments, jobsOption, 1, mostWorkers);
        if (!workers) return translated("--jobs wants a number from 1 to %1").arg(mostWorkers);
        limits.workers = *workers;
    }
    if (arguments.isSet(memoryOption)) {
        const auto megabytes = numberOf(arguments, memoryOption, 0, mostMegabytes);
        if (!megabytes) return translated("--memory wants a number of megabytes, or 0");
        limits.memory = *megabytes * bytesInAMegabyte;
    }
    return std::nullopt;
}

/// The path of the file that a descriptor leads to; what is none has none that leads anywhere.
QString pathOf(int descriptor) {
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(descriptor);
    QByteArray path(PATH_MAX, Qt::Uninitialized);
    path.truncate(std::max(ssize_t{0}, ::readlink(link.constData(), path.data(), PATH_MAX)));
    return fileNameText(path);
}

QList<QCommandLineOption> options() {
    return {
        {jobsOption, translated("How many files are done at once; as many as there are cores, unless given."),
         QStringLiteral("N")},
        {logOption,
         translated("Notes in a file what came of each job. A second start with it passes over what is "
                    "done."),
         QStringLiteral("LOG")},
        {memoryOption,
         translated("Gives a file up that takes more memory, in megabytes; 0 lets it take what it likes."),
         QStringLiteral("MB")},
        {outDirOption,
         translated("Where the results go of jobs that have no \"out\", under the names of their files; "
                    "made if it is not there."),
         QStringLiteral("DIR")}};
}

}  // namespace

CommandInfo BatchCommand::info() const {
    return {
        QStringLiteral("batch"),
        translated("Does very many files, told by standard input, a line each."),
        translated(
            "A line is a path, or a JSON object with \"file\", \"out\" and options of the command by their "
            "names. Each is done in a process of its own, the largest first; what becomes of one, or takes "
            "more than 60 seconds or --timeout, stops no other. Of each, a line of JSON tells what came of "
            "it. COMMAND is autotoc, contents, apply, run, info, outline or fonts, with options for all "
            "jobs behind it, and the arguments beside the file."),
        {{QStringLiteral("COMMAND..."), translated("The command, its options and arguments.")}},
        options(),
        {},
        {},
        true};
}

bool BatchCommand::limitsTime(const QCommandLineParser & /*arguments*/) const {
    return true;
}

ExitCode BatchCommand::run(const QCommandLineParser &arguments, Console &console) const {
    const QString folder = arguments.value(outDirOption);
    const auto command = JobCommand::read(arguments.positionalArguments(), folder);
    if (const auto *problem = std::get_if<QString>(&command)) return wrongUsage(*this, *problem, console);
    BatchLimits limits;
    if (const auto problem = readLimits(arguments, limits)) return wrongUsage(*this, *problem, console);
    const auto &jobs = std::get<JobCommand>(command);
    limits.time = timeLimit(arguments).value_or(jobs.usualTimeLimit());
    const QString path = arguments.value(logOption);
    if (!path.isEmpty()) {
        // What is read from there, and what is told, may be files as well.
        if (const auto clash =
                clashOf({.read = {QStringLiteral("-")}, .written = {QStringLiteral("-"), path}})) {
            console.message(*clash);
            return Failed;
        }
    }
    if (!folder.isEmpty() && !makeFolder(folder, console)) return Failed;
    JobLog log;
    if (const auto problem = path.isEmpty() ? std::nullopt : log.open(path)) {
        console.message(*problem);
        return Failed;
    }
    QStringList ownFiles{pathOf(STDIN_FILENO), pathOf(console.resultsDescriptor())};
    if (!path.isEmpty()) ownFiles.append(path);
    BatchRun batch(jobs, limits, log, ownFiles, console);
    return batch.run(STDIN_FILENO) ? Done : Failed;
}

}  // namespace leafwright::cli
