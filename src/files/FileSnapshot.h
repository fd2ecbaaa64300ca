#pragma once

#include "files/FileMark.h"

#include <memory>
#include <optional>
#include <sys/stat.h>

namespace leafwright {

/// A regular file as it was at one moment, to hold against what is there later. Keeps the file open, so that
/// its number (inode) is not given to another.
///
/// Up to 16 MB, what a file holds counts, and is read for it: some file systems tell the time of a writing by
/// the second or two, and who only touches a file, or gives it another name, changes nothing. Of a larger
/// file, and of one that could not be read, size and time of the last writing tell.
class FileSnapshot {
public:
    /// Of an open file, which may be closed then. @return null, with errno set, where the system tells
    /// nothing of it
    static std::shared_ptr<const FileSnapshot> of(int descriptor);
    ~FileSnapshot();
    FileSnapshot(const FileSnapshot &) = delete;
    FileSnapshot &operator=(const FileSnapshot &) = delete;

    /// Whether the file is what it was, wherever its names lead by now. Nothing, with errno set, where that
    /// can't be told.
    std::optional<bool> isAsItWas() const;
    /// Whether what stands somewhere is this file, as it was. @param status of what stands there
    std::optional<bool> isAlso(const struct stat &status) const;
    /// The same of a file that is known to be as it was.
    std::optional<bool> standsAt(const struct stat &status) const;

    /// To be written down; absent if the file is not as it was, or that can't be told.
    std::optional<FileMark> mark() const;

private:
    explicit FileSnapshot(int descriptor) : descriptor_(descriptor) {}
    bool look();

    int descriptor_;  ///< Its own.
    struct stat status_ = {};
    std::optional<quint64> digest_;  ///< Of the content; nothing where that does not count.
};

}  // namespace leafwright
