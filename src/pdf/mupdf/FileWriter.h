#pragma once

#include "pdf/PDFError.h"
#include "pdf/PDFOutline.h"
#include "pdf/mupdf/Reader.h"

#include <QIODevice>

#include <functional>
#include <optional>

namespace leafwright::mupdf {

/// Writes the reader's file with the outline in place of its own: the original bytes and one appended
/// section (ISO 32000-1, 7.5.6) or, where the file had to be repaired, the whole file new.
/// The reader is spent afterwards. `progress` gets the index of each page, in order.
/// Returns why the writing failed; throws Error when MuPDF fails.
std::optional<PDFError> writeWithOutline(Reader &reader, const PDFOutline &root, QIODevice &out,
                                         const std::function<void(int)> &progress);

}  // namespace leafwright::mupdf
