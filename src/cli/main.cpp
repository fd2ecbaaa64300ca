#include "cli/CommandLine.h"

#include <QCoreApplication>

int main(int argc, char *argv[]) {
    const QCoreApplication application(argc, argv);
    leafwright::cli::Console console;
    return leafwright::cli::runCommandLine(QCoreApplication::arguments().sliced(1), console);
}
