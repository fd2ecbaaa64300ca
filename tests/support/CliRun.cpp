#include "support/CliRun.h"

#include "cli/CommandLine.h"

#include <QProcess>

#include <cstdio>

namespace leafwright::test {

namespace {

QByteArray contentOf(std::FILE *file) {
    std::rewind(file);
    QByteArray content;
    char buffer[4096];
    for (size_t count = 0; (count = std::fread(buffer, 1, sizeof buffer, file)) > 0;) {
        content.append(buffer, static_cast<qsizetype>(count));
    }
    return content;
}

}  // namespace

CliResult runCli(const QStringList &arguments) {
    std::FILE *out = std::tmpfile();
    std::FILE *err = std::tmpfile();
    CliResult result{};
    {
        cli::Console console(out, err);
        result.exitCode = cli::runCommandLine(arguments, console);
    }
    result.out = contentOf(out);
    result.err = contentOf(err);
    std::fclose(out);
    std::fclose(err);
    return result;
}

ProgramResult runProgram(const QString &program, const QStringList &arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(-1);
    return {process.error() == QProcess::FailedToStart ? -1 : process.exitCode(),
            process.readAllStandardOutput(), process.readAllStandardError()};
}

}  // namespace leafwright::test
