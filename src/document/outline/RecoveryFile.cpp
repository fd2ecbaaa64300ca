#include "document/outline/RecoveryFile.h"

#include "document/outline/PdfOfKept.h"
#include "files/FileName.h"
#include "files/FileReading.h"
#include "files/FileReplacement.h"
#include "files/NameTaking.h"
#include "files/SystemError.h"
#include "texts/Translated.h"

#include <QCryptographicHash>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <limits>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace leafwright {

namespace {

constexpr Translated translated{"RecoveryFile"};

const QByteArray outlineSuffix = QByteArrayLiteral(".outline");
const QByteArray lockSuffix = QByteArrayLiteral(".lock");
const QByteArray damagedSuffix = QByteArrayLiteral(".damaged");
constexpr mode_t forOwner = S_IRUSR | S_IWUSR;
constexpr qint64 largest = 1 << 28;  // bytes; that of 100,000 entries has 30 MB

QByteArray startOfNames(const QString &pdf) {
    constexpr qsizetype enough = 16;
    return QCryptographicHash::hash(fileNameBytes(pdf), QCryptographicHash::Sha256).toHex().first(enough) +
           '-';
}

/// Opens a lock, makes it if it is not there, and locks it.
/// @return -1 with errno set where that fails: EWOULDBLOCK where somebody else has it
int takeLock(const QByteArray &path, int flags) {
    const int lock = ::open(path.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC | flags, forOwner);
    if (lock < 0) return -1;
    // Where the file system knows no locks, there is nobody to keep out.
    int error = ::flock(lock, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK ? 0 : errno;
    // Who had it may have removed it meanwhile.
    struct stat status = {};
    if (error == 0 && (::fstat(lock, &status) != 0 || status.st_nlink == 0)) error = EWOULDBLOCK;
    if (error == 0) return lock;
    ::close(lock);
    errno = error;
    return -1;
}

/// The names in a folder, without their suffix, of the files that have one.
std::vector<QByteArray> namesIn(const QByteArray &folder, const QByteArray &suffix) {
    std::vector<QByteArray> names;
    DIR *entries = ::opendir(folder.constData());
    if (!entries) return names;
    while (const dirent *entry =
               ::readdir(entries)) {  // NOLINT(concurrency-mt-unsafe): the stream is our own
        QByteArray name = entry->d_name;
        if (!name.endsWith(suffix) || name.startsWith('.')) continue;
        name.chop(suffix.size());
        names.push_back(name);
    }
    ::closedir(entries);
    return names;
}

/// Titles are nobody else's business.
std::optional<QString> makeFolderForUser(const QString &folder) {
    const QByteArray path = fileNameBytes(folder);
    if (auto reason = makeFolder(fileNameText(path.left(path.lastIndexOf('/'))))) return reason;
    if (::mkdir(path.constData(), S_IRWXU) != 0 && errno != EEXIST) return reasonOfSystem(errno);
    struct stat status = {};
    if (::stat(path.constData(), &status) != 0) return reasonOfSystem(errno);
    if (!S_ISDIR(status.st_mode)) return reasonOfSystem(ENOTDIR);
    if (status.st_uid != ::geteuid()) return translated("the folder %1 is somebody else’s").arg(folder);
    // A folder that a link leads to is meant for other things as well.
    struct stat named = {};
    if (::lstat(path.constData(), &named) != 0) return reasonOfSystem(errno);
    if (!S_ISDIR(named.st_mode)) return std::nullopt;
    // Where the file system has no permissions, there is nothing to be done.
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0) ::chmod(path.constData(), S_IRWXU);
    return std::nullopt;
}

using Content = std::variant<KeptOutline, RecoveryFile::Unreadable>;

/// @param head the first line, from which an outline could be read or not
Content contentOf(std::optional<KeptOutline> outline, const QByteArray &head) {
    if (outline) return std::move(*outline);
    if (isHeadOfLaterVersion(head))
        return RecoveryFile::Unreadable{translated("a later version of the program has kept it"), false};
    return RecoveryFile::Unreadable{translated("it is damaged, and stays there for four weeks"), true};
}

/// An outline without its entries.
Content headOf(const QByteArray &path) {
    constexpr qsizetype longest = 1 << 16;
    const int descriptor = openRegularFile(fileNameText(path));
    QByteArray start(longest, Qt::Uninitialized);
    const ssize_t count = descriptor < 0 ? -1 : ::pread(descriptor, start.data(), longest, 0);
    const int error = errno;
    if (descriptor >= 0) ::close(descriptor);
    if (count < 0) return RecoveryFile::Unreadable{reasonOfSystem(error), false};
    const qsizetype end = start.first(count).indexOf('\n');
    const QByteArray head = start.first(std::max<qsizetype>(end, 0));
    return contentOf(readHeadOfKeptOutline(head), head);
}

bool isOlderThan(const QByteArray &path, qint64 milliseconds) {
    struct stat status = {};
    constexpr qint64 inASecond = 1000;
    return ::lstat(path.constData(), &status) == 0 && status.st_mtim.tv_sec < milliseconds / inASecond;
}

/// @param path without the suffix
bool isForgotten(const QByteArray &path, qint64 now) {
    const QByteArray outline = path + outlineSuffix;
    const Content content = headOf(outline);
    if (const auto *head = std::get_if<KeptOutline>(&content))
        return isMissingForLong(head->pdf, path + lockSuffix, now);
    return std::get<RecoveryFile::Unreadable>(content).isDamaged && isOlderThan(outline, now - fourWeeks);
}

}  // namespace

