#include "files/FileMark.h"

#include "files/FileReading.h"

#include <QCryptographicHash>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace leafwright {

namespace {

constexpr qint64 largestRead = 16 << 20;
constexpr qsizetype blockSize = 1 << 18;

/// Reads from the start, and leaves where the descriptor stands to others who have it. Empty if it can't be
/// read.
QByteArray hashOf(int descriptor) {
    QByteArray block(blockSize, Qt::Uninitialized);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (qint64 offset = 0;;) {
        const ssize_t count = ::pread(descriptor, block.data(), blockSize, offset);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return {};
        if (count == 0) return hash.result();
        hash.addData(QByteArrayView(block.constData(), count));
        offset += count;
    }
}

}  // namespace

std::optional<FileMark> markOfFile(int descriptor) {
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0) return std::nullopt;
    constexpr qint64 nanosecondsInASecond = 1'000'000'000;
    FileMark mark{status.st_size, status.st_mtim.tv_sec * nanosecondsInASecond + status.st_mtim.tv_nsec, {}};
    if (mark.size > largestRead) return mark;
    mark.hash = hashOf(descriptor);
    return mark.hash.isEmpty() ? std::nullopt : std::optional(mark);
}

bool FileMark::isOfSameContentAs(const FileMark &other) const {
    if (size != other.size) return false;
    return hash.isEmpty() || other.hash.isEmpty() ? modified == other.modified : hash == other.hash;
}

std::optional<FileMark> markOfFile(const QString &path) {
    const int descriptor = openRegularFile(path);
    if (descriptor < 0) return std::nullopt;
    auto mark = markOfFile(descriptor);
    ::close(descriptor);
    return mark;
}

}  // namespace leafwright
