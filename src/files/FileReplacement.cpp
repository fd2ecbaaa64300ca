#include "files/FileReplacement.h"

#include "files/FileAttributes.h"
#include "files/FileName.h"
#include "files/FileWriting.h"
#include "files/SystemError.h"
#include "files/TemporaryFolder.h"
#include "files/WritingJournal.h"
#include "texts/Translated.h"

#include <QThread>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace leafwright {

namespace {

constexpr Translated translated{"FileReplacement"};

/// Some file systems have no such operation, and nothing to wait for.
bool hasSynced(int result) {
    return result == 0 || errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
}

/// Opens a named pipe for writing. That takes a reader, which may be about to come.
int openPipe(const QByteArray &path) {
    constexpr int attempts = 100;
    constexpr unsigned long pause = 100;  // milliseconds
    for (int i = 0;; ++i) {
        const int pipe = ::open(path.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        if (pipe >= 0) ::fcntl(pipe, F_SETFL, O_WRONLY);
        if (pipe >= 0 || errno != ENXIO || i == attempts) return pipe;
        QThread::msleep(pause);
    }
}

/// @return 0, or the error
int copyWhole(int from, int to) {
    std::vector<char> buffer(1 << 16);
    for (off_t offset = 0;;) {
        const ssize_t count = ::pread(from, buffer.data(), buffer.size(), offset);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return count < 0 ? errno : 0;
        if (const int error = writeWhole(to, buffer.data(), count)) return error;
        offset += count;
    }
}

}  // namespace

FileReplacement::FileReplacement(const QString &path) : path_(path) {}

FileReplacement::~FileReplacement() {
    discard();
    if (!old_.name.isEmpty()) ::unlinkat(folder_, old_.name.constData(), 0);
    if (old_.descriptor >= 0) ::close(old_.descriptor);
    if (folder_ >= 0) ::close(folder_);
}

bool FileReplacement::fail(const QString &reason) {
    failed_ = true;
    setErrorString(reason);
    return false;
}

bool FileReplacement::fail(int error) {
    return fail(reasonOfSystem(error));
}

bool FileReplacement::failsByObjection() {
    const auto objection = fileOnDisk_ ? fileOnDisk_->objectionTo(path_) : std::nullopt;
    if (!objection) return false;
    metObjection_ = true;
    fail(*objection);
    return true;
}

bool FileReplacement::start() {
    if (failsByObjection()) return false;
    auto found = findTarget(path_);
    if (const auto *reason = std::get_if<QString>(&found)) return fail(*reason);
    target_ = std::get<FileTarget>(std::move(found));
    if (!(target_.isStream() ? startApart() : startBesideTarget())) return false;
    return open(WriteOnly | Unbuffered);
}

bool FileReplacement::startBesideTarget() {
    const QByteArray folder = target_.folder();
    folder_ = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    folderCanSync_ = folder_ >= 0;
    if (folder_ < 0 && errno == EACCES)
        folder_ = ::open(folder.constData(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (folder_ < 0) return fail(errno);
    // Renaming would pass over that the file itself is read-only.
    const QByteArray name = target_.name();
    if (target_.status && ::faccessat(folder_, name.constData(), W_OK, AT_EACCESS) != 0) return fail(errno);
    removeAbandonedFiles(folder_, folder);
    // A new file gets the permissions that new files get here; what replaces another is for nobody else until
    // it has the permissions of that one.
    constexpr unsigned forAll = 0666;
    constexpr unsigned forOwner = 0600;
    const UnfinishedFile file = makeUnfinishedFile(folder_, name, target_.status ? forOwner : forAll);
    if (file.descriptor < 0) return fail(errno);
    descriptor_ = file.descriptor;
    temporaryName_ = file.name;
    return true;
}

bool FileReplacement::startApart() {
    const QByteArray folder = systemTemporaryFolder();
    constexpr unsigned forOwner = 0600;
    const int place = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (place < 0) return fail(errno);
    const UnfinishedFile file = makeUnfinishedFile(place, QByteArrayLiteral("stream"), forOwner);
    const int error = file.descriptor < 0                                ? errno
                      : ::unlinkat(place, file.name.constData(), 0) == 0 ? 0
                                                                         : errno;
    ::close(place);
    descriptor_ = file.descriptor;
    return error == 0 || fail(error);
}

QString FileReplacement::temporaryPath() const {
    if (temporaryName_.isEmpty()) return QStringLiteral("/proc/self/fd/%1").arg(descriptor_);
    return fileNameText(target_.folder() + '/' + temporaryName_);
}

qint64 FileReplacement::readData(char * /*data*/, qint64 /*maxSize*/) {
    return -1;
}

qint64 FileReplacement::writeData(const char *data, qint64 size) {
    const int error = failed_ ? EIO : writeWhole(descriptor_, data, size);
    if (error == 0) return size;
    if (!failed_) fail(error);
    return -1;
}

bool FileReplacement::prepare() {
    if (prepared_) return true;
    if (descriptor_ < 0 && !failed_) fail(EBADF);
    if (!failed_ && check_)
        if (const auto problem = check_(temporaryPath())) fail(*problem);
    if (!failed_ && target_.status && !target_.isStream()) {
        for (const QString &lost : keepAttributes(descriptor_, target_.path, *target_.status))
            notices_.append(path_ + QLatin1String(": ") + lost);
        if (target_.status->st_nlink > 1)
            notices_.append(path_ + QLatin1String(": ") +
                            translated("it had other names (hard links), which still lead to the old file"));
    }
    if (!failed_ && !target_.isStream() && !hasSynced(::fsync(descriptor_))) fail(errno);
    prepared_ = !failed_;
    if (failed_) discard();
    return prepared_;
}

FileReplacement::Outcome FileReplacement::commit() {
    if (!prepare()) return Outcome::NotWritten;
    // As late as can be: nothing but the change of the name is left to do.
    const Outcome outcome = failsByObjection()   ? Outcome::NotWritten
                            : target_.isStream() ? pourOut()
                                                 : rename();
    discard();
    return outcome;
}

FileReplacement::Outcome FileReplacement::rename() {
    noteReplacement(descriptor_, fileNameBytes(path_));
    if (::renameat(folder_, temporaryName_.constData(), folder_, target_.name().constData()) != 0) {
        fail(errno);
        return Outcome::NotWritten;
    }
    temporaryName_.clear();
    isInPlace_ = true;
    // Whoever keeps the new file open would keep it locked. On some file systems nobody else could read it
    // then.
    ::flock(descriptor_, LOCK_UN);
    if (fileOnDisk_) fileOnDisk_->noteWritten(path_, descriptor_);
    const bool synced = hasSynced(folderCanSync_ ? ::fsync(folder_) : ::syncfs(descriptor_));
    const int error = synced ? 0 : errno;
    // What a server says at the end counts as well.
    const bool closed = ::close(descriptor_) == 0;
    descriptor_ = -1;
    if (synced && closed) return Outcome::Written;
    fail(synced ? errno : error);
    return Outcome::NotDurable;
}

FileReplacement::Outcome FileReplacement::pourOut() {
    const int out =
        target_.descriptor >= 0 ? ::fcntl(target_.descriptor, F_DUPFD_CLOEXEC, 0) : openPipe(target_.path);
    int error = out < 0 ? errno : copyWhole(descriptor_, out);
    if (out >= 0 && ::close(out) != 0 && error == 0) error = errno;
    if (error == 0) return Outcome::Written;
    fail(error == ENXIO ? translated("nobody reads from this pipe") : reasonOfSystem(error));
    return Outcome::NotWritten;
}

QString FileReplacement::message() const {
    return (isInPlace_ ? translated("%1 was written, but may not outlive a power failure: %2")
                       : translated("%1 could not be written: %2"))
        .arg(path_, errorString());
}

void FileReplacement::discard() {
    if (isOpen()) {
        const QString reason = errorString();
        close();
        setErrorString(reason);
    }
    if (!temporaryName_.isEmpty()) ::unlinkat(folder_, temporaryName_.constData(), 0);
    temporaryName_.clear();
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = -1;
    prepared_ = false;
}

void FileReplacement::keepOld() {
    if (target_.status && !target_.isStream() && old_.name.isEmpty())
        old_ = linkAsUnfinished(folder_, target_.name());
}

std::optional<QString> FileReplacement::undo() {
    if (!isInPlace_) return std::nullopt;
    const auto stays = [this](const QString &reason) {
        return translated("%1 could not be put back as it was: %2").arg(path_, reason);
    };
    const QByteArray name = target_.name();
    if (target_.status && old_.name.isEmpty())
        return stays(translated("the file system gives no file a second name"));
    const int result = target_.status ? ::renameat(folder_, old_.name.constData(), folder_, name.constData())
                                      : ::unlinkat(folder_, name.constData(), 0);
    if (result != 0) return stays(reasonOfSystem(errno));
    old_.name.clear();
    isInPlace_ = false;
    return std::nullopt;
}

}  // namespace leafwright
