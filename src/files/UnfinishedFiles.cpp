#include "files/UnfinishedFiles.h"

#include "files/NameTaking.h"
#include "files/WritingJournal.h"

#include <QMutex>
#include <QMutexLocker>
#include <QRandomGenerator>

#include <cerrno>
#include <chrono>
#include <climits>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <map>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace leafwright {

namespace {

constexpr std::string_view letters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr qsizetype randomLetters = 2;
constexpr qsizetype allLetters = 6;
constexpr std::chrono::minutes oldEnough{10};
constexpr int attempts = 100;

/// Six letters: the first two as given, the others made of those and of all that stands before.
QByteArray withCheck(const QByteArray &beginning) {
    quint64 hash = 14695981039346656037ULL;  // FNV-1a
    for (const char c : beginning)
        hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
    QByteArray result = beginning;
    for (qsizetype i = randomLetters; i < allLetters; ++i) {
        result += letters[hash % letters.size()];
        hash /= letters.size();
    }
    return result;
}

/// The name cut to what leaves room for a dot before it, and a dot and the letters behind it.
QByteArray shortened(const QByteArray &name) {
    constexpr qsizetype room = NAME_MAX - 2 - allLetters;
    if (name.size() <= room) return name;
    qsizetype end = room;
    constexpr unsigned char continues = 0x80;
    constexpr unsigned char mask = 0xC0;
    while (end > 0 && (static_cast<unsigned char>(name[end]) & mask) == continues)
        --end;
    return name.left(end);
}

QByteArray newName(const QByteArray &name) {
    QByteArray beginning = '.' + shortened(name) + '.';
    for (qsizetype i = 0; i < randomLetters; ++i)
        beginning += letters[QRandomGenerator::global()->bounded(static_cast<quint32>(letters.size()))];
    return withCheck(beginning);
}

bool isAbandoned(const struct stat &status) {
    const auto age = std::chrono::seconds(std::time(nullptr) - status.st_mtim.tv_sec);
    return S_ISREG(status.st_mode) && status.st_uid == ::geteuid() && age > oldEnough;
}

void removeIfAbandoned(int folder, const char *name) {
    struct stat status = {};
    if (::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0 || !isAbandoned(status)) return;
    // Whoever changes names just now may have to give this one back.
    const FolderLock lock(folder, std::chrono::milliseconds(0));
    if (lock.isTaken()) return;
    const int file = ::openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) return;
    if (::flock(file, LOCK_EX | LOCK_NB) == 0 && ::fstat(file, &status) == 0 && isAbandoned(status))
        ::unlinkat(folder, name, 0);
    ::close(file);
}

/// Whether it is time to look through a folder. A run over a million files must not do so a million times.
bool isDue(const QByteArray &path) {
    static QMutex mutex;
    static std::map<QByteArray, std::chrono::steady_clock::time_point> lookedAt;
    const auto now = std::chrono::steady_clock::now();
    const QMutexLocker lock(&mutex);
    constexpr size_t mostFolders = 4096;
    if (lookedAt.size() >= mostFolders && !lookedAt.contains(path)) lookedAt.clear();
    const auto [place, isFirst] = lookedAt.try_emplace(path, now);
    if (!isFirst && now - place->second < oldEnough) return false;
    place->second = now;
    return true;
}

}  // namespace

UnfinishedFile makeUnfinishedFile(int folder, const QByteArray &name, unsigned mode) {
    UnfinishedFile file;
    for (int i = 0; i < attempts; ++i) {
        file.name = newName(name);
        noteUnfinishedFile(folder, file.name);
        file.descriptor =
            ::openat(folder, file.name.constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
        if (file.descriptor >= 0 || errno != EEXIST) break;
    }
    // Where the file system knows no locks, only its age tells that it is abandoned.
    if (file.descriptor >= 0) ::flock(file.descriptor, LOCK_EX | LOCK_NB);
    return file;
}

UnfinishedFile linkAsUnfinished(int folder, const QByteArray &name) {
    UnfinishedFile file;
    // Locked before it has the name.
    file.descriptor = ::openat(folder, name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file.descriptor < 0) return file;
    ::flock(file.descriptor, LOCK_SH | LOCK_NB);
    for (int i = 0; i < attempts; ++i) {
        file.name = newName(name);
        noteUnfinishedFile(folder, file.name);
        if (::linkat(folder, name.constData(), folder, file.name.constData(), 0) == 0) return file;
        if (errno != EEXIST) break;
    }
    ::close(file.descriptor);
    return {};
}

bool isNameOfUnfinishedFile(const QByteArray &name) {
    constexpr qsizetype shortest = 1 + 1 + 1 + allLetters;
    if (name.size() < shortest || !name.startsWith('.') || name[name.size() - allLetters - 1] != '.')
        return false;
    return withCheck(name.chopped(allLetters - randomLetters)) == name;
}

void removeUnfinishedFile(const QByteArray &path) {
    struct stat status = {};
    if (!isNameOfUnfinishedFile(path.mid(path.lastIndexOf('/') + 1)) ||
        ::lstat(path.constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return;
    const int file = ::open(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    const bool isHeld = file >= 0 && ::flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (!isHeld) ::unlink(path.constData());
    if (file >= 0) ::close(file);
}

void removeAbandonedFiles(int folder, const QByteArray &path) {
    if (!isDue(path)) return;
    // Not a duplicate of the descriptor, which would share its position.
    const int own = ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR *entries = own < 0 ? nullptr : ::fdopendir(own);
    if (!entries) {
        if (own >= 0) ::close(own);
        return;
    }
    while (const dirent *entry = ::readdir(entries))  // NOLINT(concurrency-mt-unsafe): the stream is our own
        if (isNameOfUnfinishedFile(QByteArray::fromRawData(entry->d_name, qstrlen(entry->d_name))))
            removeIfAbandoned(folder, entry->d_name);
    ::closedir(entries);
}

}  // namespace leafwright
