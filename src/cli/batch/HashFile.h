#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>
#include <sys/types.h>

namespace leafwright::cli {

/// A number for each of many names, in a file that nobody else sees: the memory of a batch does not grow with
/// the number of its jobs. Names are known by 128 bits of their SHA-1, of which no two are met by chance.
class HashFile {
public:
    HashFile() = default;
    ~HashFile();
    HashFile(const HashFile &) = delete;
    HashFile &operator=(const HashFile &) = delete;

    /// The number of a name; absent where it has none, or where the file can't be read: see problem().
    std::optional<std::uint64_t> find(const QByteArray &name);
    /// Gives a name a number, in place of the one that it has. @return false where there is no room for it
    bool put(const QByteArray &name, std::uint64_t number);
    /// What the disk has refused first, with its reason. What was put may be gone then.
    std::optional<QString> problem() const;

private:
    struct Slot;
    bool makeRoom();
    bool fail(int error);
    bool checkWhole(ssize_t count);
    bool read(std::uint64_t index, Slot &slot);
    bool write(std::uint64_t index, const Slot &slot);
    /// Where a name stands, or would stand. @return absent where the file can't be read
    std::optional<std::uint64_t> placeOf(const Slot &wanted, Slot &there);

    int file_ = -1;
    std::uint64_t slots_ = 0;  ///< A power of two.
    std::uint64_t used_ = 0;
    int error_ = 0;  ///< As in errno; 0 while nothing was refused.
};

}  // namespace leafwright::cli
