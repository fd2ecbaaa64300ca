#include "app/Application.h"

#include "app/AppDelegate.h"
#include "app/AtExit.h"
#include "app/DesktopApplication.h"
#include "app/EndingSignals.h"
#include "app/QtPlatform.h"
#include "app/Requests.h"
#include "app/SingleInstance.h"
#include "document/Recovery.h"
#include "document/ViewMemory.h"
#include "files/FileName.h"
#include "files/FileReading.h"
#include "files/FileWriting.h"
#include "files/StandardStreams.h"
#include "texts/Translated.h"
#include "texts/Translation.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QLocale>
#include <QTimer>

#include <cstdio>

static void makeResourcesKnown() {
    Q_INIT_RESOURCE(app);
}

namespace leafwright {

namespace {

constexpr Translated translated{"Application"};

struct Start {
    QStringList files;     ///< Absolute paths: another start may be the one that opens them.
    QString problem;       ///< Why they can't be told by such paths; null when all is well.
    bool choose = false;   ///< Ask for a file if nothing is to be shown.
    bool service = false;  ///< Started by the message bus, which says in a moment what for.
};

Start parseArguments(const QStringList &arguments) {
    const QCommandLineOption choose(QStringLiteral("choose"),
                                    translated("Asks for a file if there is none to show."));
    const QCommandLineOption service(QStringLiteral("service"),
                                     translated("Waits to be told over D-Bus what to open."));
    QCommandLineParser parser;
    parser.setApplicationDescription(translated("Edits the outline (table of contents) of PDF files."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({choose, service});
    parser.addPositionalArgument(QStringLiteral("PDF"), translated("The files to open."),
                                 QStringLiteral("[PDF...]"));
    // The first is the program's name.
    parser.process(QStringList{QString()} + arguments);
    Start start;
    start.choose = parser.isSet(choose);
    start.service = parser.isSet(service);
    for (const QString &argument : parser.positionalArguments()) {
        const QUrl url(argument);
        const auto path = absolutePath(url.isLocalFile() ? pathOfFileUrl(url) : argument);
        if (path) start.files.append(*path);
        if (!path) start.problem = argument + QLatin1String(": ") + noWorkingFolder();
    }
    return start;
}

void setUp() {
    QApplication::setApplicationName(QStringLiteral("leafwright"));
    QApplication::setApplicationDisplayName(QStringLiteral("Leafwright"));
    QApplication::setApplicationVersion(QStringLiteral(LEAFWRIGHT_VERSION));
    QApplication::setDesktopFileName(DesktopApplication::name());
    makeResourcesKnown();
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 128, 256})
        icon.addFile(QStringLiteral(":/icons/leafwright-%1.png").arg(size));
    QApplication::setWindowIcon(icon);
}

}  // namespace

int applicationMain(int argc, char **argv) {
    reserveStandardStreams();
    letHopelessWritesFail();
    QApplication application(argc, argv);
    installTranslators(application, QLocale(), translationsFolder());
    setUp();
    const Start start = parseArguments(argumentTexts(argc, argv));
    if (!start.problem.isNull()) {
        std::fputs(qPrintable(QLatin1String("leafwright: ") + start.problem + u'\n'), stderr);
        return 1;
    }

    // The message bus settles which of two starts is the first; the socket serves where there is none.
    DesktopApplication desktop(QDBusConnection::sessionBus());
    SingleInstance instance(SingleInstance::nameForUser());
    if (!desktop.listen() && desktop.handOver(start.files)) return 0;
    if (!start.service && instance.handOver(start.files)) return 0;
    // The socket may belong to a program without a bus; whoever starts a service has one.
    if (!start.service && !instance.listen()) qWarning("leafwright: other starts will not find this one");

    QtPlatform platform;
    AppDelegate delegate(platform);
    delegate.setRecoveryFolder(Recovery::standardFolder());
    delegate.setViewFolder(ViewMemory::standardFolder());
    const auto keepUnsavedChanges = [&delegate] { delegate.keepUnsavedChanges(); };
    const EndingSignals endingSignals(keepUnsavedChanges);
    const AtExit atExit([&delegate] { delegate.keepEnteredChanges(); });
    // The end of the desktop's session, which asks where it closes the windows, and else ends the program.
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &delegate, keepUnsavedChanges);
    Requests requests(delegate);
    QObject::connect(&instance, &SingleInstance::filesReceived, &requests, &Requests::open);
    QObject::connect(&desktop, &DesktopApplication::filesReceived, &requests, &Requests::open);
    QObject::connect(&desktop, &DesktopApplication::activated, &requests, [&] { requests.open({}); });
    QObject::connect(&requests, &Requests::leftWithoutWindow, &application, &QApplication::quit);
    QApplication::setQuitOnLastWindowClosed(false);
    QObject::connect(&delegate.documentController(), &DocumentController::lastDocumentClosed, &application,
                     &QApplication::quit, Qt::QueuedConnection);
    // The guide comes first, since what was asked for belongs in front of it.
    delegate.applicationDidFinishLaunching();
    if (!start.files.isEmpty()) requests.open(start.files);
    if (start.choose) requests.open({});
    if (start.service) {
        constexpr int longestWait = 10000;  // milliseconds
        QTimer::singleShot(longestWait, &requests, &Requests::checkForWindow);
    } else if (!requests.hasDocument()) {
        std::fputs(
            qPrintable(translated("leafwright: no document is open. Name a PDF file: leafwright FILE.pdf\n")),
            stderr);
        return start.files.isEmpty() ? 0 : 1;
    }
    return QApplication::exec();
}

}  // namespace leafwright
