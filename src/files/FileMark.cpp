#include "files/FileMark.h"

#include "files/FileReading.h"

#include <QCryptographicHash>

#include <sys/stat.h>
#include <unistd.h>
#include <variant>

namespace leafwright {

namespace {

constexpr qint64 largestRead = 16 << 20;

std::optional<FileMark> markOf(int descriptor) {
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0) return std::nullopt;
    constexpr qint64 nanosecondsInASecond = 1'000'000'000;
    FileMark mark{status.st_size, status.st_mtim.tv_sec * nanosecondsInASecond + status.st_mtim.tv_nsec, {}};
    if (mark.size > largestRead) return mark;
    const auto content = readDescriptor(descriptor);
    const auto *bytes = std::get_if<QByteArray>(&content);
    if (!bytes) return std::nullopt;
    mark.hash = QCryptographicHash::hash(*bytes, QCryptographicHash::Sha1);
    return mark;
}

}  // namespace

bool FileMark::isOfSameContentAs(const FileMark &other) const {
    if (size != other.size) return false;
    return hash.isEmpty() || other.hash.isEmpty() ? modified == other.modified : hash == other.hash;
}

std::optional<FileMark> markOfFile(const QString &path) {
    const int descriptor = openRegularFile(path);
    if (descriptor < 0) return std::nullopt;
    auto mark = markOf(descriptor);
    ::close(descriptor);
    return mark;
}

}  // namespace leafwright
