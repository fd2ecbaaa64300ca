#pragma once

#include "support/TempDir.h"

#include <QFile>

namespace leafwright::test {

/// A shell script that is found instead of a program of that name, for as long as it lives.
class FakeProgram {
public:
    /// @param script the lines behind "#!/bin/sh"; null for no program of any name at all
    FakeProgram(const QString &name, const QByteArray &script) : path_(qgetenv("PATH")) {
        if (script.isNull()) {
            qputenv("PATH", folder_.path(".").toUtf8());
            return;
        }
        QFile file(folder_.path(name));
        file.open(QIODevice::WriteOnly);
        file.write("#!/bin/sh\n" + script);
        file.close();
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("PATH", folder_.path(".").toUtf8() + ':' + path_);
    }
    ~FakeProgram() { qputenv("PATH", path_); }
    FakeProgram(const FakeProgram &) = delete;
    FakeProgram &operator=(const FakeProgram &) = delete;

    /// A file beside the script, which finds it as "$(dirname "$0")/NAME".
    QString path(const QString &name) const { return folder_.path(name); }

private:
    TempDir folder_;
    QByteArray path_;
};

}  // namespace leafwright::test
