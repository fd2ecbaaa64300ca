#pragma once

#include <QString>

namespace leafwright::test {

// Where things are: known to one source file, so that all others compile to the same objects in any checkout.

/// The path of something in the project's folder; the folder itself for an empty name.
QString projectPath(const QString &name = {});

/// The path of something in the folder of real files to try the program on; the folder itself for an empty
/// name.
QString corpusPath(const QString &name = {});

/// The program `leafwright-cli` that was built with the tests.
QString commandLineProgram();

/// The program `leafwright` that was built with the tests.
QString desktopProgram();

/// The library that lets system calls fail; built with the tests, but not for the sanitizers.
QString faultLibrary();

}  // namespace leafwright::test
