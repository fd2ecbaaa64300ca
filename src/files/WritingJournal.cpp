#include "files/WritingJournal.h"

#include "files/FileWriting.h"
#include "files/UnfinishedFiles.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <sys/stat.h>
#include <unistd.h>

namespace leafwright {

namespace {

// A note is its kind, what is to be known, and a null character, which no path contains.
constexpr char unfinished = 'U';
constexpr char replacement = 'R';

std::atomic<int> journal = -1;

void note(const QByteArray &text) {
    // What can't be noted is found by its age some day, or told less exactly; neither is worth failing for.
    writeWhole(journal, text.constData(), text.size() + 1);
}

QByteArray pathOf(int folder) {
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(folder);
    QByteArray path(PATH_MAX, Qt::Uninitialized);
    path.truncate(std::max(ssize_t{0}, ::readlink(link.constData(), path.data(), PATH_MAX)));
    return path;
}

/// Tells a file from all others that are there.
QByteArray identity(const struct stat &status) {
    return QByteArray::number(quint64{status.st_dev}) + ' ' + QByteArray::number(quint64{status.st_ino}) +
           ' ';
}

bool isInPlace(const QByteArray &identityAndPath) {
    const QByteArray path = identityAndPath.split(' ').mid(2).join(' ');
    struct stat status = {};
    return ::stat(path.constData(), &status) == 0 && identityAndPath.startsWith(identity(status));
}

QByteArrayList notesIn(int descriptor) {
    QByteArray text;
    QByteArray block(1 << 12, Qt::Uninitialized);
    for (;;) {
        const ssize_t count =
            ::pread(descriptor, block.data(), static_cast<size_t>(block.size()), text.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        text.append(block.constData(), count);
    }
    text.truncate(text.lastIndexOf('\0') + 1);
    return text.split('\0');
}

}  // namespace

void keepWritingJournal(int descriptor) {
    journal = descriptor;
}

void noteUnfinishedFile(int folder, const QByteArray &name) {
    if (journal >= 0) note(unfinished + pathOf(folder) + '/' + name);
}

void noteReplacement(int file, const QByteArray &path) {
    struct stat status = {};
    if (journal >= 0 && ::fstat(file, &status) == 0) note(replacement + identity(status) + path);
}

QByteArrayList settleWritingJournal(int descriptor) {
    QByteArrayList inPlace;
    for (const QByteArray &text : notesIn(descriptor)) {
        const QByteArray what = text.mid(1);
        if (text.startsWith(unfinished)) removeUnfinishedFile(what);
        if (text.startsWith(replacement) && isInPlace(what)) inPlace.append(what.split(' ').mid(2).join(' '));
    }
    return inPlace;
}

}  // namespace leafwright
