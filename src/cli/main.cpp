#include "cli/Command.h"
#include "cli/CommandLine.h"
#include "cli/Interruption.h"
#include "cli/ProgramStart.h"
#include "cli/ScriptLibrary.h"
#include "cli/batch/JobServer.h"
#include "files/FileName.h"
#include "files/FileWriting.h"
#include "files/StandardStreams.h"
#include "texts/Translation.h"

#include <QCoreApplication>
#include <QLocale>
#include <QLoggingCategory>

#include <cstring>
#include <memory>

namespace {

/// Whether it is for scripts.
bool playsScripts(int argc, char **argv) {
    return argc >= 2 && std::strcmp(argv[1], "run") == 0;
}

/// Scripts are played in windows. All other commands start quicker without. Nor do scripts depend on the
/// language: titles that the program gives are part of what they report and write.
std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv) {
    if (playsScripts(argc, argv)) {
        const auto scripts = leafwright::cli::scriptLibrary();
        // Where it is missing, the command says so.
        if (const auto *library = std::get_if<const leafwright::cli::ScriptLibrary *>(&scripts))
            return (*library)->makeApplication(argc, argv);
    }
    auto application = std::make_unique<QCoreApplication>(argc, argv);
    leafwright::installTranslators(*application, QLocale(), leafwright::translationsFolder());
    return application;
}

/// Does jobs in copies of this process. An application with windows has threads, of which a copy has none, so
/// each copy makes its own; that the library is loaded is what they share.
int serve(int &argc, char **argv) {
    namespace cli = leafwright::cli;
    std::unique_ptr<QCoreApplication> application;
    if (playsScripts(argc, argv)) {
        static_cast<void>(cli::scriptLibrary());
    } else {
        application = makeApplication(argc, argv);
    }
    return cli::serveJobs([&](const QStringList &arguments, cli::Console &console) {
        if (!application) application = makeApplication(argc, argv);
        return cli::runCommandLine(arguments, console);
    });
}

}  // namespace

int main(int argc, char *argv[]) {
    namespace cli = leafwright::cli;
    leafwright::reserveStandardStreams();
    cli::beginAsWorker();
    leafwright::letHopelessWritesFail();
    // Commands say themselves what failed. QT_LOGGING_RULES still turns the log on.
    QLoggingCategory::setFilterRules(QStringLiteral("leafwright.*.warning=false\ndefault.warning=false"));
    QCoreApplication::setApplicationVersion(QStringLiteral(LEAFWRIGHT_VERSION));
    if (cli::workerOf() == cli::WorkerOf::Pool) return serve(argc, argv);
    const auto application = makeApplication(argc, argv);
    cli::Console console;
    const int code = cli::runCommandLine(leafwright::argumentTexts(argc, argv), console);
    if (code != cli::Done) cli::Interruption::takeEffect();
    return code;
}