std::variant<std::unique_ptr<RecoveryFile>, QString> RecoveryFile::make(const QString &folder,
                                                                        const QString &pdf) {
    if (auto reason = makeFolderForUser(folder)) return *reason;
    const QByteArray start = fileNameBytes(folder) + '/' + startOfNames(pdf);
    constexpr int attempts = 100;
    for (int i = 0; i < attempts; ++i) {
        constexpr int base = 36;
        const QByteArray path = start + QByteArray::number(QRandomGenerator::global()->generate(), base);
        const int lock = takeLock(path + lockSuffix, O_EXCL);
        if (lock >= 0) return std::unique_ptr<RecoveryFile>(new RecoveryFile(path, lock, pdf));
        if (errno != EEXIST && errno != EWOULDBLOCK) break;
    }
    return reasonOfSystem(errno);
}

/// @return null, with errno set, where it can't be had: EWOULDBLOCK where it belongs to somebody, or is gone
std::unique_ptr<RecoveryFile> RecoveryFile::take(const QByteArray &path, const QString &pdf) {
    const int lock = takeLock(path + lockSuffix, 0);
    if (lock < 0) return nullptr;
    return std::unique_ptr<RecoveryFile>(new RecoveryFile(path, lock, pdf));
}

RecoveryFile::LeftBehind RecoveryFile::leftBehindFor(const QString &folder, const QString &pdf) {
    const QByteArray place = fileNameBytes(folder);
    const QByteArray start = startOfNames(pdf);
    OpenedPdf opened(pdf);
    struct Found {
        std::pair<int, qint64> age;  // the order, then the date
        std::unique_ptr<RecoveryFile> file;
    };
    std::vector<Found> found;
    LeftBehind left;
    if (::access(place.constData(), R_OK | X_OK) != 0 && errno != ENOENT && errno != ENOTDIR)
        left.problems.append(folder + QLatin1String(": ") + reasonOfSystem(errno));
    for (const QByteArray &name : namesIn(place, outlineSuffix)) {
        const QByteArray path = place + '/' + name;
        const Content beginning = headOf(path + outlineSuffix);
        const auto *head = std::get_if<KeptOutline>(&beginning);
        if (head ? !opened.isMeantBy(*head) : !name.startsWith(start)) continue;
        auto file = take(path, head ? head->pdf : pdf);
        if (!file && errno != EWOULDBLOCK)
            left.problems.append(fileNameText(path + lockSuffix) + QLatin1String(": ") +
                                 reasonOfSystem(errno));
        if (!file || !fileExists(fileNameText(path + outlineSuffix))) continue;
        const Content content = file->read();
        if (const auto *outline = std::get_if<KeptOutline>(&content)) {
            if (opened.isMeantBy(*outline))
                found.push_back({{outline->order, outline->date}, std::move(file)});
            continue;
        }
        const auto &problem = std::get<Unreadable>(content);
        const QString at = problem.isDamaged ? file->setAside() : fileNameText(path + outlineSuffix);
        left.problems.append(at + QLatin1String(": ") + problem.reason);
    }
    std::ranges::stable_sort(found, std::greater(), &Found::age);
    for (Found &each : found)
        left.files.push_back(std::move(each.file));
    return left;
}

