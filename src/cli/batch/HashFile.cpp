#include "cli/batch/HashFile.h"

#include "files/SystemError.h"
#include "files/TemporaryFolder.h"
#include "texts/Translated.h"

#include <QCryptographicHash>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace leafwright::cli {

/// As it stands in the file. One that is empty, as a hole in the file reads, has no name.
struct HashFile::Slot {
    std::array<std::uint64_t, 2> name{};
    std::uint64_t number = 0;
    std::uint64_t isTaken = 0;
};

namespace {

constexpr Translated translated{"HashFile"};

constexpr std::uint64_t fewestSlots = 1U << 12U;

/// A file without a name. @return -1 with errno set where there can be none
int openNamelessFile() {
    const QByteArray folder = systemTemporaryFolder();
    const int file = ::open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file >= 0) return file;
    // Not every file system has such files.
    QByteArray path = folder + "/leafwright-jobs.XXXXXX";
    const int named = ::mkostemp(path.data(), O_CLOEXEC);
    if (named >= 0) ::unlink(path.constData());
    return named;
}

}  // namespace

HashFile::~HashFile() {
    if (file_ >= 0) ::close(file_);
}

std::optional<std::uint64_t> HashFile::find(const QByteArray &name) {
    if (file_ < 0) return std::nullopt;
    Slot wanted;
    Slot there;
    const QByteArray hash = QCryptographicHash::hash(name, QCryptographicHash::Sha1);
    std::memcpy(wanted.name.data(), hash.constData(), sizeof wanted.name);
    if (!placeOf(wanted, there) || there.isTaken == 0) return std::nullopt;
    return there.number;
}

bool HashFile::put(const QByteArray &name, std::uint64_t number) {
    if (error_ != 0 || (2 * used_ >= slots_ && !makeRoom())) return false;
    Slot wanted;
    Slot there;
    const QByteArray hash = QCryptographicHash::hash(name, QCryptographicHash::Sha1);
    std::memcpy(wanted.name.data(), hash.constData(), sizeof wanted.name);
    wanted.number = number;
    wanted.isTaken = 1;
    const auto place = placeOf(wanted, there);
    if (!place || !write(*place, wanted)) return false;
    if (there.isTaken == 0) ++used_;
    return true;
}

std::optional<QString> HashFile::problem() const {
    if (error_ == 0) return std::nullopt;
    return translated("the temporary files can't be used: %1").arg(reasonOfSystem(error_));
}

/// @return false
bool HashFile::fail(int error) {
    if (error_ == 0) error_ = error;
    return false;
}

/// @param count how much of a slot was read or written; below 0 for none, with errno set
bool HashFile::checkWhole(ssize_t count) {
    if (count == static_cast<ssize_t>(sizeof(Slot))) return true;
    return fail(count < 0 ? errno : EIO);
}

bool HashFile::makeRoom() {
    const int file = openNamelessFile();
    const std::uint64_t slots = std::max(fewestSlots, 2 * slots_);
    if (file < 0 || ::ftruncate(file, static_cast<off_t>(slots * sizeof(Slot))) != 0) {
        const int error = errno;
        if (file >= 0) ::close(file);
        return fail(error);
    }
    HashFile larger;
    larger.file_ = file;
    larger.slots_ = slots;
    for (std::uint64_t i = 0; i < slots_; ++i) {
        Slot slot;
        Slot there;
        if (!read(i, slot)) return false;
        if (slot.isTaken == 0) continue;
        const auto place = larger.placeOf(slot, there);
        if (!place || !larger.write(*place, slot)) return fail(larger.error_);
    }
    std::swap(file_, larger.file_);
    slots_ = slots;
    return true;
}

bool HashFile::read(std::uint64_t index, Slot &slot) {
    ssize_t count = 0;
    do {
        count = ::pread(file_, &slot, sizeof slot, static_cast<off_t>(index * sizeof slot));
    } while (count < 0 && errno == EINTR);
    return checkWhole(count);
}

bool HashFile::write(std::uint64_t index, const Slot &slot) {
    ssize_t count = 0;
    do {
        count = ::pwrite(file_, &slot, sizeof slot, static_cast<off_t>(index * sizeof slot));
    } while (count < 0 && errno == EINTR);
    return checkWhole(count);
}

std::optional<std::uint64_t> HashFile::placeOf(const Slot &wanted, Slot &there) {
    // Half of the slots are free, so that this ends.
    for (std::uint64_t i = wanted.name[0];; ++i) {
        const std::uint64_t index = i & (slots_ - 1);
        if (!read(index, there)) return std::nullopt;
        if (there.isTaken == 0 || there.name == wanted.name) return index;
    }
}

}  // namespace leafwright::cli
