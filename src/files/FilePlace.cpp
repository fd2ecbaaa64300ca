#include "files/FilePlace.h"

#include "files/FileTarget.h"

#include <sys/stat.h>

namespace leafwright {

namespace {

std::optional<FilePlace> nameOf(const FileTarget &target) {
    struct stat folder = {};
    if (::stat(target.folder().constData(), &folder) != 0) return std::nullopt;
    return FilePlace{folder.st_dev, folder.st_ino, target.name()};
}

}  // namespace

std::optional<FilePlace> placeOf(int descriptor) {
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0) return std::nullopt;
    return FilePlace{status.st_dev, status.st_ino, {}};
}

std::optional<FilePlace> placeOf(const QString &path) {
    const auto found = findTarget(path);
    const auto *target = std::get_if<FileTarget>(&found);
    if (!target) return std::nullopt;
    if (target->descriptor >= 0) return placeOf(target->descriptor);
    if (target->status) return FilePlace{target->status->st_dev, target->status->st_ino, {}};
    return nameOf(*target);
}

std::optional<FilePlace> nameAt(const QString &path) {
    const auto found = findTarget(path);
    const auto *target = std::get_if<FileTarget>(&found);
    return target && !target->path.isEmpty() ? nameOf(*target) : std::nullopt;
}

bool isStream(const QString &path) {
    const auto found = findTarget(path);
    const auto *target = std::get_if<FileTarget>(&found);
    return target && target->isStream();
}

}  // namespace leafwright
