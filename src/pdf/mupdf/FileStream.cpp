#include "pdf/mupdf/FileStream.h"

#include "files/FileReading.h"
#include "pdf/mupdf/Context.h"
#include "pdf/mupdf/PdfEnd.h"

#include <QByteArray>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <new>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace leafwright::mupdf {

FileHandle::FileHandle(const QString &path) : descriptor_(openRegularFile(path)) {
    adopt();
}

FileHandle::FileHandle(int descriptor, QByteArray password)
    : descriptor_(::fcntl(descriptor, F_DUPFD_CLOEXEC, 0)), password_(std::move(password)) {
    adopt();
}

void FileHandle::adopt() {
    if (descriptor_ < 0) throw std::system_error(errno, std::generic_category());
    struct stat status = {};
    bool readable = ::fstat(descriptor_, &status) == 0;
    if (readable) {
        size_ = status.st_size;
        readable = findHeader() && findEnd();
    }
    if (readable) return;
    const int failure = errno;
    ::close(descriptor_);
    throw std::system_error(failure, std::generic_category());
}

/// Readers look for the header in the first 1024 bytes; so do we. @return whether they could be read
bool FileHandle::findHeader() {
    constexpr qsizetype searched = 1024;
    QByteArray text(searched, Qt::Uninitialized);
    const qint64 count = readAt(0, text.data(), text.size());
    if (count < 0) return false;
    text.truncate(count);
    start_ = std::max<qint64>(0, text.indexOf("%PDF-"));
    size_ -= start_;
    return true;
}

/// @return whether it could be read
bool FileHandle::findEnd() {
    const auto read = [this](qint64 offset, void *data, qint64 length) {
        return readAt(offset, data, length);
    };
    const std::optional<qint64> found = findPdfEnd(read, size_);
    end_ = found.value_or(size_);
    return found.has_value();
}

FileHandle::~FileHandle() {
    ::close(descriptor_);
}

qint64 FileHandle::readAt(qint64 offset, void *data, qint64 length) const {
    if (const FailingReads *failing = FailingReads::current) {
        if (const int error = failing->errorAt_(offset, length)) {
            errno = error;
            return -1;
        }
    }
    ssize_t count = 0;
    do {
        count = ::pread(descriptor_, data, static_cast<size_t>(length), start_ + offset);
    } while (count < 0 && errno == EINTR);
    return count;
}

qint64 FileHandle::readOrThrow(qint64 offset, void *data, qint64 length) const {
    const qint64 count = readAt(offset, data, length);
    if (count < 0) throw ReadProblem(readFailureError(errno));
    return count;
}

std::atomic<const FailingReads *> FailingReads::current = nullptr;

FailingReads::FailingReads(std::function<int(qint64, qint64)> errorAt) : errorAt_(std::move(errorAt)) {
    current = this;
}

FailingReads::~FailingReads() {
    current = nullptr;
}

namespace {

struct StreamState {
    std::shared_ptr<const FileHandle> file;
    qint64 hidden;
    unsigned char buffer[16384];
};

// fz_stream: `pos` is the file offset of the buffer's end `wp`; `rp` is the next byte to hand out.

int nextBytes(fz_context *ctx, fz_stream *stream, size_t /*max*/) {
    auto *state = static_cast<StreamState *>(stream->state);
    const qint64 left = std::max<qint64>(0, state->file->end() - stream->pos);
    const qint64 wanted = std::min<qint64>(left, sizeof state->buffer);
    const qint64 count = wanted == 0 ? 0 : state->file->readAt(stream->pos, state->buffer, wanted);
    const bool isCutShort = count == 0 && wanted > 0;
    if (count < 0 || isCutShort) {
        Context::of(ctx).noteReadFailure(isCutShort ? cutShort : errno);
        // The one error that MuPDF never takes for the end of the file or for damage, which it would repair.
        fz_throw(ctx, FZ_ERROR_TRYLATER, "read error");
    }
    if (state->hidden >= stream->pos && state->hidden < stream->pos + count)
        state->buffer[state->hidden - stream->pos] = '#';
    stream->rp = state->buffer;
    stream->wp = state->buffer + count;
    stream->pos += count;
    return count == 0 ? EOF : *stream->rp++;
}

void seekTo(fz_context *ctx, fz_stream *stream, int64_t offset, int whence) {
    auto *state = static_cast<StreamState *>(stream->state);
    const int64_t target = whence == SEEK_END ? state->file->end() + offset : offset;
    if (target < 0) fz_throw(ctx, FZ_ERROR_GENERIC, "cannot seek before the start of the file");
    if (stream->wp && target <= stream->pos && target >= stream->pos - (stream->wp - state->buffer)) {
        stream->rp = stream->wp - (stream->pos - target);
        return;
    }
    stream->pos = target;
    stream->rp = stream->wp = state->buffer;
}

void dropState(fz_context * /*ctx*/, void *state) {
    delete static_cast<StreamState *>(state);
}

}  // namespace

fz_stream *openFileStream(fz_context *ctx, const std::shared_ptr<const FileHandle> &file, qint64 hidden) {
    auto *state = new StreamState{file, hidden, {}};
    // On failure MuPDF hands the state to dropState before it throws.
    fz_stream *stream = fz_new_stream(ctx, state, nextBytes, dropState);
    stream->seek = seekTo;
    return stream;
}

}  // namespace leafwright::mupdf
