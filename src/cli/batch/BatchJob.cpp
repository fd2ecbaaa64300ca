#include "cli/batch/BatchJob.h"

#include "files/FileName.h"
#include "texts/Translated.h"

#include <QJsonDocument>

#include <sys/stat.h>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"BatchJob"};

/// A path of the object, which it has no more then. @return what is wrong with it
std::optional<QString> takePath(QJsonObject &object, const QString &name, QString &path) {
    const QJsonValue value = object.take(name);
    if (value.isUndefined() || value.isNull()) return std::nullopt;
    path = value.toString();
    if (!value.isString() || path.isEmpty()) return translated("\"%1\" wants a path").arg(name);
    if (path.contains(QChar::Null)) return translated("\"%1\": no path has a null character").arg(name);
    return std::nullopt;
}

std::variant<BatchJob, QString> jobOf(QJsonObject object) {
    BatchJob job;
    if (auto problem = takePath(object, QStringLiteral("file"), job.file)) return *problem;
    if (auto problem = takePath(object, QStringLiteral("out"), job.out)) return *problem;
    if (job.file.isEmpty()) return translated("\"file\" is missing");
    job.options = std::move(object);
    return job;
}

}  // namespace

std::variant<BatchJob, QString> readJob(const QByteArray &line) {
    if (!line.trimmed().startsWith('{')) {
        if (line.contains('\0')) return translated("no path has a null character");
        return BatchJob{fileNameText(line)};
    }
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(line, &error);
    if (document.isObject()) return jobOf(document.object());
    return translated("this is no JSON: %1").arg(error.errorString());
}

std::optional<JobMark> markOfJob(const QString &file) {
    struct stat status = {};
    if (::stat(fileNameBytes(file).constData(), &status) != 0) return std::nullopt;
    constexpr qint64 nanosecondsInASecond = 1'000'000'000;
    return JobMark{status.st_size, status.st_mtim.tv_sec * nanosecondsInASecond + status.st_mtim.tv_nsec};
}

}  // namespace leafwright::cli
