#include "files/TemporaryFolder.h"

#include "files/FileName.h"
#include "files/FileReading.h"
#include "files/SystemError.h"
#include "texts/Translated.h"

#include <QRandomGenerator>

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace leafwright {

namespace {

constexpr Translated translated{"TemporaryFolder"};

/// What the names of this user's folders begin with.
QByteArray prefix() {
    return "leafwright-run-" + QByteArray::number(::geteuid()) + '.';
}

QByteArray lockOf(const QByteArray &folder) {
    return folder + "/lock";
}

/// Removes what stands in a folder beside the lock. @return whether all of that is gone
bool removeContent(const QByteArray &folder) {
    namespace fs = std::filesystem;
    std::error_code error;
    std::vector<fs::path> content;
    for (fs::directory_iterator entry(folder.toStdString(), error);
         !error && entry != fs::directory_iterator(); entry.increment(error)) {
        if (entry->path() != lockOf(folder).toStdString()) content.push_back(entry->path());
    }
    bool isGone = !error;
    for (const fs::path &path : content) {
        fs::remove_all(path, error);
        isGone = isGone && !error;
    }
    return isGone;
}

/// The lock goes last: as long as there is something else, the next program finds whom it belonged to.
void removeWhole(const QByteArray &folder) {
    if (removeContent(folder)) ::unlink(lockOf(folder).constData());
    ::rmdir(folder.constData());
}

bool isOwnFolder(const QByteArray &path) {
    struct stat status = {};
    return ::lstat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid();
}

/// Removes a folder unless its maker lives. One without a lock is about to get it, if it is empty, or on its
/// way out; its maker copes with losing it.
void removeIfAbandoned(const QByteArray &path) {
    if (!isOwnFolder(path)) return;
    const int lock = ::open(lockOf(path).constData(), O_RDWR | O_NOFOLLOW | O_CLOEXEC);
    if (lock < 0) {
        ::rmdir(path.constData());
        return;
    }
    if (::flock(lock, LOCK_EX | LOCK_NB) == 0) removeWhole(path);
    ::close(lock);
}

void removeAbandonedFolders(const QByteArray &parent) {
    DIR *entries = ::opendir(parent.constData());
    if (!entries) return;
    const QByteArray start = prefix();
    while (const dirent *entry = ::readdir(entries))  // NOLINT(concurrency-mt-unsafe): the stream is our own
        if (qstrncmp(entry->d_name, start.constData(), static_cast<size_t>(start.size())) == 0)
            removeIfAbandoned(parent + '/' + entry->d_name);
    ::closedir(entries);
}

}  // namespace

QByteArray systemTemporaryFolder() {
    const QByteArray folder = qgetenv("TMPDIR");
    if (folder.isEmpty()) return QByteArrayLiteral("/tmp");
    // In a working folder that has been removed nothing can be made, which is told as of any other folder.
    const auto absolute = absolutePath(fileNameText(folder));
    return absolute ? fileNameBytes(*absolute) : folder;
}

void TemporaryFolder::removeAbandoned() {
    removeAbandonedFolders(systemTemporaryFolder());
}

TemporaryFolder::TemporaryFolder() {
    const QByteArray parent = systemTemporaryFolder();
    removeAbandonedFolders(parent);
    constexpr int attempts = 100;
    for (int i = 0; i < attempts && lock_ < 0; ++i) {
        const auto number = QRandomGenerator::global()->generate64();
        if (!makeAt(parent + '/' + prefix() + QByteArray::number(number, 36)) && errno != EEXIST) break;
    }
    if (lock_ >= 0) return;
    error_ = translated("no folder for temporary files can be made in %1: %2")
                 .arg(fileNameText(parent), reasonOfSystem(errno));
}

TemporaryFolder::~TemporaryFolder() {
    if (lock_ < 0) return;
    removeWhole(path_);
    ::close(lock_);
}

/// @return false with errno set, which is EEXIST where another name may do
bool TemporaryFolder::makeAt(const QByteArray &path) {
    if (::mkdir(path.constData(), S_IRWXU) != 0) return false;
    const int lock =
        ::open(lockOf(path).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    int error = lock < 0 ? errno : 0;
    // Another program that tidies up may just have taken the folder for abandoned.
    struct stat status = {};
    const bool isLocked = lock >= 0 && (::flock(lock, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK);
    const bool isOurs = isLocked && ::fstat(lock, &status) == 0 && status.st_nlink > 0;
    if (isOurs) {
        path_ = path;
        lock_ = lock;
        return true;
    }
    if (lock >= 0) {
        error = EEXIST;
        ::close(lock);
    } else if (error == ENOENT) {
        error = EEXIST;
    }
    removeWhole(path);
    errno = error;
    return false;
}

QString TemporaryFolder::filePath(const QString &name) const {
    return isThere() ? fileNameText(path_) + u'/' + name : QString();
}

}  // namespace leafwright
