#include "cli/batch/BatchRun.h"

#include "cli/Interruption.h"
#include "cli/batch/ForkServer.h"
#include "cli/batch/LineReader.h"
#include "files/FilePlace.h"
#include "files/FileReading.h"
#include "files/SystemError.h"
#include "texts/Translated.h"

#include <cerrno>
#include <cstdint>
#include <sys/eventfd.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"BatchRun"};

/// What a worker has said, its lines as one text.
QString messageOf(const QByteArray &said) {
    QStringList lines;
    for (const QByteArray &line : said.split('\n'))
        if (!line.trimmed().isEmpty()) lines.append(Console::messageText(line));
    return lines.isEmpty() ? QString() : lines.join(u'\n');
}

JobResult resultOf(const WaitingJob &waiting, const WorkerReport &report, std::chrono::seconds limit) {
    JobResult result{.file = waiting.job.file, .out = waiting.task.out};
    result.seconds = report.seconds;
    result.facts = report.facts;
    if (report.peakBytes > 0) result.peakBytes = report.peakBytes;
    result.message = messageOf(report.said);
    const auto reason = report.end.reason(limit);
    if (reason) {
        result.message = result.message.isNull() ? *reason : result.message + u'\n' + *reason;
    } else if (report.printedTooMuch) {
        result.message = translated("this prints more than a line can hold; \"out\" takes it");
    } else if (report.end.code == Done) {
        result.status = JobResult::Status::Done;
        if (!report.printed.isEmpty()) result.printed = report.printed;
        result.printedIsJson = waiting.task.printsJson;
    }
    return result;
}

}  // namespace

BatchRun::~BatchRun() {
    if (stop_ >= 0) ::close(stop_);
}

bool BatchRun::run(int descriptor) {
    stop_ = ::eventfd(0, EFD_CLOEXEC);
    for (const QString &path : std::as_const(ownFiles_))
        if (const auto problem = places_.reserve(path)) giveUp(*problem);
    const Interruption interruption;
    {
        std::vector<std::jthread> workers;
        try {
            for (int i = 0; i < limits_.workers; ++i)
                workers.emplace_back([this] { work(); });
        } catch (const std::system_error &error) {
            giveUp(QString::fromLocal8Bit(error.what()));
        }
        readJobs(descriptor);
        if (Interruption::requested()) queue_.abandon();
        queue_.finish();
    }
    return sayHowItEnded();
}

void BatchRun::readJobs(int descriptor) {
    using Got = LineReader::Got;
    LineReader reader(descriptor, stop_);
    QByteArray line;
    while (!queue_.isAbandoned()) {
        switch (reader.next(line)) {
            case Got::Line:
                if (!line.trimmed().isEmpty()) admit(line, reader.number());
                break;
            case Got::TooLong:
                fail(
                    {.file = {}, .message = translated("line %1 is too long for a job").arg(reader.number())},
                    {}, {});
                break;
            case Got::Failed:
                giveUp(translated("the jobs can't be read: %1").arg(reasonOfSystem(errno)));
                return;
            case Got::End:
            case Got::Interrupted:
                return;
        }
    }
}

/// Has a job wait for a worker, or says at once what has become of it.
void BatchRun::admit(const QByteArray &line, qint64 number) {
    const auto read = readJob(line);
    if (const auto *problem = std::get_if<QString>(&read)) {
        fail({.file = {}, .message = translated("line %1: %2").arg(number).arg(*problem)}, {}, {});
        return;
    }
    WaitingJob waiting{.job = std::get<BatchJob>(read), .task = {}, .mark = {}, .weight = line.size()};
    const auto task = command_.taskOf(waiting.job);
    if (const auto *problem = std::get_if<QString>(&task)) {
        fail({.file = waiting.job.file, .out = waiting.job.out, .message = *problem}, {}, {});
        return;
    }
    waiting.task = std::get<JobCommand::Task>(task);
    waiting.task.work.timeLimit = limits_.time;
    waiting.task.work.memoryLimit = limits_.memory;
    JobResult result{.file = waiting.job.file, .out = waiting.task.out};
    const auto mark = markOfJob(waiting.job.file);
    if (!mark) {
        result.message = reasonOfSystem(errno);
        fail(result, waiting.task.signature, {});
        return;
    }
    waiting.mark = *mark;
    const JobLog::Known known = begin(waiting);
    const auto problem = known == JobLog::Known::Begun ? std::nullopt : objection(waiting);
    if (problem) {
        result.message = *problem;
        fail(result, waiting.task.signature, mark);
    } else if (known == JobLog::Known::No) {
        queue_.put(std::move(waiting));
    } else {
        result.status = JobResult::Status::Skipped;
        tell(result, waiting.task.signature, mark);
    }
}

