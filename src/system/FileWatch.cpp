#include "system/FileWatch.h"

#include <QFileInfo>
#include <QGuiApplication>

#include <chrono>

namespace leafwright {

namespace {

/// Most programs write a file in several steps.
constexpr std::chrono::milliseconds pause{300};

}  // namespace

FileWatch::FileWatch(const QString &path) : path_(path) {
    soon_.setSingleShot(true);
    soon_.setInterval(pause);
    connect(&soon_, &QTimer::timeout, this, [this] {
        watch();  // what came to the path anew is not watched yet
        Q_EMIT touched();
    });
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, &FileWatch::tellSoon);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &FileWatch::tellSoon);
    if (auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
        connect(application, &QGuiApplication::applicationStateChanged, this,
                [this](Qt::ApplicationState state) {
                    if (state == Qt::ApplicationActive) tellSoon();
                });
    }
    watch();
}

void FileWatch::setPath(const QString &path) {
    path_ = path;
    watch();
}

void FileWatch::tellSoon() {
    if (!soon_.isActive()) soon_.start();  // where it never ends, it is told all the same
}

void FileWatch::watch() {
    // The file tells of writing, the folder of files that come and go by its name.
    const QString file = QFileInfo(path_).canonicalFilePath();
    QStringList wanted{QFileInfo(path_).absolutePath()};
    if (!file.isEmpty()) wanted += {file, QFileInfo(file).absolutePath()};
    wanted.removeDuplicates();
    // A file that has taken another's place is not watched, though its path is listed: as long as somebody
    // has the old one open, nobody is told that it is gone.
    for (const QString &path : watcher_.files() + watcher_.directories())
        watcher_.removePath(path);
    for (const QString &path : wanted)
        if (QFileInfo::exists(path)) watcher_.addPath(path);
}

}  // namespace leafwright
