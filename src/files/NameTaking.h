#pragma once

#include <QByteArray>

#include <chrono>
#include <optional>
#include <sys/stat.h>

namespace leafwright {

/// Keeps apart those of our processes that change names in a folder, from the look at what stands there to
/// the change. Other programs need not know of it. Where it can't be had, since the file system knows no
/// locks, or somebody holds it who does not go on, its owner goes on without: what takeName() promises does
/// not go by it.
class FolderLock {
public:
    /// @param folder a descriptor of it. @param patience how long to wait for who holds it
    explicit FolderLock(int folder, std::chrono::milliseconds patience = std::chrono::seconds(2));
    ~FolderLock();
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    /// Whether somebody else has it, and would not give it away.
    bool isTaken() const { return isTaken_; }

private:
    int folder_;
    bool isHeld_ = false;
    bool isTaken_ = false;
};

/// A complete file that is to change its name.
struct NameChange {
    int folder;                      ///< A descriptor of the one that both names are in.
    int file;                        ///< Open.
    QByteArray from;                 ///< Its name for the time being.
    QByteArray to;                   ///< The name that it is to take.
    std::optional<struct stat> old;  ///< What has that name, and may lose it; nothing for a new name.
};

enum class NameTaken {
    Yes,
    InExchange,  ///< Yes, and the old file has the first name now.
    Not,         ///< The system's reason is in errno.
    ByAnother,   ///< No: what has the name is not the old file any more, or has been written to.
    Unclear,     ///< No: what has the first name is not the file.
};

/// Gives a file its name in one step, and takes it from the very file that may lose it: what another program
/// puts there at the last moment keeps its name. Where the file system can't exchange names, that holds up to
/// the moment before.
NameTaken takeName(const NameChange &change);

/// Whether a name in a folder leads to a file that is open.
bool isNameOf(int folder, const QByteArray &name, int file);
/// What a name in a folder leads to, links not followed; nothing where that can't be told.
std::optional<struct stat> statusAt(int folder, const QByteArray &name);
bool isSameFile(const struct stat &a, const struct stat &b);

}  // namespace leafwright
