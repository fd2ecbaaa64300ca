#pragma once

#include "pdf/DocumentMarks.h"
#include "pdf/mupdf/Reader.h"

namespace leafwright::mupdf {

/// The headings and tables of contents of the document's structure (ISO 32000-1, 14.7), in its order:
/// elements H, H1 to H6, TOC and TOCI, and those whose type is mapped to one. Structures of any depth and
/// with loops are walked, up to half a million objects of them.
DocumentStructure readStructure(Reader &reader);

}  // namespace leafwright::mupdf
