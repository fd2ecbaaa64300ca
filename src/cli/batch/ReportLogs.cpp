#include "cli/batch/ReportLogs.h"

#include "cli/batch/LineReader.h"
#include "files/FileName.h"
#include "files/FileReading.h"
#include "files/SystemError.h"
#include "texts/Translated.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cerrno>
#include <limits>
#include <unistd.h>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"ReportLogs"};

constexpr qsizetype longestLine = 128 << 20;  // of what was printed, a line of standard output has much
constexpr std::uint64_t doneBit = 1;

std::optional<double> numberIn(const QJsonObject &object, QLatin1String name) {
    const QJsonValue value = object.value(name);
    return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

}  // namespace

/// A line, and its number among those of all logs.
struct ReportLogs::Line {
    ReportedJob job;
    QByteArray name;  ///< By which two lines are of one job; empty where nothing tells.
    qint64 number = 0;
};

namespace {

/// @return false for what no batch has written
bool readLine(const QByteArray &text, QString &status, ReportedJob &job, QByteArray &name) {
    const QJsonObject object = QJsonDocument::fromJson(text).object();
    status = object.value(QLatin1String("status")).toString();
    if (status != QLatin1String("done") && status != QLatin1String("failed") &&
        status != QLatin1String("skipped"))
        return false;
    job.file = object.value(QLatin1String("file")).toString();
    job.out = object.value(QLatin1String("out")).toString();
    job.isDone = status == QLatin1String("done");
    job.seconds = numberIn(object, QLatin1String("seconds"));
    job.pages = numberIn(object, QLatin1String("pages"));
    job.entries = numberIn(object, QLatin1String("entries"));
    job.megabytes = numberIn(object, QLatin1String("peakMB"));
    job.bytes = numberIn(object, QLatin1String("size"));
    job.message = object.value(QLatin1String("message")).toString();
    name = object.value(QLatin1String("job")).toString().toLatin1();
    if (name.isEmpty() && !job.file.isEmpty()) name = fileNameBytes(job.file) + '\0' + fileNameBytes(job.out);
    return true;
}

}  // namespace

std::optional<QString> ReportLogs::read(const std::function<void(const ReportedJob &job)> &visit) {
    auto problem = eachLine([this](const Line &line) -> std::optional<QString> {
        const auto counted = line.name.isEmpty() ? std::nullopt : counted_.find(line.name);
        const bool isOutdone = counted && (*counted & doneBit) != 0;
        const std::uint64_t number = 2 * static_cast<std::uint64_t>(line.number) + (line.job.isDone ? 1 : 0);
        if (line.name.isEmpty() || isOutdone || counted_.put(line.name, number)) return std::nullopt;
        return counted_.problem();
    });
    if (problem) return problem;
    problem = eachLine([&](const Line &line) -> std::optional<QString> {
        const auto counted = line.name.isEmpty() ? std::nullopt : counted_.find(line.name);
        if (line.name.isEmpty() || (counted && *counted / 2 == static_cast<std::uint64_t>(line.number)))
            visit(line.job);
        return std::nullopt;
    });
    return problem ? problem : counted_.problem();
}

std::optional<QString> ReportLogs::eachLine(const Visit &visit) {
    ends_.resize(static_cast<size_t>(paths_.size()), std::numeric_limits<qint64>::max());
    qint64 number = 0;
    size_t i = 0;
    for (const QString &path : paths_)
        if (auto problem = linesOf(path, ends_[i++], number, visit))
            return path + QLatin1String(": ") + *problem;
    return std::nullopt;
}

/// @param end how many lines to read at most; gets how many there are

std::optional<QString> ReportLogs::linesOf(const QString &path, qint64 &end, qint64 &number,
                                           const Visit &visit) {
    using Got = LineReader::Got;
    // It is read twice, which a pipe can't be.
    const int file = openRegularFile(path);
    if (file < 0) return translated("the log can't be read: %1").arg(reasonOfSystem(errno));
    LineReader reader(file, -1, longestLine);
    std::optional<QString> problem;
    QByteArray text;
    Got got = Got::Line;
    qint64 whole = 0;
    while (!problem && whole < end && (got = reader.next(text)) == Got::Line) {
        if (reader.lastIsCutOff()) {
            notices_.append(translated("%1: the last line was cut off; it is left out").arg(path));
            continue;
        }
        ++whole;
        Line line;
        QString status;
        if (!readLine(text, status, line.job, line.name)) {
            problem = translated("line %1 is not what a batch has written").arg(reader.number());
        } else if (status != QLatin1String("skipped")) {
            line.number = ++number;
            problem = visit(line);
        }
    }
    if (got == Got::Failed) problem = translated("the log can't be read: %1").arg(reasonOfSystem(errno));
    if (got == Got::TooLong) problem = translated("line %1 is too long").arg(reader.number());
    if (got == Got::Interrupted) problem = translated("cancelled");
    ::close(file);
    end = whole;
    return problem;
}

}  // namespace leafwright::cli
