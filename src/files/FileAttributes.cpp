#include "files/FileAttributes.h"

#include "files/FileName.h"
#include "texts/Translated.h"

#include <cerrno>
#include <optional>
#include <sys/xattr.h>
#include <unistd.h>

namespace leafwright {

namespace {

constexpr const char *accessList = "system.posix_acl_access";
constexpr qsizetype longest = 65536;  // bytes of a list of names or of a value, by the system's limits

constexpr Translated translated{"FileAttributes"};

/// Nothing, with errno set, where it can't be read.
std::optional<QByteArray> namesOfAttributes(const QByteArray &path) {
    QByteArray names(longest, Qt::Uninitialized);
    const ssize_t size = ::llistxattr(path.constData(), names.data(), static_cast<size_t>(names.size()));
    if (size < 0) return errno == ENOTSUP ? std::optional(QByteArray()) : std::nullopt;
    names.truncate(size);
    return names;
}

std::optional<QByteArray> attribute(const QByteArray &path, const QByteArray &name) {
    QByteArray value(longest, Qt::Uninitialized);
    const ssize_t size =
        ::lgetxattr(path.constData(), name.constData(), value.data(), static_cast<size_t>(value.size()));
    if (size < 0) return std::nullopt;
    value.truncate(size);
    return value;
}

bool hasAttribute(int file, const QByteArray &name, const QByteArray &value) {
    QByteArray own(longest, Qt::Uninitialized);
    const ssize_t size = ::fgetxattr(file, name.constData(), own.data(), static_cast<size_t>(own.size()));
    return size >= 0 && own.left(size) == value;
}

/// Those that the system makes of the content, which is another now.
bool belongsToContent(const QByteArray &name) {
    return name == "security.ima" || name == "security.evm" || name == "security.capability";
}

void keepExtendedAttributes(int file, const QByteArray &path, bool groupIsKept, QStringList &lost) {
    const std::optional<QByteArray> names = namesOfAttributes(path);
    if (!names) {
        lost.append(translated("its extended attributes could not be kept"));
        return;
    }
    for (const QByteArray &name : names->split('\0')) {
        if (name.isEmpty() || belongsToContent(name)) continue;
        const bool isAccessList = name == accessList;
        const std::optional<QByteArray> value = attribute(path, name);
        // The list speaks of the file's group; with another one it would let others in.
        const bool kept = value && (groupIsKept || !isAccessList) &&
                          (::fsetxattr(file, name.constData(), value->constData(),
                                       static_cast<size_t>(value->size()), 0) == 0 ||
                           hasAttribute(file, name, *value));
        if (kept) continue;
        lost.append(
            isAccessList
                ? translated("its access list could not be kept")
                : translated("its extended attribute \"%1\" could not be kept").arg(fileNameText(name)));
    }
}

/// The permissions of a file whose owner or group is another now.
mode_t permissionsFor(mode_t mode, bool ownerIsKept, bool groupIsKept) {
    constexpr mode_t all = 07777;
    mode &= all;
    if (!ownerIsKept) mode &= ~static_cast<mode_t>(S_ISUID);
    if (!groupIsKept) {
        constexpr unsigned fromOthersToGroup = 3;
        const mode_t likeOthers = (mode & S_IRWXO) << fromOthersToGroup;
        mode = (mode & ~static_cast<mode_t>(S_ISGID | S_IRWXG)) | (mode & likeOthers);
    }
    return mode;
}

}  // namespace

QStringList keepAttributes(int file, const QByteArray &path, const struct stat &status) {
    QStringList lost;
    struct stat own = {};
    if (::fstat(file, &own) != 0) own.st_uid = own.st_gid = static_cast<uid_t>(-1);
    bool ownerIsKept = own.st_uid == status.st_uid;
    bool groupIsKept = own.st_gid == status.st_gid;
    if (!ownerIsKept || !groupIsKept) {
        ownerIsKept = ::fchown(file, status.st_uid, status.st_gid) == 0 || ownerIsKept;
        constexpr auto unchanged = static_cast<uid_t>(-1);
        groupIsKept = groupIsKept || (::fstat(file, &own) == 0 && own.st_gid == status.st_gid) ||
                      ::fchown(file, unchanged, status.st_gid) == 0;
    }
    if (!ownerIsKept) lost.append(translated("it belonged to another user, and belongs to you now"));
    if (!groupIsKept) lost.append(translated("its group could not be kept"));
    // One that the folder gives to its new files is not the old file's.
    ::fremovexattr(file, accessList);
    const mode_t mode = permissionsFor(status.st_mode, ownerIsKept, groupIsKept);
    if (::fchmod(file, mode) != 0) lost.append(translated("its permissions could not be kept"));
    keepExtendedAttributes(file, path, groupIsKept, lost);
    return lost;
}

}  // namespace leafwright
