#pragma once

#include "pdf/mupdf/FileStream.h"

#include <QByteArray>

#include <functional>

namespace leafwright::mupdf {

/// A new file that is written from its beginning to its end. Its functions throw std::system_error when the
/// system refuses.
class OutputFile {
public:
    /// @param descriptor an empty regular file, open for reading and writing; the caller's
    /// @param progress gets the number of bytes that have been written, now and then
    OutputFile(int descriptor, std::function<void(qint64)> progress);

    /// How many bytes there are so far.
    qint64 position() const { return flushed_ + buffer_.size(); }
    void write(QByteArrayView bytes);
    /// Copies the beginning of a file to that of this one, which must be empty yet. What is a hole in the one
    /// is a hole in the other, and where the file system can share the bytes, it does. Throws Error when
    /// another program has cut the file short.
    /// @param size counted from the file's very beginning, bytes in front of the header included
    void copyFrom(const FileHandle &file, qint64 size);
    /// Hands to the system what has been kept back.
    void flush();
    /// Empties the file, to begin again.
    void restart();

private:
    bool clone(const FileHandle &file) const;
    void copyData(const FileHandle &file, qint64 begin, qint64 end);
    qint64 copyPiece(const FileHandle &file, qint64 offset, qint64 size);

    int descriptor_;
    std::function<void(qint64)> progress_;
    qint64 flushed_ = 0;
    QByteArray buffer_;
    bool systemCopies_ = true;  ///< Whether the system can copy between these two files.
};

}  // namespace leafwright::mupdf
