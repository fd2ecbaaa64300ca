#include "cli/Commands.h"
#include "cli/ContentsReport.h"
#include "cli/FileClash.h"
#include "cli/Interruption.h"
#include "cli/JsonWriter.h"
#include "cli/OpenFile.h"
#include "cli/OutlineOutput.h"
#include "cli/ProgressBar.h"
#include "contents/FindContents.h"
#include "contents/PDFContentsPages.h"
#include "document/outline/ContentsItems.h"
#include "document/outline/TextRecognition.h"
#include "files/FileReplacement.h"
#include "texts/Translated.h"

#include <QDir>
#include <QFileInfo>

namespace leafwright::cli {

namespace {

const QString maxDepthOption = QStringLiteral("max-depth");
const QString deeperOption = QStringLiteral("deeper");
const QString asPrintedOption = QStringLiteral("as-printed");
const QString textOnlyOption = QStringLiteral("text-only");
const QString ocrOption = QStringLiteral("ocr");
const QString ocrLanguageOption = QStringLiteral("ocr-language");
const QString keepOption = QStringLiteral("keep");
const QString reportOption = QStringLiteral("report");
const QString explainOption = QStringLiteral("explain");

constexpr Translated translated{"ContentsCommand"};

struct ContentsRequest {
    ContentsOptions options;
    bool ocr = false;
    QString ocrLanguage;
    bool keep = false;
    bool keepPages = false;
    bool explain = false;
    QString report;  ///< Empty for none; "-" for the results; a folder where there may be several files.
};

/// Where a file's report goes.
QString reportOf(const QString &file, const ContentsRequest &request, const OutlineOutput &output) {
    const bool isPrinted = request.report == QLatin1String("-");
    if (request.report.isEmpty() || isPrinted || !output.isFolder()) return request.report;
    return QDir(request.report).filePath(QFileInfo(file).completeBaseName() + QLatin1String(".json"));
}

/// What is printed of a file, and its report. All of it is written before the PDF, but for the report's name:
/// what can't be written keeps the PDF as it was.
class Report {
public:
    /// @param path empty for none; "-" for the results
    Report(QString path, Console &console) : path_(std::move(path)), console_(console) {}

