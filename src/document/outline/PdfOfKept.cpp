#include "document/outline/PdfOfKept.h"

#include "files/FileName.h"
#include "files/NameTaking.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace leafwright {

namespace {

std::optional<struct stat> statusOf(const QByteArray &path) {
    struct stat status = {};
    return ::stat(path.constData(), &status) == 0 ? std::optional(status) : std::nullopt;
}

/// Whether there is no file where one was, as far as that can be told.
bool isMissing(const QString &pdf) {
    const QByteArray path = fileNameBytes(pdf);
    if (statusOf(path) || (errno != ENOENT && errno != ENOTDIR)) return false;
    const auto folder = statusOf(path.left(path.lastIndexOf('/') + 1));
    return folder && S_ISDIR(folder->st_mode);
}

/// @return nothing where there is no such line
std::optional<qint64> numberNotedIn(int descriptor) {
    std::array<char, 32> text = {};
    const ssize_t count = ::pread(descriptor, text.data(), text.size(), 0);
    const QByteArray line(text.data(), std::max<ssize_t>(count, 0));
    return line.endsWith('\n') ? std::optional(line.trimmed().toLongLong()) : std::nullopt;
}

void writeNote(int descriptor, const QByteArray &line) {
    if (::ftruncate(descriptor, 0) != 0) return;
    [[maybe_unused]] const ssize_t written =
        ::pwrite(descriptor, line.constData(), static_cast<size_t>(line.size()), 0);
}

}  // namespace

OpenedPdf::OpenedPdf(const QString &path) : path_(path), status_(statusOf(fileNameBytes(path))) {}

bool OpenedPdf::isMeantBy(const KeptOutline &head) {
    if (head.pdf == path_) return true;
    if (!status_) return false;
    const auto there = statusOf(fileNameBytes(head.pdf));
    if (there && isSameFile(*there, *status_)) return true;
    if (!hasContentOf(head)) return false;
    // It may be that file, moved or renamed; unless that is still in its place, and this a copy.
    const auto inPlace = there ? markOfFile(head.pdf) : std::nullopt;
    return !inPlace || !inPlace->isOfSameContentAs(head.file);
}

bool OpenedPdf::hasContentOf(const KeptOutline &head) {
    if (head.file.size != status_->st_size) return false;
    if (!mark_) mark_ = markOfFile(path_).value_or(FileMark());
    return mark_->isOfSameContentAs(head.file);
}

bool isMissingForLong(const QString &pdf, const QByteArray &note, qint64 now) {
    constexpr mode_t forOwner = S_IRUSR | S_IWUSR;
    const int descriptor = ::open(note.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, forOwner);
    if (descriptor < 0) return false;
    const bool isGone = isMissing(pdf);
    const std::optional<qint64> since = numberNotedIn(descriptor);
    const bool isSinceLater = since && *since > now;  // by a clock that was wrong
    if (isGone && (!since || isSinceLater)) writeNote(descriptor, QByteArray::number(now) + '\n');
    if (!isGone && since) writeNote(descriptor, {});
    ::close(descriptor);
    return isGone && since && *since < now - fourWeeks;
}

}  // namespace leafwright
