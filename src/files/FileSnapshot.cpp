#include "files/FileSnapshot.h"

#include <QByteArray>
#include <QHashFunctions>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace leafwright {

namespace {

constexpr qint64 largestRead = 16 << 20;
constexpr qsizetype blockSize = 1 << 18;

/// Fills a block, however little comes at a time, so that a digest does not go by that. @return less than a
/// block at the end; nothing, with errno set, if it can't be read
std::optional<qsizetype> readBlock(int descriptor, qint64 offset, QByteArray &block) {
    qsizetype filled = 0;
    while (filled < block.size()) {
        const ssize_t count = ::pread(descriptor, block.data() + filled,
                                      static_cast<size_t>(block.size() - filled), offset + filled);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) break;
        filled += count;
    }
    return filled;
}

/// Tells contents apart that differ by accident. Nothing, with errno set, if it can't be read.
std::optional<quint64> digestOf(int descriptor) {
    QByteArray block(blockSize, Qt::Uninitialized);
    quint64 digest = 0;
    for (qint64 offset = 0;;) {
        const std::optional<qsizetype> count = readBlock(descriptor, offset, block);
        if (!count) return std::nullopt;
        digest = qHashBits(block.constData(), static_cast<size_t>(*count), digest);
        if (*count < block.size()) return digest;
        offset += *count;
    }
}

bool sameTime(const timespec &a, const timespec &b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

bool sameSizeAndTime(const struct stat &a, const struct stat &b) {
    return a.st_size == b.st_size && sameTime(a.st_mtim, b.st_mtim);
}

}  // namespace

std::shared_ptr<const FileSnapshot> FileSnapshot::of(int descriptor) {
    const int own = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
    if (own < 0) return nullptr;
    std::shared_ptr<FileSnapshot> snapshot(new FileSnapshot(own));
    if (snapshot->look()) return snapshot;
    const int error = errno;
    snapshot.reset();
    errno = error;
    return nullptr;
}

FileSnapshot::~FileSnapshot() {
    ::close(descriptor_);
}

bool FileSnapshot::look() {
    // The status first: what is written amid the reading differs from one of the two.
    if (::fstat(descriptor_, &status_) != 0) return false;
    if (status_.st_size <= largestRead) digest_ = digestOf(descriptor_);
    return true;
}

std::optional<bool> FileSnapshot::isAsItWas() const {
    struct stat now = {};
    if (::fstat(descriptor_, &now) != 0) return std::nullopt;
    if (!digest_) return sameSizeAndTime(now, status_);
    if (now.st_size != status_.st_size) return false;
    const std::optional<quint64> digest = digestOf(descriptor_);
    return digest ? std::optional(digest == digest_) : std::nullopt;
}

std::optional<FileMark> FileSnapshot::mark() const {
    auto mark = markOfFile(descriptor_);
    // Looked at afterwards, so that what was marked is what was seen at first.
    return isAsItWas() == true ? mark : std::nullopt;
}

std::optional<bool> FileSnapshot::isAlso(const struct stat &status) const {
    const std::optional<bool> isThere = standsAt(status);
    return isThere && *isThere ? isAsItWas() : isThere;
}

std::optional<bool> FileSnapshot::standsAt(const struct stat &status) const {
    if (status.st_dev != status_.st_dev || status.st_ino != status_.st_ino) return false;
    // Where file systems lie in layers, what is open may be the old file still under the number of the new.
    struct stat now = {};
    if (::fstat(descriptor_, &now) != 0) return std::nullopt;
    return sameSizeAndTime(now, status);
}

}  // namespace leafwright
