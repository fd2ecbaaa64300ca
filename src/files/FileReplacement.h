#pragma once

#include "files/FileOnDisk.h"
#include "files/FileTarget.h"
#include "files/NameTaking.h"
#include "files/UnfinishedFiles.h"

#include <QIODevice>
#include <QStringList>

#include <functional>
#include <optional>

namespace leafwright {

/// A file that takes the place of another, or a new name, when it is complete. Until then, and whatever
/// fails, what stands there stays as it was. Every file that the program leaves to its user is written by one
/// of these.
///
/// It is written beside the target, as ".NAME.XXXXXX"; what a killed program leaves of that, the next one
/// removes. Symbolic links are followed. A named pipe or an open descriptor ("/dev/stdout") is not replaced,
/// but gets all bytes at the end; folders, devices and sockets are refused. What may be replaced is what
/// stood there at the start: what another program puts there meanwhile stays.
///
///     FileReplacement file(path);
///     if (!file.start() || file.write(bytes) != bytes.size() || file.commit() !=
///     FileReplacement::Outcome::Written)
///         ... file.errorString() ...
class FileReplacement final : public QIODevice {
public:
    enum class Outcome {
        NotWritten,  ///< The old file, if there was one, stands unchanged.
        NotDurable,  ///< The new file stands there, but the disk has not confirmed that it has it.
        Written,     ///< The new file stands there, and a power failure would not undo that.
    };
    /// Looks at the new file before it takes its place. @return what is wrong with it
    using Check = std::function<std::optional<QString>(const QString &path)>;

    explicit FileReplacement(QString path);
    /// Removes what has been written, unless it has been committed.
    ~FileReplacement() override;
    FileReplacement(const FileReplacement &) = delete;
    FileReplacement &operator=(const FileReplacement &) = delete;

    /// Makes the new file, empty. @return false where that fails; errorString() says why
    bool start();
    /// The new file, open for reading and writing, until it is committed or discarded. Who writes to it
    /// without this class checks every write, and calls discard() where one fails.
    int descriptor() const { return descriptor_; }
    /// Where the new file can be read meanwhile.
    QString temporaryPath() const;
    /// Lets it take the place of a PDF, as only what is one should: a PDF that somebody has named by mistake
    /// is refused otherwise. To be called before start().
    void setIsPdf() { isPdf_ = true; }
    /// Has it take a new name only: start() fails where something stands, also a stream. To be called before
    /// that. @param reason why, as the reason that a file was not written
    void keepWhatIsThere(const QString &reason) { whyKept_ = reason; }
    /// Has the new file looked at when all is written, and left unused if something is wrong with it.
    void setCheck(Check check) { check_ = std::move(check); }
    /// Asks, at the start and again right before the new file takes its place, whether another program has
    /// changed what was read to make it, and tells of the new file there. @param file must outlive this
    void heed(FileOnDisk &file) { fileOnDisk_ = &file; }

    /// Does all that can fail for want of space: checks the file, gives it the old one's owner, permissions
    /// and attributes, and waits until the disk has it. Only its name is to be changed then, by commit().
    /// @return false where that fails; errorString() says why, and nothing is left of the new file
    bool prepare();
    /// Prepares the file, if that has not been done, and puts it in its place.
    Outcome commit();
    /// Removes what has been written, unless it has been committed. The target stays as it was.
    void discard();

    /// To be called before commit() where that of another file may fail, which undoes this one. Nothing can
    /// be undone of streams, nor where the file system gives no file a second name.
    void keepOld();
    /// Puts the old file back in its place, or removes the new one where there was none.
    /// @return why the new file stands there all the same; absent where it does not
    std::optional<QString> undo();
    /// Whether the target takes bytes as they come.
    bool isStream() const { return target_.isStream(); }
    /// Whether it failed because another program has changed something, see heed(), or put it there.
    bool metObjection() const { return metObjection_; }

    /// Why the path has not been written, or not for certain, as a message to the user.
    QString message() const;
    /// What the old file had and the new one has not, each as a message that begins with the path; complete
    /// after commit().
    const QStringList &notices() const { return notices_; }

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    bool fail(const QString &reason);
    bool fail(int error);
    bool failsByObjection();
    bool maySucceedTarget();
    bool startBesideTarget();
    bool startApart();
    bool failsIn(const QByteArray &folder, int error);
    int takeOverAttributes(const struct stat &old, const QByteArray &path);
    bool takePlace();
    bool failsByName(NameTaken result);
    Outcome rename();
    Outcome pourOut();

    QString path_;
    FileTarget target_;
    Check check_;
    FileOnDisk *fileOnDisk_ = nullptr;
    int folder_ = -1;             ///< Where the name changes; -1 for streams.
    bool folderCanSync_ = false;  ///< Not where the folder may be written to but not read.
    int descriptor_ = -1;
    QByteArray temporaryName_;  ///< In the folder; empty for streams, whose file has no name.
    UnfinishedFile old_;        ///< The old file under a second name in the folder; none without a name.
    bool isPdf_ = false;
    std::optional<QString> whyKept_;
    bool failed_ = false;
    bool metObjection_ = false;
    bool prepared_ = false;
    bool isInPlace_ = false;  ///< The new file has the name.
    QStringList notices_;
};

}  // namespace leafwright
