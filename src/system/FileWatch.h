#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

namespace leafwright {

/// Watches over a file for what programs, this one too, do to it.
class FileWatch final : public QObject {
    Q_OBJECT

public:
    /// @param path need not be that of a file; one that comes there is told of
    explicit FileWatch(const QString &path);
    void setPath(const QString &path);

Q_SIGNALS:
    /// Something may have happened to the file, or the user comes back to this program, and the system need
    /// not tell what happens on other machines. Comes some times a second at most.
    void touched();

private:
    void watch();
    void tellSoon();

    QString path_;
    QFileSystemWatcher watcher_;
    QTimer soon_;
};

}  // namespace leafwright
