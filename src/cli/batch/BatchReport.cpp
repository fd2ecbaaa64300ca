#include "cli/batch/BatchReport.h"

#include "files/FileName.h"
#include "texts/Translated.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"BatchReport"};

constexpr size_t mostShown = 20;
constexpr qsizetype mostReasons = 500;
constexpr qsizetype longestReason = 300;

/// Finds a path where it is no part of a word: a file may be named "a".
QRegularExpression asWords(const QString &path) {
    return QRegularExpression(
        QLatin1String("(?<!\\w)") + QRegularExpression::escape(path) + QLatin1String("(?!\\w)"),
        QRegularExpression::UseUnicodePropertiesOption);
}

/// A message without what is of this file only. Where there are several lines, the last one says why.
QString reasonOf(const ReportedJob &job) {
    QString text = job.message.section(u'\n', -1);
    if (!job.file.isEmpty() && text.startsWith(job.file + QLatin1String(": ")))
        text = text.mid(job.file.size() + 2);
    for (const QString &path : {job.file, job.out, QFileInfo(job.file).fileName()})
        if (!path.isEmpty()) text.replace(asWords(path), QStringLiteral("…"));
    return text.left(longestReason);
}

/// Keeps a job where it is among those with the most of something.
template <typename Value>
void keep(std::vector<ReportedJob> &most, const ReportedJob &job, Value value) {
    if (!value(job)) return;
    const auto isBefore = [&](const ReportedJob &a, const ReportedJob &b) { return *value(a) > *value(b); };
    most.insert(std::upper_bound(most.begin(), most.end(), job, isBefore), job);
    if (most.size() > mostShown) most.pop_back();
}

QByteArray cell(const QString &text) {
    QByteArray bytes = fileNameBytes(text);
    const bool isPlain =
        std::ranges::none_of(bytes, [](char c) { return c == '"' || c == ',' || c == '\n' || c == '\r'; });
    return isPlain ? bytes : '"' + bytes.replace('"', "\"\"") + '"';
}

QByteArray cell(std::optional<double> number) {
    return number ? QByteArray::number(*number, 'g', 15) : QByteArray();
}

}  // namespace

void BatchReport::add(const ReportedJob &job) {
    ++(job.isDone ? done_ : failed_);
    if (job.isDone) {
        entries_ += job.entries.value_or(0);
        pages_ += job.pages.value_or(0);
    } else {
        const QString text = reasonOf(job);
        const auto known = reasons_.find(text);
        if (known != reasons_.end()) {
            ++known->count;
        } else if (reasons_.size() < mostReasons) {
            reasons_.insert(text, {text, 1, job.file});
        } else {
            ++otherReasons_;
        }
    }
    if (job.seconds) seconds_.add(*job.seconds);
    if (job.megabytes) megabytes_.add(*job.megabytes);
    keep(slowest_, job, [](const ReportedJob &of) { return of.seconds; });
    keep(largest_, job, [](const ReportedJob &of) { return of.bytes; });
}

std::vector<BatchReport::Reason> BatchReport::reasons() const {
    std::vector<Reason> reasons(reasons_.begin(), reasons_.end());
    std::ranges::stable_sort(reasons, [](const Reason &a, const Reason &b) { return a.count > b.count; });
    if (otherReasons_ > 0) reasons.push_back({translated("other reasons"), otherReasons_, {}});
    return reasons;
}

QByteArray headOfTable() {
    return "file,out,status,seconds,pages,entries,peakMB,size,message\r\n";
}

QByteArray rowOf(const ReportedJob &job) {
    const QByteArrayList cells{cell(job.file),
                               cell(job.out),
                               job.isDone ? QByteArrayLiteral("done") : QByteArrayLiteral("failed"),
                               cell(job.seconds),
                               cell(job.pages),
                               cell(job.entries),
                               cell(job.megabytes),
                               cell(job.bytes),
                               cell(job.message)};
    return cells.join(',') + "\r\n";
}

}  // namespace leafwright::cli
