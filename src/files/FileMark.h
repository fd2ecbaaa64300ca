#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace leafwright {

/// What a file was like, to be written down and held against what is there when the program runs again.
struct FileMark {
    qint64 size = 0;      ///< In bytes.
    qint64 modified = 0;  ///< Nanoseconds since the start of 1970, UTC.
    QByteArray hash;      ///< SHA-1 of the content; empty for more than 16 MB.

    /// Whether both are of one content, as far as they say: by the hash where both have one, else by size and
    /// time.
    bool isOfSameContentAs(const FileMark &other) const;
};

/// The mark of the file at a path; nothing where there is none that can be read.
std::optional<FileMark> markOfFile(const QString &path);
/// The same of an open file, from its start, wherever the descriptor stands.
std::optional<FileMark> markOfFile(int descriptor);

}  // namespace leafwright
