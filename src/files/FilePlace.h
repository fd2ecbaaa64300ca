#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <sys/types.h>
#include <tuple>

namespace leafwright {

/// What a path leads to, however it is spelled and through whatever links: a file, or the name of one that is
/// to come.
struct FilePlace {
    dev_t device = 0;
    ino_t inode = 0;  ///< Of the file, or of the folder for one to come.
    QByteArray name;  ///< Of a file to come; null for one that is there.

    friend bool operator==(const FilePlace &, const FilePlace &) = default;
    friend bool operator<(const FilePlace &a, const FilePlace &b) {
        return std::tie(a.device, a.inode, a.name) < std::tie(b.device, b.inode, b.name);
    }
};

/// The place of a path; absent where it leads nowhere, since there is no such folder, say.
std::optional<FilePlace> placeOf(const QString &path);
/// The place of what is open; absent for a number that is none.
std::optional<FilePlace> placeOf(int descriptor);

/// The name that a path leads to, as if its file were to come: unlike the file, it is the same before and
/// after a save, and each hard link is another. Absent where the path leads nowhere, or to what is open.
std::optional<FilePlace> nameAt(const QString &path);

/// Whether what is written to a path is added to what is there, instead of taking its place: a named pipe, an
/// open descriptor such as "/dev/stdout".
bool isStream(const QString &path);

}  // namespace leafwright