/// What the log knows of a job; one of whose results any is gone is not done.
JobLog::Known BatchRun::begin(const WaitingJob &waiting) {
    using Known = JobLog::Known;
    const Known known = log_.isOpen() ? log_.begin(waiting.task.signature, waiting.mark) : Known::No;
    if (known == Known::Failed) giveUp(log_.whyNotKnown());
    const bool isGone = known == Known::Done && !waiting.task.resultsAreThere();
    return isGone || known == Known::Failed ? Known::No : known;
}

/// Why a job is not to be done.
std::optional<QString> BatchRun::objection(const WaitingJob &waiting) {
    const JobCommand::Task &task = waiting.task;
    if (auto clash = places_.add(QStringList{waiting.job.file} + task.read, task.pdf, task.written))
        return clash;
    // Of a file that a batch has written over which was killed then, nobody could tell whether it is done.
    if (log_.isOpen() && !task.pdf.isEmpty() && placeOf(task.pdf) == placeOf(waiting.job.file))
        return translated("with --log, no file is written over: whether that was done could not be told");
    if (log_.isOpen() && task.pdf.isEmpty() && command_.name() == QLatin1String("run"))
        return translated(
            "with --log, a script needs an \"out\": whether it has saved over the file could not be told");
    return std::nullopt;
}

void BatchRun::work() {
    ForkServer server(command_.name());
    while (const auto waiting = queue_.take()) {
        perform(*waiting, server);
        if (Interruption::requested()) queue_.abandon();
    }
}

void BatchRun::perform(const WaitingJob &waiting, ForkServer &server) {
    const JobResult result = resultOf(waiting, server.run(waiting.task.work), limits_.time);
    if (result.status == JobResult::Status::Done) {
        tell(result, waiting.task.signature, waiting.mark);
    } else {
        fail(result, waiting.task.signature, waiting.mark);
    }
}

void BatchRun::fail(const JobResult &result, const QByteArray &signature,
                    const std::optional<JobMark> &mark) {
    tell(result, signature, mark);
    const std::lock_guard lock(results_);
    ++failed_;
}

/// Writes a result, into the log first: what is told is known to the next start.
void BatchRun::tell(const JobResult &result, const QByteArray &signature,
                    const std::optional<JobMark> &mark) {
    std::optional<QString> problem;
    {
        const std::lock_guard lock(results_);
        ++told_;
        if (log_.isOpen() && result.status != JobResult::Status::Skipped)
            problem = log_.add(logLineOf(result, signature, mark));
        console_.write(lineOf(result, signature));
        if (const auto unwritten = console_.flush(); unwritten && !problem) problem = unwritten;
    }
    if (problem) giveUp(*problem);
}

/// Begins no job any more. Those that are being done come to their end.
void BatchRun::giveUp(const QString &problem) {
    {
        const std::lock_guard lock(results_);
        if (std::exchange(gaveUp_, true)) return;
    }
    console_.message(problem);
    queue_.abandon();
    // Whoever gives the jobs may wait for something before the next one.
    constexpr std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(stop_, &one, sizeof one);
}

bool BatchRun::sayHowItEnded() {
    if (const auto problem = log_.finish()) giveUp(*problem);
    if (failed_ > 0) console_.message(translated("%1 of %2 jobs failed").arg(failed_).arg(told_));
    console_.tellOutcome(told_ == 1 ? translated("1 job done") : translated("%1 jobs done").arg(told_));
    if (queue_.isAbandoned()) console_.message(translated("ended early: what has no line was not begun"));
    return failed_ == 0 && !gaveUp_ && !queue_.isAbandoned();
}

}  // namespace leafwright::cli