void RecoveryFile::removeForgotten(const QString &folder, qint64 now) {
    const QByteArray place = fileNameBytes(folder);
    for (const QByteArray &name : namesIn(place, outlineSuffix)) {
        const QByteArray path = place + '/' + name;
        // Who takes a file hides it from others meanwhile. So that is done last, and may come too late.
        if (!isForgotten(path, now)) continue;
        const auto file = take(path, {});
        if (file && isForgotten(path, now)) file->remove();
    }
    for (const QByteArray &name : namesIn(place, damagedSuffix)) {
        const QByteArray path = place + '/' + name + damagedSuffix;
        if (isOlderThan(path, now - fourWeeks)) ::unlink(path.constData());
    }
    for (const QByteArray &name : namesIn(place, lockSuffix)) {
        const QByteArray path = place + '/' + name;
        // Whoever gives one of these back removes it.
        if (!fileExists(fileNameText(path + outlineSuffix))) take(path, {});
    }
}

int RecoveryFile::latestOrder(const QString &folder) {
    const QByteArray place = fileNameBytes(folder);
    int latest = 0;
    for (const QByteArray &name : namesIn(place, outlineSuffix)) {
        const Content content = headOf(place + '/' + name + outlineSuffix);
        if (const auto *head = std::get_if<KeptOutline>(&content)) latest = std::max(latest, head->order);
    }
    return std::min(latest, std::numeric_limits<int>::max() - 1);
}

RecoveryFile::~RecoveryFile() {
    // Only who has the lock may remove it; who waits for it sees that it is gone.
    if (!fileExists(fileNameText(path_ + outlineSuffix))) ::unlink((path_ + lockSuffix).constData());
    ::close(lock_);
}

bool RecoveryFile::isThere() const {
    struct stat own = {};
    struct stat there = {};
    return ::fstat(lock_, &own) == 0 && ::lstat((path_ + lockSuffix).constData(), &there) == 0 &&
           own.st_dev == there.st_dev && own.st_ino == there.st_ino;
}

std::optional<QString> RecoveryFile::write(const KeptOutline &outline) {
    FileReplacement file(fileNameText(path_ + outlineSuffix));
    qint64 size = 0;
    bool isWritten = file.start();
    if (isWritten) {
        ::fchmod(file.descriptor(), forOwner);
        writeKeptOutline(outline, [&](const QByteArray &bytes) {
            size += bytes.size();
            isWritten = isWritten && size <= largest && file.write(bytes) == bytes.size();
        });
    }
    if (size > largest) return translated("the outline is too large");
    // What the disk has not confirmed is there all the same, and outlives all but a power failure.
    if (!isWritten || file.commit() == FileReplacement::Outcome::NotWritten) return file.errorString();
    pdf_ = outline.pdf;
    return std::nullopt;
}

std::variant<KeptOutline, RecoveryFile::Unreadable> RecoveryFile::read() const {
    const int descriptor = openRegularFile(fileNameText(path_ + outlineSuffix));
    if (descriptor < 0) return Unreadable{reasonOfSystem(errno), false};
    struct stat status = {};
    const bool isTooLarge = ::fstat(descriptor, &status) == 0 && status.st_size > largest;
    using Read = std::variant<QByteArray, QString>;
    const Read content = isTooLarge ? Read(translated("it is too large")) : readDescriptor(descriptor);
    ::close(descriptor);
    if (const auto *reason = std::get_if<QString>(&content)) return Unreadable{*reason, false};
    const QByteArray &text = std::get<QByteArray>(content);
    return contentOf(readKeptOutline(text), text.first(std::max<qsizetype>(text.indexOf('\n'), 0)));
}

/// Takes it out of the way of what is offered. @return where it is then
QString RecoveryFile::setAside() {
    const QByteArray from = path_ + outlineSuffix;
    const QByteArray to = path_ + damagedSuffix;
    return fileNameText(::rename(from.constData(), to.constData()) == 0 ? to : from);
}

std::optional<QString> RecoveryFile::remove() {
    if (::unlink((path_ + outlineSuffix).constData()) == 0 || errno == ENOENT) return std::nullopt;
    return reasonOfSystem(errno);
}

}  // namespace leafwright
