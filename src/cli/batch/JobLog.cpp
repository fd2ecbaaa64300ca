#include "cli/batch/JobLog.h"

#include "cli/batch/LineReader.h"
#include "cli/batch/LogLine.h"
#include "files/FileName.h"
#include "files/FileWriting.h"
#include "files/SystemError.h"
#include "texts/Translated.h"

#include <QCryptographicHash>
#include <QJsonDocument>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"JobLog"};

constexpr qsizetype longestLine = 4 << 20;

constexpr std::uint64_t begun = 0;

/// A number for what a file was like, which is not that of a job that was begun only.
std::uint64_t numberOf(const JobMark &mark) {
    const QByteArray text = QByteArray::number(mark.size) + ' ' + QByteArray::number(mark.modified);
    const QByteArray hash = QCryptographicHash::hash(text, QCryptographicHash::Sha1);
    std::uint64_t number = 0;
    std::memcpy(&number, hash.constData(), sizeof number);
    return number == begun ? 1 : number;
}

/// A number of nanoseconds is more than a double holds, so that it is looked for as it is spelled.
qint64 integerIn(const QByteArray &line, const char *member) {
    const QByteArray key = QByteArray(", \"") + member + "\": ";
    const qsizetype at = line.lastIndexOf(key);
    if (at < 0) return -1;
    const qsizetype start = at + key.size();
    qsizetype end = start;
    while (end < line.size() && line[end] >= '0' && line[end] <= '9')
        ++end;
    bool isNumber = false;
    const qint64 number = line.mid(start, end - start).toLongLong(&isNumber);
    return isNumber ? number : -1;
}

}  // namespace

JobLog::~JobLog() {
    if (file_ >= 0) ::close(file_);
}

QString JobLog::problem(const QString &reason) const {
    return translated("%1: the log can't be used: %2").arg(path_, reason);
}

std::optional<QString> JobLog::open(const QString &path) {
    path_ = path;
    constexpr unsigned mode = 0666;
    file_ =
        ::open(fileNameBytes(path).constData(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, mode);
    if (file_ < 0) return problem(reasonOfSystem(errno));
    auto reason = lock();
    if (!reason) reason = readLines();
    if (!reason) return std::nullopt;
    ::close(file_);
    file_ = -1;
    return problem(*reason);
}

std::optional<QString> JobLog::lock() const {
    struct stat status = {};
    if (::fstat(file_, &status) != 0) return reasonOfSystem(errno);
    if (!S_ISREG(status.st_mode)) return translated("it is no file");
    if (::flock(file_, LOCK_EX | LOCK_NB) == 0) return std::nullopt;
    return errno == EWOULDBLOCK ? translated("another batch is writing to it") : reasonOfSystem(errno);
}

std::optional<QString> JobLog::readLines() {
    using Got = LineReader::Got;
    LineReader reader(file_, -1, longestLine);
    QByteArray line;
    qint64 end = 0;
    for (;;) {
        const Got got = reader.next(line);
        if (got == Got::End) return std::nullopt;
        if (got == Got::Failed) return reasonOfSystem(errno);
        if (got == Got::Interrupted) return translated("cancelled");
        if (got == Got::TooLong)
            return translated("line %1 is too long for one of a log").arg(reader.number());
        if (reader.lastIsCutOff()) return cutOff(line, end);
        if (auto reason = readLine(line, reader.number())) return reason;
        hasOwnLine_ = hasOwnLine_ || logLineIn(line) == LogLine::Whole;
        end += line.size() + 1;
    }
}

/// Takes out a last line without its line feed. @param begin where it begins
std::optional<QString> JobLog::cutOff(const QByteArray &last, qint64 begin) const {
    const LogLine part = logLineIn(last);
    if (part == LogLine::No) return translated("its last line is not what a batch has written");
    // It may as well be a job, or a file of somebody's that begins like one.
    if (part == LogLine::Start && !hasOwnLine_)
        return translated(
            "its only line was cut off before it could be told from other files; if it is a log, remove it");
    return ::ftruncate(file_, begin) == 0 ? std::nullopt : std::optional(reasonOfSystem(errno));
}

std::optional<QString> JobLog::readLine(const QByteArray &line, qint64 number) {
    const QJsonObject object = QJsonDocument::fromJson(line).object();
    const QString status = object.value(QLatin1String("status")).toString();
    const QByteArray signature = object.value(QLatin1String("job")).toString().toLatin1();
    const JobMark mark{integerIn(line, "size"), integerIn(line, "modified")};
    const bool isDone = status == QLatin1String("done") && !signature.isEmpty() && mark.size >= 0;
    if (!isDone && status != QLatin1String("failed"))
        return translated("line %1 is not what a batch has written").arg(number);
    if (isDone && !jobs_.put(signature, numberOf(mark))) return jobs_.problem();
    return std::nullopt;
}

JobLog::Known JobLog::begin(const QByteArray &signature, const JobMark &mark) {
    const auto number = jobs_.find(signature);
    if (jobs_.problem()) return Known::Failed;
    if (number == numberOf(mark)) return Known::Done;
    if (number == begun) return Known::Begun;
    return jobs_.put(signature, begun) ? Known::No : Known::Failed;
}

std::optional<QString> JobLog::add(const QByteArray &line) {
    const off_t end = ::lseek(file_, 0, SEEK_END);
    const int error = end < 0 ? errno : writeWhole(file_, line.constData(), line.size());
    if (error == 0) return std::nullopt;
    // Half a line would be taken out by the next start; but who reads the log meanwhile would meet it.
    if (end >= 0 && ::ftruncate(file_, end) != 0) return problem(reasonOfSystem(errno));
    return problem(reasonOfSystem(error));
}

std::optional<QString> JobLog::finish() const {
    if (file_ < 0 || hasSynced(::fsync(file_))) return std::nullopt;
    return problem(reasonOfSystem(errno));
}

}  // namespace leafwright::cli
