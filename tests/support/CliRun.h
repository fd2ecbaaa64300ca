#pragma once

#include <QByteArray>
#include <QStringList>

namespace leafwright::test {

/// What running the command line in this process gave.
struct CliResult {
    int exitCode;
    QByteArray out;
    QByteArray err;
};

/// Runs leafwright-cli with these arguments (without the program's name).
CliResult runCli(const QStringList &arguments);

/// What running another program gave: qpdf, pdfinfo, ...
struct ProgramResult {
    int exitCode;
    QByteArray out;
    QByteArray err;
};
ProgramResult runProgram(const QString &program, const QStringList &arguments);

}  // namespace leafwright::test
