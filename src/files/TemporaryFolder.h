#pragma once

#include <QByteArray>
#include <QString>

namespace leafwright {

/// The system's folder for files that need not last: what TMPDIR says, or /tmp.
QByteArray systemTemporaryFolder();

/// A folder for files that need not last, in the system's folder of such files. Nobody else may look into it,
/// and it goes with its maker. What a killed program has left, the next that makes one removes: a folder in
/// use is locked, by a file "lock" in it.
class TemporaryFolder {
public:
    /// Makes the folder; whether that went well says isThere().
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    /// Removes the folders of this user whose makers were killed, as making one does.
    static void removeAbandoned();

    bool isThere() const { return lock_ >= 0; }
    /// Why it is not there, with the name of the folder where it was to be.
    const QString &errorString() const { return error_; }
    /// The path of a file in it; null if the folder is not there.
    QString filePath(const QString &name) const;

private:
    bool makeAt(const QByteArray &path);

    QByteArray path_;
    int lock_ = -1;
    QString error_;
};

}  // namespace leafwright
