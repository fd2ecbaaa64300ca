#include "files/StreamPouring.h"

#include "files/FileWriting.h"

#include <QThread>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

namespace leafwright {

namespace {

/// Opens a named pipe for writing. That takes a reader, which may be about to come.
int openPipe(const QByteArray &path) {
    constexpr int attempts = 100;
    constexpr unsigned long pause = 100;  // milliseconds
    for (int i = 0;; ++i) {
        const int pipe = ::open(path.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        if (pipe >= 0) ::fcntl(pipe, F_SETFL, O_WRONLY);
        if (pipe >= 0 || errno != ENXIO || i == attempts) return pipe;
        QThread::msleep(pause);
    }
}

/// @return 0, or the error
int copyWhole(int from, int to) {
    std::vector<char> buffer(1 << 16);
    for (off_t offset = 0;;) {
        const ssize_t count = ::pread(from, buffer.data(), buffer.size(), offset);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return count < 0 ? errno : 0;
        if (const int error = writeWhole(to, buffer.data(), count)) return error;
        offset += count;
    }
}

/// Takes back what has been appended to a file, unless somebody else has appended to it behind that.
/// @param old the file before. @param position of the descriptor before
void takeBack(int file, const struct stat &old, off_t position) {
    struct stat now = {};
    const off_t end = ::lseek(file, 0, SEEK_CUR);
    if (::fstat(file, &now) == 0 && now.st_size > old.st_size && now.st_size == end) {
        while (::ftruncate(file, old.st_size) != 0 && errno == EINTR) {
        }
    }
    ::lseek(file, position, SEEK_SET);
}

}  // namespace

Poured pourInto(const FileTarget &stream, int file) {
    const int out =
        stream.descriptor >= 0 ? ::fcntl(stream.descriptor, F_DUPFD_CLOEXEC, 0) : openPipe(stream.path);
    if (out < 0) return {false, errno};
    struct stat old = {};
    const bool isFile = ::fstat(out, &old) == 0 && S_ISREG(old.st_mode);
    const off_t position = isFile ? ::lseek(out, 0, SEEK_CUR) : 0;
    Poured poured;
    poured.error = copyWhole(file, out);
    poured.isThere = poured.error == 0;
    if (isFile && !poured.isThere) takeBack(out, old, position);
    if (isFile && poured.isThere && !hasSynced(::fsync(out))) poured.error = errno;
    if (::close(out) != 0 && poured.error == 0) poured.error = errno;
    return poured;
}

}  // namespace leafwright
