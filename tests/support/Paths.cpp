#include "support/Paths.h"

namespace leafwright::test {

namespace {

QString inFolder(const QString &folder, const QString &name) {
    return name.isEmpty() ? folder : folder + '/' + name;
}

}  // namespace

QString projectPath(const QString &name) {
    return inFolder(QStringLiteral(LEAFWRIGHT_SOURCE_DIR), name);
}

QString corpusPath(const QString &name) {
    return inFolder(QStringLiteral(LEAFWRIGHT_CORPUS), name);
}

QString commandLineProgram() {
    return QStringLiteral(LEAFWRIGHT_CLI);
}

QString desktopProgram() {
    return QStringLiteral(LEAFWRIGHT_PROGRAM);
}

QString faultLibrary() {
    return QStringLiteral(LEAFWRIGHT_FAULT_LIBRARY);
}

}  // namespace leafwright::test
