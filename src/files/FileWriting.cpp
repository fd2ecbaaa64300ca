#include "files/FileWriting.h"

#include <cerrno>
#include <csignal>
#include <unistd.h>

namespace leafwright {

int writeWhole(int descriptor, const char *data, qint64 size) {
    while (size > 0) {
        const ssize_t count = ::write(descriptor, data, static_cast<size_t>(size));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return count < 0 ? errno : EIO;
        data += count;
        size -= count;
    }
    return 0;
}

bool hasSynced(int result) {
    return result == 0 || errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
}

void letHopelessWritesFail() {
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace leafwright
