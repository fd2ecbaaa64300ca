#include "pdf/mupdf/OutputFile.h"

#include "pdf/mupdf/Context.h"
#include "texts/Translated.h"

#include <cerrno>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace leafwright::mupdf {

namespace {

constexpr Translated translated{"OutputFile"};

constexpr qsizetype bufferSize = 1 << 16;
constexpr qint64 pieceSize = 1 << 24;  // of what the system copies between two reports

[[noreturn]] void throwSystemError() {
    throw std::system_error(errno, std::generic_category());
}

void writeWhole(int descriptor, const char *data, qint64 size, qint64 offset) {
    while (size > 0) {
        const ssize_t count = ::pwrite(descriptor, data, static_cast<size_t>(size), offset);
        if (count < 0 && errno == EINTR) continue;
        if (count == 0) errno = EIO;
        if (count <= 0) throwSystemError();
        data += count;
        size -= count;
        offset += count;
    }
}

void setSize(int descriptor, qint64 size) {
    int result = 0;
    do {
        result = ::ftruncate(descriptor, size);
    } while (result < 0 && errno == EINTR);
    if (result < 0) throwSystemError();
}

/// Where the next data or the next hole begins, `size` where none does. A file system that knows no holes has
/// nothing but data.
qint64 seek(int descriptor, qint64 offset, qint64 size, int whence) {
    const off_t found = ::lseek(descriptor, offset, whence);
    if (found >= 0) return std::min<qint64>(found, size);
    if (errno == ENXIO) return size;
    if (errno == EINVAL) return whence == SEEK_DATA ? offset : size;
    throwSystemError();
}

}  // namespace

OutputFile::OutputFile(int descriptor, std::function<void(qint64)> progress)
    : descriptor_(descriptor), progress_(std::move(progress)) {}

void OutputFile::write(QByteArrayView bytes) {
    buffer_ += bytes;
    if (buffer_.size() >= bufferSize) flush();
}

void OutputFile::flush() {
    writeWhole(descriptor_, buffer_.constData(), buffer_.size(), flushed_);
    flushed_ += buffer_.size();
    buffer_.clear();
    progress_(flushed_);
}

void OutputFile::restart() {
    buffer_.clear();
    flushed_ = 0;
    setSize(descriptor_, 0);
}

void OutputFile::copyFrom(const FileHandle &file, qint64 size) {
    if (!clone(file)) {
        for (qint64 offset = 0; offset < size;) {
            const qint64 begin = seek(file.descriptor(), offset, size, SEEK_DATA);
            const qint64 end = begin < size ? seek(file.descriptor(), begin, size, SEEK_HOLE) : size;
            copyData(file, begin, end);
            offset = end;
        }
    }
    // What is missing now looked like a hole.
    struct stat status = {};
    if (::fstat(file.descriptor(), &status) != 0) throwSystemError();
    if (status.st_size < size) {
        throw Error(translated("the original was cut short by another program").toStdString());
    }
    setSize(descriptor_, size);
    flushed_ = size;
    progress_(flushed_);
}

/// Lets both files share their bytes. @return false where the file system can't
bool OutputFile::clone(const FileHandle &file) const {
    return ::ioctl(descriptor_, FICLONE, file.descriptor()) == 0;
}

void OutputFile::copyData(const FileHandle &file, qint64 begin, qint64 end) {
    while (begin < end) {
        const qint64 count = copyPiece(file, begin, end - begin);
        if (count == 0) return;  // cut short, which shows at the end
        begin += count;
        progress_(begin);
    }
}

/// Copies up to so many bytes. @return how many, 0 at the end of the file
qint64 OutputFile::copyPiece(const FileHandle &file, qint64 offset, qint64 size) {
    if (systemCopies_) {
        off_t from = offset;
        off_t to = offset;
        const ssize_t count = ::copy_file_range(file.descriptor(), &from, descriptor_, &to,
                                                static_cast<size_t>(std::min(size, pieceSize)), 0);
        if (count >= 0) return count;
        // Across file systems, say. What is wrong with a file shows when it is read.
        systemCopies_ = false;
    }
    QByteArray buffer(std::min<qint64>(size, bufferSize), Qt::Uninitialized);
    const qint64 count = file.readAt(offset - file.start(), buffer.data(), buffer.size());
    if (count < 0) throwSystemError();
    writeWhole(descriptor_, buffer.constData(), count, offset);
    return count;
}

}  // namespace leafwright::mupdf
