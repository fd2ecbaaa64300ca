#pragma once

#include "pdf/PDFOutline.h"
#include "pdf/mupdf/OutputFile.h"
#include "pdf/mupdf/Reader.h"

namespace leafwright::mupdf {

/// Writes the reader's file new, with the outline in place of its own: for a file that had to be repaired,
/// since it has no sound end to append to. The reader is spent afterwards. Throws Error when MuPDF fails, and
/// when the file is larger than 2 GiB, which MuPDF can't write.
void writeWhole(Reader &reader, const PDFOutline &root, OutputFile &out);

}  // namespace leafwright::mupdf
