#pragma once

#include "files/FileTarget.h"

namespace leafwright {

/// What has become of bytes that were to go to a stream.
struct Poured {
    bool isThere = false;  ///< All of them are.
    int error = 0;         ///< Why not, or why the disk may not have them; 0 where all is well.
};

/// Writes all that a file holds to a stream. Waits some seconds for the reader of a named pipe; the error is
/// ENXIO where none comes. Where the stream leads to a file, either all is appended to it, and the disk has
/// it, or nothing is. @param file open for reading, from its beginning
Poured pourInto(const FileTarget &stream, int file);

}  // namespace leafwright
