#include "cli/Command.h"
#include "cli/CommandLine.h"
#include "cli/Interruption.h"
#include "cli/ScriptLibrary.h"
#include "cli/WorkerProcess.h"
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

/// Scripts are played in windows. All other commands start quicker without. Nor do scripts depend on the
/// language: titles that the program gives are part of what they report and write.
std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv) {
    if (argc >= 2 && std::strcmp(argv[1], "run") == 0) {
        const auto scripts = leafwright::cli::scriptLibrary();
        // Where it is missing, the command says so.
        if (const auto *library = std::get_if<const leafwright::cli::ScriptLibrary *>(&scripts))
            return (*library)->makeApplication(argc, argv);
    }
    auto application = std::make_unique<QCoreApplication>(argc, argv);
    leafwright::installTranslators(*application, QLocale(), leafwright::translationsFolder());
    return application;
}

}  // namespace

int main(int argc, char *argv[]) {
    namespace cli = leafwright::cli;
    leafwright::reserveStandardStreams();
    cli::beginAsWorker();
    leafwright::letHopelessWritesFail();
    // Commands say themselves what failed. QT_LOGGING_RULES still turns the log on.
    QLoggingCategory::setFilterRules(QStringLiteral("leafwright.*.warning=false\ndefault.warning=false"));
    const auto application = makeApplication(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(LEAFWRIGHT_VERSION));
    cli::Console console;
    const int code = cli::runCommandLine(leafwright::argumentTexts(argc, argv), console);
    if (code != cli::Done) cli::Interruption::takeEffect();
    return code;
}
