#include "files/FileTarget.h"

#include "files/FileName.h"
#include "files/SystemError.h"
#include "texts/Translated.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <unistd.h>

namespace leafwright {

namespace {

using Found = std::variant<FileTarget, QString>;

constexpr int mostLinks = 40;  // as many as the system follows

constexpr Translated translated{"FileTarget"};

/// The number in "/dev/fd/3" and "/proc/self/fd/3"; "/dev/stdout" is a link to the latter. These lead to what
/// is open, which need not have a name.
std::optional<int> descriptorNamed(const QByteArray &path) {
    for (const char *folder : {"/dev/fd/", "/proc/self/fd/"}) {
        if (!path.startsWith(folder)) continue;
        bool isNumber = false;
        const int number = path.mid(qstrlen(folder)).toInt(&isNumber);
        if (isNumber && number >= 0) return number;
    }
    return std::nullopt;
}

/// Where the symbolic link at a path points to; null with errno set if that can't be read.
QByteArray targetOfLink(const QByteArray &path) {
    QByteArray link(PATH_MAX, Qt::Uninitialized);
    const ssize_t length = ::readlink(path.constData(), link.data(), static_cast<size_t>(link.size()));
    if (length < 0) return {};
    link.truncate(length);
    return link.startsWith('/') ? link : path.left(path.lastIndexOf('/') + 1) + link;
}

Found judged(const QByteArray &path, const struct stat &status) {
    if (S_ISREG(status.st_mode) || S_ISFIFO(status.st_mode)) return FileTarget{path, status};
    if (S_ISDIR(status.st_mode)) return translated("it is a folder");
    if (S_ISSOCK(status.st_mode)) return translated("it is a socket; only a file can be replaced");
    return translated("it is a device; only a file can be replaced");
}

}  // namespace

QByteArray FileTarget::folder() const {
    const qsizetype slash = path.lastIndexOf('/');
    if (slash < 0) return QByteArrayLiteral(".");
    return slash == 0 ? QByteArrayLiteral("/") : path.left(slash);
}

QByteArray FileTarget::name() const {
    return path.mid(path.lastIndexOf('/') + 1);
}

Found findTarget(const QString &path) {
    QByteArray current = fileNameBytes(path);
    for (int links = 0; links <= mostLinks; ++links) {
        if (const auto descriptor = descriptorNamed(current)) {
            // Those that the program has opened itself are not meant, and close when it starts another.
            const int flags = ::fcntl(*descriptor, F_GETFD);
            if (flags < 0 || (flags & FD_CLOEXEC) != 0) return reasonOfSystem(EBADF);
            return FileTarget{{}, {}, *descriptor};
        }
        struct stat status = {};
        if (::lstat(current.constData(), &status) != 0) {
            const bool isNew = errno == ENOENT && !current.isEmpty() && !current.endsWith('/');
            return isNew ? Found(FileTarget{current, {}}) : Found(reasonOfSystem(errno));
        }
        if (!S_ISLNK(status.st_mode)) return judged(current, status);
        current = targetOfLink(current);
        if (current.isNull()) return reasonOfSystem(errno);
    }
    return reasonOfSystem(ELOOP);
}

}  // namespace leafwright
