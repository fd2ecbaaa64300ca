#pragma once

#include "files/FileMark.h"
#include "files/FileSnapshot.h"

#include <QString>

namespace leafwright {

/// The file that a document was read from, and the one at the document's place, which is the same until the
/// document is saved: whether other programs have left both alone. Looks when it is asked, at no other time.
class FileOnDisk {
public:
    enum class State {
        Unchanged,
        Overwritten,  ///< What was read is gone: the file itself has been written to.
        Replaced,     ///< Something else is at the document's place; what was read is still there.
        Missing,      ///< Nothing is at the document's place; what was read is still there.
        Unknown,      ///< The system does not tell.
    };

    /// What somebody has seen at a place.
    struct Seen {
        std::shared_ptr<const FileSnapshot> file;
        int error = 0;  ///< Why there is none: the system's reason, such as that nothing is there.
    };
    static Seen seenAt(const QString &path);

    /// @param read what was read, taken before the reading
    /// @param place where it was read
    FileOnDisk(std::shared_ptr<const FileSnapshot> read, QString place);

    State state() const;
    /// Why nothing may be written to a path: what was read is gone, or the path is the document's place, and
    /// another program has put something there, or taken it away. Part of a sentence, "... could not be
    /// written: (reason)". Other paths are their owners' business.
    std::optional<QString> objectionTo(const QString &path) const;

    /// The mark of what was read, or written to the document's place since, under whatever name it is now;
    /// absent where that is not what it was.
    std::optional<FileMark> mark() const;

    /// A write to a path may replace what was seen there, and nothing else. Matters for the document's place.
    void accept(const QString &path, Seen seen);
    /// The document has been written to a path. @param descriptor of the file that stands there
    void noteWritten(const QString &path, int descriptor);
    /// The document's place is another from now on: one that it was written to, or else what is there is
    /// accepted.
    void setPlace(const QString &path);

private:
    static Seen seenBy(int descriptor);

    State look(int &error) const;
    bool isPlace(const QString &path) const;

    std::shared_ptr<const FileSnapshot> read_;
    std::shared_ptr<const FileSnapshot> known_;  ///< What was read, or written to the place since.
    QString place_;
    Seen expected_;
    QString lastPath_;  ///< The one last written to.
    Seen lastWritten_;  ///< What stood there then.
};

}  // namespace leafwright
