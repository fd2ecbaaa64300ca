#include "cli/CommandLine.h"

#include <QCoreApplication>
#include <QLoggingCategory>

int main(int argc, char *argv[]) {
    const QCoreApplication application(argc, argv);
    // Commands say themselves what failed. QT_LOGGING_RULES still turns the log on.
    QLoggingCategory::setFilterRules(QStringLiteral("leafwright.*.warning=false"));
    leafwright::cli::Console console;
    return leafwright::cli::runCommandLine(QCoreApplication::arguments().sliced(1), console);
}
