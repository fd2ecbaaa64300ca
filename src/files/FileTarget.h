#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <sys/stat.h>
#include <variant>

namespace leafwright {

/// What a path that is to be written to leads to, symbolic links followed.
struct FileTarget {
    QByteArray path;                    ///< No link, and not empty; empty for a descriptor.
    std::optional<struct stat> status;  ///< Of what stands there; nothing for a new file.
    int descriptor = -1;  ///< The one that "/dev/stdout", "/dev/fd/N" or "/proc/self/fd/N" name; else -1.

    /// Whether it takes bytes as they come, instead of being replaced: a named pipe, an open descriptor.
    bool isStream() const { return descriptor >= 0 || (status && S_ISFIFO(status->st_mode)); }
    /// The folder that its name stands in.
    QByteArray folder() const;
    /// Its name in that folder.
    QByteArray name() const;
};

/// Finds what a path leads to. Only regular files may be replaced: a folder, a device or a socket is refused.
/// @return the target, or why there can't be a file
std::variant<FileTarget, QString> findTarget(const QString &path);

}  // namespace leafwright
