#pragma once

#include <QTemporaryDir>

namespace leafwright::test {

/// A folder for one test, gone with it.
class TempDir {
public:
    QString path(const QString &name) const { return dir_.filePath(name); }

private:
    QTemporaryDir dir_;
};

}  // namespace leafwright::test
