#include "cli/batch/BatchReport.h"
#include "texts/Translated.h"

#include <QLocale>

#include <algorithm>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"ReportPage"};

const char style[] =
    "body{font:15px/1.45 sans-serif;margin:2em auto;max-width:64em;padding:0 1em;color:#222;background:#fff}"
    "h1{font-size:1.6em}h2{font-size:1.2em;margin-top:2em}"
    "table{border-collapse:collapse;width:100%}"
    "th,td{text-align:left;padding:.25em .6em;border-bottom:1px solid #ddd;overflow-wrap:anywhere}"
    "td.n,th.n{text-align:right;white-space:nowrap}"
    ".bar{background:#3a7d44;height:.9em;min-width:1px}";

QString number(double value, int decimals = 0) {
    return QLocale().toString(value, 'f', decimals);
}

QString cell(const QString &text) {
    return QLatin1String("<td>") + text.toHtmlEscaped() + QLatin1String("</td>");
}

QString numberCell(const QString &text) {
    return QLatin1String("<td class=\"n\">") + text + QLatin1String("</td>");
}

QString numberCell(const std::optional<double> &value, int decimals) {
    return numberCell(value ? number(*value, decimals) : QString());
}

QString heading(const QString &text) {
    return QLatin1String("<h2>") + text.toHtmlEscaped() + QLatin1String("</h2>\n");
}

/// @param names of the columns; those that begin with "#" are of numbers
QString headRow(const QStringList &names) {
    QString row = QStringLiteral("<tr>");
    for (const QString &name : names) {
        const bool isNumber = name.startsWith(u'#');
        row += QLatin1String(isNumber ? "<th class=\"n\">" : "<th>") +
               (isNumber ? name.mid(1) : name).toHtmlEscaped() + QLatin1String("</th>");
    }
    return row + QLatin1String("</tr>\n");
}

QString table(const QStringList &names, const QString &rows) {
    return QLatin1String("<table>\n") + headRow(names) + rows + QLatin1String("</table>\n");
}

QString row(const QString &cells) {
    return QLatin1String("<tr>") + cells + QLatin1String("</tr>\n");
}

QString counts(const BatchReport &report) {
    const QString files = number(static_cast<double>(report.doneCount()));
    const QString failed = number(static_cast<double>(report.failedCount()));
    return table(
        {translated("What"), u'#' + translated("Number")},
        row(cell(translated("done")) + numberCell(files)) +
            row(cell(translated("failed")) + numberCell(failed)) +
            row(cell(translated("pages of what is done")) + numberCell(number(report.pageCount()))) +
            row(cell(translated("entries of what is done")) + numberCell(number(report.entryCount()))) +
            row(cell(translated("seconds of all workers")) + numberCell(number(report.seconds().sum(), 1))));
}

QString failures(const BatchReport &report) {
    QString rows;
    for (const BatchReport::Reason &reason : report.reasons())
        rows += row(numberCell(number(static_cast<double>(reason.count))) + cell(reason.text) +
                    cell(reason.example));
    if (rows.isEmpty()) return {};
    return heading(translated("Why jobs failed")) +
           table({u'#' + translated("Jobs"), translated("Reason"), translated("For example")}, rows);
}

QString distribution(const QString &title, const QString &unit, const Distribution &numbers) {
    if (numbers.count() == 0) return {};
    const auto bars = numbers.bars();
    qint64 most = 1;
    for (const Distribution::Bar &bar : bars)
        most = std::max(most, bar.count);
    QString rows;
    for (const Distribution::Bar &bar : bars) {
        const int decimals = bar.from < 1 ? 3 : 0;
        const QString width =
            QString::number(100.0 * static_cast<double>(bar.count) / static_cast<double>(most), 'f', 1);
        rows += row(numberCell(number(bar.from, decimals) + u'–' + number(2 * bar.from, decimals)) +
                    numberCell(number(static_cast<double>(bar.count))) +
                    QLatin1String("<td><div class=\"bar\" style=\"width:") + width +
                    QLatin1String("%\"></div></td>"));
    }
    const QString summary = translated("half take up to %1, nine of ten up to %2, the most is %3")
                                .arg(number(numbers.quantile(0.5), 3), number(numbers.quantile(0.9), 3),
                                     number(numbers.largest(), 3));
    return heading(title) + QLatin1String("<p>") + summary.toHtmlEscaped() + QLatin1String("</p>\n") +
           table({u'#' + unit, u'#' + translated("Jobs"), QString()}, rows);
}

QString jobs(const QString &title, const std::vector<ReportedJob> &list) {
    if (list.empty()) return {};
    constexpr double bytesInAMegabyte = 1 << 20;
    QString rows;
    for (const ReportedJob &job : list) {
        const auto size = job.bytes ? std::optional(*job.bytes / bytesInAMegabyte) : std::nullopt;
        rows += row(cell(job.file) + cell(job.isDone ? translated("done") : translated("failed")) +
                    numberCell(job.seconds, 3) + numberCell(size, 1) + numberCell(job.megabytes, 1) +
                    numberCell(job.pages, 0) + numberCell(job.entries, 0));
    }
    return heading(title) + table({translated("File"), translated("Status"), u'#' + translated("Seconds"),
                                   u'#' + translated("Size (MB)"), u'#' + translated("Memory (MB)"),
                                   u'#' + translated("Pages"), u'#' + translated("Entries")},
                                  rows);
}

}  // namespace

QString pageOf(const BatchReport &report) {
    const QString title = translated("What came of the batch").toHtmlEscaped();
    return QLatin1String("<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\">\n<title>") + title +
           QLatin1String("</title>\n<style>") + QLatin1String(style) +
           QLatin1String("</style></head>\n<body>\n<h1>") + title + QLatin1String("</h1>\n") +
           counts(report) + failures(report) +
           distribution(translated("Time"), translated("Seconds"), report.seconds()) +
           distribution(translated("Memory"), translated("MB"), report.megabytes()) +
           jobs(translated("The slowest"), report.slowest()) +
           jobs(translated("The largest files"), report.largest()) + QLatin1String("</body></html>\n");
}

}  // namespace leafwright::cli
