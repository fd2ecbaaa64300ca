#include "app/Application.h"

#include "app/AppDelegate.h"
#include "app/SingleInstance.h"
#include "desktop/QtPlatform.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>

#include <cstdio>

namespace leafwright {

namespace {

QStringList absolutePaths(const QStringList &arguments) {
    QStringList paths;
    for (const QString &argument : arguments) {
        const QUrl url(argument);
        paths.append(QFileInfo(url.isLocalFile() ? url.toLocalFile() : argument).absoluteFilePath());
    }
    return paths;
}

QStringList filesToOpen(const QApplication &application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QCoreApplication::translate("Application", "Edits the outline (table of contents) of PDF files."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("PDF"),
                                 QCoreApplication::translate("Application", "The files to open."),
                                 QStringLiteral("[PDF...]"));
    parser.process(application);
    return absolutePaths(parser.positionalArguments());
}

}  // namespace

int applicationMain(int argc, char **argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("leafwright"));
    QApplication::setApplicationDisplayName(QStringLiteral("Leafwright"));
    QApplication::setApplicationVersion(QStringLiteral(LEAFWRIGHT_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("leafwright"));
    const QStringList files = filesToOpen(application);

    SingleInstance instance(SingleInstance::nameForUser());
    if (instance.handOver(files)) return 0;
    if (!instance.listen()) qWarning("leafwright: other starts will not find this one");

    QtPlatform platform;
    AppDelegate delegate(platform);
    QObject::connect(&instance, &SingleInstance::filesReceived, &delegate, [&](const QStringList &paths) {
        paths.isEmpty() ? delegate.comeToFront() : delegate.openFiles(paths);
    });
    QApplication::setQuitOnLastWindowClosed(false);
    QObject::connect(&delegate.documentController(), &DocumentController::lastDocumentClosed, &application,
                     &QApplication::quit, Qt::QueuedConnection);
    delegate.openFiles(files);
    delegate.applicationDidFinishLaunching();
    if (delegate.documentController().documents().empty()) {
        // A program without a window can't be reached, so there is nothing to wait for.
        std::fputs(
            qPrintable(QCoreApplication::translate(
                "Application", "leafwright: no document is open. Name a PDF file: leafwright FILE.pdf\n")),
            stderr);
        return files.isEmpty() ? 0 : 1;
    }
    return QApplication::exec();
}

}  // namespace leafwright