    /// @return why it could not be written
    std::optional<QString> write(const FoundContents &found, const PDFDocument &pdf) {
        if (path_ == QLatin1String("-")) {
            JsonWriter json(console_);
            writeContentsReport(found, pdf, json);
        }
        if (auto problem = console_.flush()) return problem;
        if (path_.isEmpty() || path_ == QLatin1String("-")) return std::nullopt;
        file_.emplace(path_);
        if (!file_->start()) return file_->message();
        {
            leafwright::JsonWriter json([this](const QByteArray &bytes) { file_->write(bytes); });
            writeContentsReport(found, pdf, json);
        }
        // A stream may still refuse what a file has already taken.
        if (file_->isStream()) return finish();
        return file_->prepare() ? std::nullopt : std::optional(file_->message());
    }
    /// Puts it in its place. @return why it is not there
    std::optional<QString> finish() {
        if (!file_) return std::nullopt;
        const bool written = file_->commit() == FileReplacement::Outcome::Written;
        for (const QString &notice : file_->notices())
            console_.message(notice);
        auto problem = written ? std::nullopt : std::optional(file_->message());
        file_.reset();
        return problem;
    }

private:
    QString path_;
    Console &console_;
    std::optional<FileReplacement> file_;
};

/// A document that has text where another has page images; its file is gone with this.
struct Recognised {
    std::unique_ptr<RecognisedCopy> copy;
    std::unique_ptr<PDFDocument> pdf;
};

/// Recognises the text of a file, on a terminal with progress. @return the copy, or why there is none
std::variant<Recognised, QString> recognise(const QString &file, const PDFDocument &pdf,
                                            const ContentsRequest &request, bool alone, Console &console) {
    std::optional<Interruption> interruption(std::in_place);
    std::optional<ProgressBar> bar;
    if (alone) bar.emplace(console, pdf.pageCount());
    int shown = 0;
    const auto progress = [&](int pages) {
        for (; bar && shown < pages; ++shown)
            bar->advance(QFileInfo(file).fileName());
        return !Interruption::requested();
    };
    auto result = recogniseText(file, request.ocrLanguage, progress);
    interruption.reset();
    if (Interruption::requested()) return translated("%1: cancelled; nothing was written").arg(file);
    if (const auto *failure = std::get_if<RecognitionFailure>(&result))
        return translated("%1: %2").arg(file, failure->message);
    Recognised recognised{std::get<std::unique_ptr<RecognisedCopy>>(std::move(result)), nullptr};
    auto opened = PDFDocument::open(recognised.copy->path());
    if (const auto *error = std::get_if<PDFError>(&opened))
        return translated("%1: the copy with recognised text can't be read: %2").arg(file, error->message);
    recognised.pdf = std::get<std::unique_ptr<PDFDocument>>(std::move(opened));
    if (recognised.pdf->pageCount() != pdf.pageCount())
        return translated("%1: the copy with recognised text has other pages").arg(file);
    return recognised;
}

/// Finds the contents of a file that is open. @return the outline, or why there is none to be written
std::variant<FoundContents, QString> find(const QString &file, const PDFDocument &pdf,
                                          const ContentsRequest &request, bool alone, Console &console) {
    Recognised recognised;
    if (request.ocr && pdf.pageCount() > 0) {
        auto result = recognise(file, pdf, request, alone, console);
        if (const auto *failure = std::get_if<QString>(&result)) return *failure;
        recognised = std::get<Recognised>(std::move(result));
    }
    const PDFContentsPages pages =
        recognised.pdf ? PDFContentsPages(pdf, *recognised.pdf) : PDFContentsPages(pdf);
    const auto analysis = analyseContents(pages, request.options.textOnly);
    if (auto failure = readFailure(file, pdf)) return *failure;
    if (recognised.pdf)
        if (auto failure = readFailure(file, *recognised.pdf)) return *failure;
    if (request.explain) console.write(analysis->explanation(request.options));
    FoundContents found = analysis->choose(request.options);
    if (!found.hasText && request.ocr)
        return translated("%1: no text was recognised in the page images").arg(file);
    if (!found.hasText)
        return translated("%1: page images without text; run text recognition first").arg(file);
    if (found.lacksText() && !request.ocr) {
        console.message(translated("%1: %2 of %3 pages are without text; --ocr recognises that of images")
                            .arg(file)
                            .arg(found.pagesWithoutText)
                            .arg(found.pageCount));
    }
    return found;
}

/// Makes what is found in one file its outline. @return why that failed
std::optional<QString> contents(const QString &file, const ContentsRequest &request,
                                const OutlineOutput &output, Console &console) {
    const QString printed = request.explain ? QStringLiteral("-") : QString();
    if (auto clash = clashOf({.pdf = file,
                              .out = output.targetOf(file),
                              .written = {printed, reportOf(file, request, output)}}))
        return clash;
    OutlineDocument document;
    if (QString failure; !openForEditing(document, file, failure)) return failure;
    const PDFDocument &pdf = *document.pdfDoc();
    console.tellPages(pdf.pageCount());
    const auto result = find(file, pdf, request, output.isAlone(), console);
    if (const auto *failure = std::get_if<QString>(&result)) return *failure;
    const auto &found = std::get<FoundContents>(result);
    // What was found on a page leads there. Only entries that were there before go by their labels.
    const bool onlyFound = !request.keep && !found.entries.empty();
    document.setKeepsPages([&request, onlyFound] { return request.keepPages || onlyFound; });
    observeWriting(document, file, console);
    if (found.entries.empty())
        console.message(translated("%1: no headings were found; the outline stays as it was").arg(file));
    Report report(reportOf(file, request, output), console);
    if (auto failure = report.write(found, pdf)) return failure;
    const QString out = output.targetOf(file);
    if (auto failure = writeEntries(document, itemsOfContents(found, pdf), request.keep, out, console))
        return failure;
    const auto failure = report.finish();
    return failure ? std::optional(*failure + translated("; %1 was written").arg(out)) : std::nullopt;
}

/// Why the reports of several files can't all be written: names may differ by their extension alone.
std::optional<QString> clashOfReports(const ContentsRequest &request, const OutlineOutput &output) {
    QStringList reports;
    for (const QString &file : output.files())
        reports.append(reportOf(file, request, output));
    return clashOfResults(output.files(), reports);
}

/// The options of a process that does one file of a folder.
QStringList optionsOf(const QString &file, const ContentsRequest &request, const OutlineOutput &output) {
    if (request.report.isEmpty()) return {};
    return {QLatin1String("--") + reportOption + u'=' + reportOf(file, request, output)};
}

/// What the options ask for. @return what is wrong with them; absent when all is well
std::optional<QString> readRequest(const QCommandLineParser &arguments, const OutlineOutput &output,
                                   ContentsRequest &request) {
    bool isNumber = true;
    if (arguments.isSet(maxDepthOption))
        request.options.maxDepth = arguments.value(maxDepthOption).toInt(&isNumber);
    if (!isNumber || (arguments.isSet(maxDepthOption) && request.options.maxDepth < 1))
        return translated("--max-depth wants a number from 1");
    if (arguments.isSet(deeperOption) && arguments.isSet(asPrintedOption))
        return translated("--deeper and --as-printed exclude each other");
    if (arguments.isSet(deeperOption)) request.options.depth = ContentsDepth::Deeper;
    if (arguments.isSet(asPrintedOption)) request.options.depth = ContentsDepth::AsPrinted;
    request.options.textOnly = arguments.isSet(textOnlyOption);
    request.ocr = arguments.isSet(ocrOption) || arguments.isSet(ocrLanguageOption);
    request.ocrLanguage = arguments.value(ocrLanguageOption);
    request.keep = arguments.isSet(keepOption);
    request.keepPages = arguments.isSet(keepPagesOption().names().first());
    request.explain = arguments.isSet(explainOption);
    request.report = arguments.value(reportOption);
    const bool printsReport = request.report == QLatin1String("-");
    if (!output.isAlone() && (request.explain || printsReport))
        return translated("what is printed is of one file; with several, neither --explain nor --report -");
    if (request.explain && printsReport)
        return translated("--explain and --report - would be printed into each other");
    return output.problem();
}

QList<QCommandLineOption> options() {
    return OutlineOutput::options() +
           QList<QCommandLineOption>{
               {maxDepthOption, translated("The deepest level of entries (any)."), QStringLiteral("N")},
               {deeperOption, translated("Goes deeper than the printed contents, to every heading found.")},
               {asPrintedOption,
                translated("Goes no deeper than the printed contents, where there are any.")},
               {textOnlyOption,
                translated("Ignores links, named destinations, page labels and the structure of a tagged "
                           "PDF.")},
               {ocrOption,
                translated("Recognises the text of page images first, in a copy, by the program ocrmypdf.")},
               {ocrLanguageOption, translated("The languages to recognise, such as deu+eng; implies --ocr."),
                QStringLiteral("LANG")},
               {keepOption, translated("Adds the entries behind the existing outline.")},
               keepPagesOption(),
               {reportOption,
                translated("Tells of each entry where it comes from and how sure it is, as JSON; \"-\" is "
                           "standard output. With --out-dir, R is a folder, with a report a file."),
                QStringLiteral("R")},
               {explainOption, translated("Prints what was found at each stage.")}};
}

}  // namespace

CommandInfo ContentsCommand::info() const {
    return {
        QStringLiteral("contents"),
        translated("Reads a PDF as a reader does, and makes what it finds the outline."),
        translated(
            "What the author printed as contents is the outline, as far as there is any; else it is made of "
            "the headings, told by their look, numbers, links and names. It takes the place of the "
            "outline, unless --keep is given. With --out-dir, several files are done at once, on all cores, "
            "each in a process of its own; one that takes more than 60 seconds, or --timeout, is given up. "
            "With --ocr, which takes seconds a page, only --timeout limits the time."),
        {{QStringLiteral("FILE..."), translated("The PDF, or several with --out-dir.")}},
        options(),
        {},
        {explainOption}};
}

bool ContentsCommand::limitsTime(const QCommandLineParser &arguments) const {
    return OutlineOutput(arguments).isFolder();
}

ExitCode ContentsCommand::run(const QCommandLineParser &arguments, Console &console) const {
    const OutlineOutput output(arguments);
    ContentsRequest request;
    if (const auto problem = readRequest(arguments, output, request))
        return wrongUsage(*this, *problem, console);
    if (request.ocr && !canRecogniseText()) {
        console.message(translated("--ocr needs the program ocrmypdf; install the package of that name"));
        return Failed;
    }
    if (!output.makeFolder(console)) return Failed;
    const bool hasReports =
        output.isFolder() && !request.report.isEmpty() && request.report != QLatin1String("-");
    if (hasReports && !cli::makeFolder(request.report, console)) return Failed;
    if (const auto clash = hasReports ? clashOfReports(request, output) : std::nullopt) {
        console.message(*clash);
        return Failed;
    }
    OutlineOutput::Job job{[&](const QString &file) { return contents(file, request, output, console); },
                           [&](const QString &file) { return optionsOf(file, request, output); }};
    if (request.ocr) job.limit = std::chrono::seconds(0);
    return output.run(info(), arguments, job, console) ? Done : Failed;
}

}  // namespace leafwright::cli
