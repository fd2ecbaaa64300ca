#include "files/FileOnDisk.h"

#include "files/FileName.h"
#include "files/FileReading.h"
#include "files/FileTarget.h"
#include "files/SystemError.h"
#include "texts/Translated.h"

#include <cerrno>
#include <unistd.h>

namespace leafwright {

namespace {

constexpr Translated translated{"FileOnDisk"};

bool meansNothingThere(int error) {
    return error == ENOENT || error == ENOTDIR;
}

/// Where a name stands, however its path is spelled: the folder, and the name in it.
struct PlaceOfName {
    dev_t device;
    ino_t folder;
    QByteArray name;

    friend bool operator==(const PlaceOfName &, const PlaceOfName &) = default;
};

std::optional<PlaceOfName> placeOfName(const QString &path) {
    const auto found = findTarget(path);
    const auto *target = std::get_if<FileTarget>(&found);
    struct stat folder = {};
    if (!target || target->isStream() || ::stat(target->folder().constData(), &folder) != 0)
        return std::nullopt;
    return PlaceOfName{folder.st_dev, folder.st_ino, target->name()};
}

}  // namespace

FileOnDisk::FileOnDisk(std::shared_ptr<const FileSnapshot> read, QString place)
    : read_(std::move(read)), known_(read_), place_(std::move(place)), expected_{read_} {}

bool FileOnDisk::isPlace(const QString &path) const {
    if (path == place_) return true;
    const std::optional<PlaceOfName> place = placeOfName(path);
    return place && place == placeOfName(place_);
}

FileOnDisk::State FileOnDisk::state() const {
    int error = 0;
    return look(error);
}

/// @param error set to the system's reason where the state is unknown
FileOnDisk::State FileOnDisk::look(int &error) const {
    const auto unknown = [&error](int reason) {
        error = reason;
        return State::Unknown;
    };
    const std::optional<bool> isThere = read_->isAsItWas();
    if (!isThere) return unknown(errno);
    if (!*isThere) return State::Overwritten;
    struct stat status = {};
    if (::stat(fileNameBytes(place_).constData(), &status) != 0) {
        if (!meansNothingThere(errno)) return unknown(errno);
        return meansNothingThere(expected_.error) ? State::Unchanged : State::Missing;
    }
    if (meansNothingThere(expected_.error)) return State::Replaced;
    if (!expected_.file) return unknown(expected_.error);
    const bool isLookedAt = expected_.file == read_;
    const std::optional<bool> isExpected =
        isLookedAt ? read_->standsAt(status) : expected_.file->isAlso(status);
    if (!isExpected) return unknown(errno);
    return *isExpected ? State::Unchanged : State::Replaced;
}

std::optional<QString> FileOnDisk::objectionTo(const QString &path) const {
    int error = 0;
    switch (look(error)) {
        case State::Unchanged:
            return std::nullopt;
        case State::Overwritten:
            return isPlace(path)
                       ? translated("another program has written to it since it was read; open it again")
                       : translated("another program has written to %1 since it was read; open that again")
                             .arg(place_);
        case State::Replaced:
            if (!isPlace(path)) return std::nullopt;
            return translated(
                "another program has put another file there since this one was read; open that, or write "
                "to another place");
        case State::Missing:
            if (!isPlace(path)) return std::nullopt;
            return translated("it is no longer where it was read; write to another place");
        case State::Unknown:
            // What was read can be written elsewhere as long as it is there.
            if (!isPlace(path) && read_->isAsItWas().value_or(false)) return std::nullopt;
            break;
    }
    return translated("whether another program has changed %1 since it was read can't be told: %2")
        .arg(place_, reasonOfSystem(error));
}

std::optional<FileMark> FileOnDisk::mark() const {
    return known_ ? known_->mark() : std::nullopt;
}

/// @param descriptor -1, with errno set, for a file that could not be opened
FileOnDisk::Seen FileOnDisk::seenBy(int descriptor) {
    auto file = descriptor < 0 ? nullptr : FileSnapshot::of(descriptor);
    const int error = file ? 0 : errno;
    return {std::move(file), error};
}

FileOnDisk::Seen FileOnDisk::seenAt(const QString &path) {
    const int descriptor = openRegularFile(path);
    Seen seen = seenBy(descriptor);
    if (descriptor >= 0) ::close(descriptor);
    return seen;
}

void FileOnDisk::accept(const QString &path, Seen seen) {
    if (isPlace(path)) expected_ = std::move(seen);
}

void FileOnDisk::noteWritten(const QString &path, int descriptor) {
    lastPath_ = path;
    lastWritten_ = seenBy(descriptor);
    if (!isPlace(path)) return;
    expected_ = lastWritten_;
    known_ = lastWritten_.file;
}

void FileOnDisk::setPlace(const QString &path) {
    place_ = path;
    const bool isWritten = path == lastPath_;
    expected_ = isWritten ? lastWritten_ : seenAt(path);
    if (isWritten) known_ = lastWritten_.file;
}

}  // namespace leafwright
