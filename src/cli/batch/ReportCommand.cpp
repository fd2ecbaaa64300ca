#include "cli/Commands.h"
#include "cli/FileClash.h"
#include "cli/batch/BatchReport.h"
#include "files/FileReplacement.h"
#include "texts/Translated.h"

namespace leafwright::cli {

namespace {

const QString csvOption = QStringLiteral("csv");
const QString htmlOption = QStringLiteral("html");

constexpr Translated translated{"ReportCommand"};

/// A result that goes to a file or, as "-", to the console.
class Result {
public:
    /// @param path empty for none
    Result(const QString &path, Console &console)
        : console_(console), isPrinted_(path == QLatin1String("-")) {
        if (!path.isEmpty() && !isPrinted_) file_.emplace(path);
    }
    /// @return why it can't be written
    std::optional<QString> start() {
        return !file_ || file_->start() ? std::nullopt : std::optional(file_->message());
    }
    void write(const QByteArray &bytes) {
        if (isPrinted_) console_.write(bytes);
        if (file_) file_->write(bytes);
    }
    /// Puts it in its place. @return why it is not there
    std::optional<QString> finish() {
        if (!file_) return std::nullopt;
        const bool written = file_->commit() == FileReplacement::Outcome::Written;
        for (const QString &notice : file_->notices())
            console_.message(notice);
        return written ? std::nullopt : std::optional(file_->message());
    }

private:
    Console &console_;
    bool isPrinted_;
    std::optional<FileReplacement> file_;
};

std::optional<QString> writeReport(const QStringList &logs, const QString &html, const QString &csv,
                                   Console &console) {
    if (auto clash = clashOf({.read = logs, .written = {html, csv}})) return clash;
    Result page(html, console);
    Result table(csv, console);
    if (auto problem = page.start()) return problem;
    if (auto problem = table.start()) return problem;
    BatchReport report;
    ReportLogs reader(logs);
    qint64 jobs = 0;
    table.write(headOfTable());
    const auto problem = reader.read([&](const ReportedJob &job) {
        report.add(job);
        ++jobs;
        table.write(rowOf(job));
    });
    for (const QString &notice : reader.notices())
        console.message(notice);
    if (problem) return problem;
    page.write(pageOf(report).toUtf8());
    // Each is of use without the other.
    const auto failure = table.finish();
    const auto pageFailure = page.finish();
    if (failure && pageFailure) return *failure + QLatin1String("; ") + *pageFailure;
    if (failure || pageFailure) return failure ? failure : pageFailure;
    console.tellOutcome(jobs == 1 ? translated("1 job reported") : translated("%1 jobs reported").arg(jobs));
    return std::nullopt;
}

}  // namespace

CommandInfo ReportCommand::info() const {
    return {
        QStringLiteral("report"),
        translated("Tells what came of batches: a page of HTML, and CSV."),
        translated("Reads the logs of \"batch\", or what it has printed. A job counts once: as done where a "
                   "line says so, else by its last line. Without --html and --csv, the page is printed."),
        {{QStringLiteral("LOG..."), translated("A log, or several.")}},
        {{htmlOption, translated("Where the page goes, with all that it needs; \"-\" is standard output."),
          QStringLiteral("PAGE")},
         {csvOption, translated("Where a table goes that has a line a job; \"-\" is standard output."),
          QStringLiteral("TABLE")}}};
}

ExitCode ReportCommand::run(const QCommandLineParser &arguments, Console &console) const {
    const QString csv = arguments.value(csvOption);
    const QString html =
        arguments.isSet(htmlOption) || !csv.isEmpty() ? arguments.value(htmlOption) : QStringLiteral("-");
    const auto problem = writeReport(arguments.positionalArguments(), html, csv, console);
    if (!problem) return Done;
    console.message(*problem);
    return Failed;
}

}  // namespace leafwright::cli
