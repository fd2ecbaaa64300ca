#include "cli/FileClash.h"
#include "cli/JsonWriter.h"
#include "cli/OpenFile.h"
#include "cli/ProgramStart.h"
#include "cli/ScriptLibrary.h"
#include "document/MyDocument.h"
#include "files/FileName.h"
#include "files/FileReading.h"
#include "files/SystemError.h"
#include "platform/Settings.h"
#include "script/ActionList.h"
#include "script/ScriptFiles.h"
#include "script/ScriptPlayer.h"
#include "texts/Translated.h"

#include <QApplication>
#include <QCoreApplication>
#include <QFile>
#include <QSemaphore>
#include <QThreadPool>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"ScriptRun"};

bool printsReport(const ScriptRequest &request) {
    return request.report == QLatin1String("-");
}

/// @return the steps, or what is wrong with them
std::variant<std::vector<script::Step>, QString> readSteps(const QString &path) {
    const auto text = path == QLatin1String("-") ? readDescriptor(STDIN_FILENO) : readFile(path);
    if (const auto *reason = std::get_if<QString>(&text))
        return translated("the script can't be read: %1").arg(*reason);
    return script::parseSteps(std::get<QByteArray>(text));
}

/// Writes the records as they come. The report of a long script on a large outline would fill the memory.
class ReportFile {
public:
    /// Begins the report. @return why there can't be one
    std::optional<QString> open(const QString &path) {
        const int file =
            ::open(fileNameBytes(path).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
        if (file < 0) return problem(reasonOfSystem(errno));
        file_.open(file, QIODevice::ReadWrite, QFile::AutoCloseHandle);
        json_.emplace([this](const QByteArray &bytes) { file_.write(bytes); });
        json_->beginArray();
        return std::nullopt;
    }

    script::ScriptPlayer::Recorder recorder() {
        if (!json_) return nullptr;
        return [this](const script::StepRecord &record, MyDocument *document) {
            script::writeRecord(record, document, *json_);
        };
    }
    /// Ends the report. @return why it could not be written
    std::optional<QString> finish() {
        if (!json_) return std::nullopt;
        json_->endArray();
        json_.reset();
        if (file_.flush() && file_.error() == QFile::NoError) return std::nullopt;
        return problem(file_.errorString());
    }
    /// @return why it could not be printed
    std::optional<QString> print(Console &console) {
        file_.seek(0);
        constexpr qint64 blockSize = 1 << 20;
        while (!file_.atEnd())
            console.write(file_.read(blockSize));
        return console.flush();
    }

private:
    static QString problem(const QString &reason) {
        return translated("the report could not be written: %1").arg(reason);
    }

    QFile file_;
    std::optional<leafwright::JsonWriter> json_;
};

std::optional<QString> writeOutcome(const script::ScriptPlayer &player, const QString &out,
                                    script::ScriptFiles &files) {
    if (!player.document()) return translated("the script closed the document; there is no outline to write");
    const auto place = files.placeFor(out, script::ScriptFiles::Content::PDF);
    if (const auto *refusal = std::get_if<PDFError>(&place))
        return out + QLatin1String(": ") + refusal->message;
    auto error = player.document()->writeNewPDFOutline(std::get<QString>(place), MyDocument::saveFinalPDF);
    // What stands there is only on its way, and need not outlive anything.
    if (!error || error->kind == PDFError::Kind::NotDurable) return std::nullopt;
    return error->message.replace(std::get<QString>(place), out);
}

Result<QString> placeForReport(const ScriptRequest &request, script::ScriptFiles &files) {
    if (!printsReport(request)) return files.placeFor(request.report, script::ScriptFiles::Content::Report);
    files.keepWritten(placeToWrite(request.report));
    return files.temporaryDirectory() + QLatin1String("/.report");
}

/// What is told of a write names the file that will be there, not where it stands until then.
void tellOfWriting(OutlineDocument &document, const ScriptRequest &request, const script::ScriptFiles &files,
                   Console &console) {
    observeWriting(document, request.file, console);
    document.setLossesHandler([&files, &console](const QStringList &losses) {
        for (const QString &loss : losses)
            console.message(files.toldIn(loss));
    });
}

/// @return why the script did not come to its end, or can't tell of it
std::optional<QString> play(const std::vector<script::Step> &steps, const ScriptRequest &request,
                            script::ScriptFiles &files, ReportFile &report, Console &console) {
    if (!request.report.isEmpty()) {
        const auto place = placeForReport(request, files);
        if (const auto *refusal = std::get_if<PDFError>(&place))
            return request.report + QLatin1String(": ") + refusal->message;
        if (auto problem = report.open(std::get<QString>(place))) return problem;
    }
    {
        script::ScriptPlayer player(files, report.recorder());
        player.userDefaults().setValue(setting::keepPagesOfEntries, request.keepPages);
        if (const auto error = player.open(request.file)) return openFailure(request.file, *error);
        tellOfWriting(player.document()->outline(), request, files, console);
        if (const PDFDocument *pdf = player.document()->outline().pdfDoc())
            console.tellPages(pdf->pageCount());
        if (auto failure = player.play(steps)) return request.steps + QLatin1String(": ") + *failure;
        const MyDocument *document = player.document();
        if (document && document->pdfDoc())
            if (auto failure = readFailure(request.file, *document->pdfDoc())) return failure;
        if (!request.out.isEmpty())
            if (auto failure = writeOutcome(player, request.out, files)) return failure;
    }
    return report.finish();
}

/// Of the other jobs of a batch, none knows what a script saves by itself: nor does a second start, which
/// could not tell whether the job's own file is as it was where its "out" tells that the job is done.
void keepFilesOfOtherJobs(const ScriptRequest &request, script::ScriptFiles &files) {
    QStringList own{request.out.isEmpty() ? request.file : request.out};
    if (!request.report.isEmpty() && !printsReport(request)) own.append(request.report);
    files.replaceOnly(own,
                      translated("it is there already; in a batch, a script replaces only its \"out\" or, "
                                 "where it has none, its own file"));
}

/// @return why the script was not played, or what it wrote is not all in its place
std::optional<QString> playAndPublish(const std::vector<script::Step> &steps, const ScriptRequest &request,
                                      Console &console) {
    script::ScriptFiles files(absolutePath(QStringLiteral(".")));
    if (auto problem = files.problem()) return problem;
    files.keepRead(placeToRead(request.steps));
    if (workerOf() == WorkerOf::Batch) keepFilesOfOtherJobs(request, files);
    ReportFile report;
    auto failure = play(steps, request, files, report, console);
    // A folder that is missing is why what was to be written there could not be.
    if (auto problem = files.problem()) return problem;
    if (failure) return failure;
    QStringList notices;
    failure =
        files.publish(notices, [&] { return printsReport(request) ? report.print(console) : std::nullopt; });
    for (const QString &notice : notices)
        console.message(notice);
    return failure;
}

/// What was done, for people.
QString outcomeOf(const ScriptRequest &request, size_t steps) {
    const QString played =
        steps == 1 ? translated("1 step played") : translated("%1 steps played").arg(steps);
    QString text = request.file + QLatin1String(": ") + played;
    if (request.out.isEmpty()) return text;
    const bool isPoured = request.out == standardOutputPath();
    return text + translated("; %1 written").arg(isPoured ? translated("standard output") : request.out);
}

/// Qt draws in threads of its pool, and waits for ever for one that could not be started. So the pool gets
/// one right away, keeps it, and gets no other. Throws std::system_error where none can be started.
void startDrawingThread() {
    std::thread([] {}).join();  // Qt says it to nobody
    QThreadPool &pool = *QThreadPool::globalInstance();
    pool.setMaxThreadCount(1);
    pool.setExpiryTimeout(-1);
    QSemaphore started;
    pool.start([&started] { started.release(); });
    started.acquire();
}

class ScriptsInWindows final : public ScriptLibrary {
public:
    std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv) const override {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return std::make_unique<QApplication>(argc, argv);
    }

    void listActions(Console &console) const override {
        JsonWriter json(console);
        script::writeActionList(json);
    }

    ExitCode play(const ScriptRequest &request, Console &console) const override {
        const auto steps = readSteps(request.steps);
        if (const auto *problem = std::get_if<QString>(&steps)) {
            console.message(request.steps + QLatin1String(": ") + *problem);
            return Failed;
        }
        if (!qobject_cast<QApplication *>(QCoreApplication::instance())) {
            console.message(translated("scripts need a program with windows"));
            return Failed;
        }
        startDrawingThread();
        if (const auto failure =
                playAndPublish(std::get<std::vector<script::Step>>(steps), request, console)) {
            console.message(*failure);
            return Failed;
        }
        console.tellOutcome(outcomeOf(request, std::get<std::vector<script::Step>>(steps).size()));
        return Done;
    }
};

}  // namespace

extern "C" const ScriptLibrary *leafwrightScripts() {
    static const ScriptsInWindows scripts;
    return &scripts;
}

}  // namespace leafwright::cli
