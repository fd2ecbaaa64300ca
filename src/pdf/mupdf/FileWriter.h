#pragma once

#include "pdf/PDFOutline.h"
#include "pdf/mupdf/Reader.h"

#include <functional>

namespace leafwright::mupdf {

/// Writes the reader's file with the outline in place of its own: the original bytes and one appended
/// section (ISO 32000-1, 7.5.6) or, where the file had to be repaired, the whole file new. What has been
/// written is read back by another reader. The reader is spent afterwards. `progress` gets the index of each
/// page, in order.
/// @param descriptor of an empty regular file, open for reading and writing; it stays the caller's
/// Throws Error when the file can't be written as it should be, std::system_error when the system refuses.
/// What is in the new file is then of no use.
void writeWithOutline(Reader &reader, const PDFOutline &root, int descriptor,
                      const std::function<void(int)> &progress);

}  // namespace leafwright::mupdf
