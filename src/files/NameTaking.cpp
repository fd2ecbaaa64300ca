#include "files/NameTaking.h"

#include <QThread>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>

namespace leafwright {

namespace {

bool sameTime(const timespec &a, const timespec &b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

bool isAsSeen(const std::optional<struct stat> &now, const struct stat &seen) {
    return now && isSameFile(*now, seen) && now->st_size == seen.st_size &&
           sameTime(now->st_mtim, seen.st_mtim);
}

/// @param flags as of renameat2(2). @return whether that was done, else with errno set
bool rename(const NameChange &change, unsigned flags) {
    return ::renameat2(change.folder, change.from.constData(), change.folder, change.to.constData(), flags) ==
           0;
}

/// For file systems that know nothing better. Their reason is the one to tell.
NameTaken renamePlainly(const NameChange &change) {
    const int result =
        ::renameat(change.folder, change.from.constData(), change.folder, change.to.constData());
    return result == 0 ? NameTaken::Yes : NameTaken::Not;
}

NameTaken takeNewName(const NameChange &change) {
    if (rename(change, RENAME_NOREPLACE)) {
        if (isNameOf(change.folder, change.to, change.file)) return NameTaken::Yes;
        rename({change.folder, change.file, change.to, change.from, {}}, RENAME_NOREPLACE);
        return NameTaken::Unclear;
    }
    if (errno == EEXIST || statusAt(change.folder, change.to)) return NameTaken::ByAnother;
    return renamePlainly(change);
}

NameTaken takeBack(const NameChange &change, bool hadFile) {
    const bool isBack = rename(change, RENAME_EXCHANGE) && isNameOf(change.folder, change.from, change.file);
    return isBack && hadFile ? NameTaken::ByAnother : NameTaken::Unclear;
}

}  // namespace

FolderLock::FolderLock(int folder, std::chrono::milliseconds patience) : folder_(folder) {
    constexpr std::chrono::milliseconds pause{10};
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        isHeld_ = ::flock(folder_, LOCK_EX | LOCK_NB) == 0;
        isTaken_ = !isHeld_ && errno == EWOULDBLOCK;
        if (!isTaken_ || std::chrono::steady_clock::now() >= end) return;
        QThread::msleep(pause.count());
    }
}

FolderLock::~FolderLock() {
    if (isHeld_) ::flock(folder_, LOCK_UN);
}

NameTaken takeName(const NameChange &change) {
    if (!isNameOf(change.folder, change.from, change.file))
        return statusAt(change.folder, change.from) ? NameTaken::Unclear : NameTaken::Not;
    if (!change.old) return takeNewName(change);
    const auto there = statusAt(change.folder, change.to);
    if (!isAsSeen(there, *change.old)) return NameTaken::ByAnother;
    // A file of another device in the same folder lies in a lower layer, and would come out as a copy.
    struct stat own = {};
    const bool canExchange = ::fstat(change.file, &own) == 0 && own.st_dev == there->st_dev;
    if (!canExchange) return renamePlainly(change);
    if (!rename(change, RENAME_EXCHANGE)) {
        if (errno != ENOENT) return renamePlainly(change);
        return statusAt(change.folder, change.to) ? NameTaken::Not : NameTaken::ByAnother;
    }
    const bool hasFile = isNameOf(change.folder, change.to, change.file);
    if (hasFile && isAsSeen(statusAt(change.folder, change.from), *change.old)) return NameTaken::InExchange;
    return takeBack(change, hasFile);
}

bool isNameOf(int folder, const QByteArray &name, int file) {
    struct stat own = {};
    const auto there = statusAt(folder, name);
    return there && ::fstat(file, &own) == 0 && isSameFile(*there, own);
}

std::optional<struct stat> statusAt(int folder, const QByteArray &name) {
    struct stat status = {};
    if (::fstatat(folder, name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0) return std::nullopt;
    return status;
}

bool isSameFile(const struct stat &a, const struct stat &b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace leafwright
