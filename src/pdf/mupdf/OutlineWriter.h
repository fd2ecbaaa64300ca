#pragma once

#include "pdf/PDFOutline.h"
#include "pdf/mupdf/Reader.h"

namespace leafwright::mupdf {

/// Gives the document a new outline (ISO 32000-1, 12.3.3) in memory, in place of its own.
///
/// Entries are written closed. One without a destination takes over the action of the foreign entry it
/// stands for, if any. A destination whose page the document does not have is left out.
void installOutline(Reader &reader, const PDFOutline &root);

}  // namespace leafwright::mupdf
