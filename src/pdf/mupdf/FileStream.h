#pragma once

#include "pdf/MemoryBudget.h"

#include <mupdf/fitz.h>

#include <QByteArray>
#include <QString>

#include <atomic>
#include <functional>
#include <memory>

namespace leafwright::mupdf {

/// A file that is kept open, and read at explicit offsets so that any number of streams share it.
/// Never mapped into memory: another program may truncate it.
///
/// What stands in front of the header ("%PDF-") is passed over: all offsets count from there, as the offsets
/// in the file do (ISO 32000-1, 7.5.2 and annex H.3.4.1). What stands behind the PDF, MuPDF does not see.
class FileHandle {
public:
    /// Opens a regular file for reading. Throws std::system_error when the system refuses.
    explicit FileHandle(const QString &path);
    /// A regular file that is open for reading already; the caller keeps its descriptor.
    /// @param password see password()
    explicit FileHandle(int descriptor, QByteArray password = {});
    ~FileHandle();
    FileHandle(const FileHandle &) = delete;
    FileHandle &operator=(const FileHandle &) = delete;

    /// The size in bytes when it was opened.
    qint64 size() const { return size_; }
    /// How many bytes stand in front of the header; `size()` is without them.
    qint64 start() const { return start_; }
    /// Where the PDF ends: `size()`, unless other data stand behind it.
    qint64 end() const { return end_; }
    /// For the system's own means of copying, by the offsets of the system.
    int descriptor() const { return descriptor_; }
    /// What everyone who opens the file is to try where it is locked, in UTF-8; null for nothing.
    const QByteArray &password() const { return password_; }
    /// Reads up to `length` bytes. Returns how many, 0 at the end, -1 with errno set on failure.
    qint64 readAt(qint64 offset, void *data, qint64 length) const;
    /// The same; throws ReadProblem on failure.
    qint64 readOrThrow(qint64 offset, void *data, qint64 length) const;
    /// What everyone who reads this file may take.
    const std::shared_ptr<MemoryBudget> &memory() const { return memory_; }

private:
    /// Takes the descriptor over.
    void adopt();
    bool findHeader();
    bool findEnd();

    int descriptor_;
    QByteArray password_;
    qint64 size_ = 0;
    qint64 start_ = 0;
    qint64 end_ = 0;
    std::shared_ptr<MemoryBudget> memory_ = std::make_shared<MemoryBudget>();
};

/// Lets reads fail, for tests, as those of a failing disk do. One at a time; files are read by no other
/// thread while it comes and goes.
class FailingReads {
public:
    /// @param errorAt asked before every read of any file, from any thread: the error's number, 0 for none
    explicit FailingReads(std::function<int(qint64 offset, qint64 length)> errorAt);
    ~FailingReads();
    FailingReads(const FailingReads &) = delete;
    FailingReads &operator=(const FailingReads &) = delete;

private:
    friend class FileHandle;
    static std::atomic<const FailingReads *> current;
    std::function<int(qint64, qint64)> errorAt_;
};

/// A MuPDF stream over the file, with a position and buffer of its own. Owned by the caller.
/// Must be called within guarded().
/// @param hidden the offset of a byte that reads as "#", so that the name it is part of is another; -1 for
/// none
fz_stream *openFileStream(fz_context *ctx, const std::shared_ptr<const FileHandle> &file, qint64 hidden = -1);

}  // namespace leafwright::mupdf
