#pragma once

#include "pdf/PDFOutline.h"
#include "pdf/mupdf/Reader.h"

namespace leafwright::mupdf {

/// Reads the document's outline (ISO 32000-1, 12.3.3) into a root without a label.
///
/// Every entry that the links lead to is read once, at any depth and in any number: a link back to an
/// entry that was already read ends its list, and no other entry is left out. Throws ReadProblem when one of
/// them can't be read or they take too much memory, Error when they have no end.
std::unique_ptr<PDFOutline> readOutline(Reader &reader);

}  // namespace leafwright::mupdf
