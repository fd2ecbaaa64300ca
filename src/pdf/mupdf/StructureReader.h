#pragma once

#include "pdf/DocumentMarks.h"
#include "pdf/mupdf/Reader.h"

namespace leafwright::mupdf {

/// The headings of the document's structure (ISO 32000-1, 14.7), in its order: elements H and H1 to H6, and
/// those whose type is mapped to one. Structures of any depth and with loops are walked, up to half a million
/// objects of them.
std::vector<StructureElement> readHeadings(Reader &reader);

}  // namespace leafwright::mupdf
