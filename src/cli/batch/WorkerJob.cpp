#include "cli/batch/WorkerJob.h"

#include "files/FileName.h"

#include <QByteArrayList>
#include <QDataStream>

namespace leafwright::cli {

namespace {

// Names of files that are no UTF-8 have lone surrogates as texts; as bytes they come through.
QByteArrayList bytesOf(const QStringList &texts) {
    QByteArrayList list;
    for (const QString &text : texts)
        list.append(fileNameBytes(text));
    return list;
}

QStringList textsOf(const QByteArrayList &list) {
    QStringList texts;
    for (const QByteArray &bytes : list)
        texts.append(fileNameText(bytes));
    return texts;
}

constexpr qint64 unknown = -1;

std::optional<qint64> known(qint64 number) {
    return number == unknown ? std::nullopt : std::optional(number);
}

bool isWhole(const QDataStream &stream) {
    return stream.status() == QDataStream::Ok && stream.atEnd();
}

}  // namespace

QByteArray encoded(const WorkerJob &job) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << bytesOf(job.arguments) << fileNameBytes(job.printTo) << fileNameBytes(job.out)
           << qint64{job.timeLimit.count()} << job.memoryLimit;
    return bytes;
}

QByteArray encoded(const WorkerReport &report) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << qint32(report.end.how) << qint32(report.end.code) << bytesOf(report.end.written)
           << report.seconds << report.peakBytes << report.facts.pages.value_or(unknown)
           << report.facts.entries.value_or(unknown) << report.said << report.printed
           << report.printedTooMuch;
    return bytes;
}

std::optional<WorkerJob> decodedJob(const QByteArray &bytes) {
    QDataStream stream(bytes);
    WorkerJob job;
    QByteArrayList arguments;
    QByteArray printTo;
    QByteArray out;
    qint64 seconds = 0;
    stream >> arguments >> printTo >> out >> seconds >> job.memoryLimit;
    if (!isWhole(stream)) return std::nullopt;
    job.arguments = textsOf(arguments);
    job.printTo = fileNameText(printTo);
    job.out = fileNameText(out);
    job.timeLimit = std::chrono::seconds(seconds);
    return job;
}

std::optional<WorkerReport> decodedReport(const QByteArray &bytes) {
    QDataStream stream(bytes);
    WorkerReport report;
    qint32 how = 0;
    qint32 code = 0;
    QByteArrayList written;
    qint64 pages = unknown;
    qint64 entries = unknown;
    stream >> how >> code >> written >> report.seconds >> report.peakBytes >> pages >> entries >>
        report.said >> report.printed >> report.printedTooMuch;
    if (!isWhole(stream)) return std::nullopt;
    report.end = {static_cast<WorkerEnd::How>(how), code, textsOf(written)};
    report.facts = {known(pages), known(entries)};
    return report;
}

}  // namespace leafwright::cli
