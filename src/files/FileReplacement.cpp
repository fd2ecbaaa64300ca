#include "files/FileReplacement.h"

#include "files/FileAttributes.h"
#include "files/FileName.h"
#include "files/FileReading.h"
#include "files/FileWriting.h"
#include "files/StreamPouring.h"
#include "files/SystemError.h"
#include "files/TemporaryFolder.h"
#include "files/WritingJournal.h"
#include "texts/Translated.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace leafwright {

namespace {

constexpr Translated translated{"FileReplacement"};

/// Whether what others may do with a file is what it was.
bool sameRights(const struct stat &a, const struct stat &b) {
    return a.st_mode == b.st_mode && a.st_uid == b.st_uid && a.st_gid == b.st_gid;
}

bool sameTime(const timespec &a, const timespec &b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

}  // namespace

FileReplacement::FileReplacement(QString path) : path_(std::move(path)) {}

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
    if (whyKept_ && (target_.status || target_.isStream())) return fail(*whyKept_);
    if (!(target_.isStream() ? startApart() : startBesideTarget())) return false;
    return open(WriteOnly | Unbuffered);
}

/// @return whether what stands there may be replaced by what this is
bool FileReplacement::maySucceedTarget() {
    if (isPdf_ || !target_.status) return true;
    // Programs open PDF files whose header is anywhere, or nowhere.
    if (target_.name().toLower().endsWith(".pdf"))
        return fail(translated("a file with the name of a PDF stands there, which only a PDF may replace"));
    const std::optional<bool> isPdf = beginsAsPdf(target_.path);
    if (!isPdf) return fail(errno);
    return !*isPdf || fail(translated("a PDF stands there, which only a PDF may replace"));
}

bool FileReplacement::startBesideTarget() {
    if (!maySucceedTarget()) return false;
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
    if (place < 0) return failsIn(folder, errno);
    const UnfinishedFile file = makeUnfinishedFile(place, QByteArrayLiteral("stream"), forOwner);
    const int error = file.descriptor < 0                                ? errno
                      : ::unlinkat(place, file.name.constData(), 0) == 0 ? 0
                                                                         : errno;
    ::close(place);
    descriptor_ = file.descriptor;
    return error == 0 || failsIn(folder, error);
}

bool FileReplacement::failsIn(const QByteArray &folder, int error) {
    return fail(translated("no temporary file can be made in %1: %2")
                    .arg(fileNameText(folder), reasonOfSystem(error)));
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
    if (!failed_ && !target_.isStream()) {
        const int error = target_.status ? takeOverAttributes(*target_.status, target_.path)
                          : hasSynced(::fsync(descriptor_)) ? 0
                                                            : errno;
        if (error != 0) fail(error);
    }
    prepared_ = !failed_;
    if (failed_) discard();
    return prepared_;
}

/// Gives the new file what the old one has beside its content, and waits until the disk has it.
/// @param path where the old file stands. @return 0, or the error
int FileReplacement::takeOverAttributes(const struct stat &old, const QByteArray &path) {
    notices_.clear();
    for (const QString &lost : keepAttributes(descriptor_, path, old))
        notices_.append(path_ + QLatin1String(": ") + lost);
    const nlink_t own = old_.name.isEmpty() ? 1 : 2;
    if (old.st_nlink > own)
        notices_.append(path_ + QLatin1String(": ") +
                        translated("it had other names (hard links), which still lead to the old file"));
    target_.status = old;
    return hasSynced(::fsync(descriptor_)) ? 0 : errno;
}

FileReplacement::Outcome FileReplacement::commit() {
    if (!prepare()) return Outcome::NotWritten;
    const Outcome outcome = !target_.isStream()  ? rename()
                            : failsByObjection() ? Outcome::NotWritten
                                                 : pourOut();
    discard();
    return outcome;
}

/// @return whether the new file has its name. If something is left to tell then, it has failed all the same
bool FileReplacement::takePlace() {
    const FolderLock lock(folder_);
    // Before the question whether the file is what was read, so that no writing falls between the two.
    NameChange change{folder_, descriptor_, temporaryName_, target_.name(),
                      statusAt(folder_, target_.name())};
    // As late as can be: nothing but the change of the name is left to do.
    if (failsByObjection()) return false;
    if (change.old) {
        if (!target_.status || !isSameFile(*change.old, *target_.status))
            return failsByName(NameTaken::ByAnother);
        const bool isAsPrepared = sameRights(*change.old, *target_.status) &&
                                  change.old->st_nlink == target_.status->st_nlink &&
                                  sameTime(change.old->st_ctim, target_.status->st_ctim);
        const int error = isAsPrepared ? 0 : takeOverAttributes(*change.old, target_.path);
        if (error != 0) return fail(error);
    }
    noteReplacement(descriptor_, fileNameBytes(path_));
    NameTaken result = takeName(change);
    if (result == NameTaken::ByAnother && change.old && !statusAt(folder_, change.to)) {
        if (failsByObjection()) return false;
        change.old.reset();
        result = takeName(change);
    }
    if (result != NameTaken::Yes && result != NameTaken::InExchange) return failsByName(result);
    isInPlace_ = true;
    if (result == NameTaken::InExchange) {
        const auto old = statusAt(folder_, temporaryName_);
        const int error = !old || sameRights(*old, *target_.status)
                              ? 0
                              : takeOverAttributes(*old, target_.folder() + '/' + temporaryName_);
        if (error != 0) fail(error);
        ::unlinkat(folder_, temporaryName_.constData(), 0);
    }
    temporaryName_.clear();
    return true;
}

/// With errno set.
bool FileReplacement::failsByName(NameTaken result) {
    if (result == NameTaken::Not) return fail(errno);
    if (result == NameTaken::Unclear)
        return fail(
            translated("another program gives files other names there at the same time; what it has left "
                       "is in %1")
                .arg(temporaryPath()));
    if (failsByObjection()) return false;
    metObjection_ = true;
    return fail(translated("another program has put another file there meanwhile"));
}

FileReplacement::Outcome FileReplacement::rename() {
    if (!takePlace()) return Outcome::NotWritten;
    // Whoever keeps the new file open would keep it locked. On some file systems nobody else could read it
    // then.
    ::flock(descriptor_, LOCK_UN);
    if (fileOnDisk_) fileOnDisk_->noteWritten(path_, descriptor_);
    const bool synced = hasSynced(folderCanSync_ ? ::fsync(folder_) : ::syncfs(descriptor_));
    const int error = synced ? 0 : errno;
    // What a server says at the end counts as well.
    const bool closed = ::close(descriptor_) == 0;
    descriptor_ = -1;
    if (synced && closed) return failed_ ? Outcome::NotDurable : Outcome::Written;
    fail(synced ? errno : error);
    return Outcome::NotDurable;
}

FileReplacement::Outcome FileReplacement::pourOut() {
    const Poured poured = pourInto(target_, descriptor_);
    isInPlace_ = poured.isThere;
    if (poured.error == 0) return Outcome::Written;
    fail(poured.error == ENXIO ? translated("nobody reads from this pipe") : reasonOfSystem(poured.error));
    return isInPlace_ ? Outcome::NotDurable : Outcome::NotWritten;
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
    // What another program has put there is not ours to remove.
    if (!temporaryName_.isEmpty() && isNameOf(folder_, temporaryName_, descriptor_))
        ::unlinkat(folder_, temporaryName_.constData(), 0);
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
    if (!isInPlace_ || isStream()) return std::nullopt;
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
