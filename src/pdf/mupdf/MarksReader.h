#pragma once

#include "pdf/DocumentMarks.h"
#include "pdf/mupdf/Reader.h"

namespace leafwright::mupdf {

/// Reads what the document says of itself: whether it has labels, what made it, its named destinations and
/// the headings and contents of its structure.
DocumentMarks readMarks(Reader &reader);

/// The text of marked content (ISO 32000-1, 14.6) of a page, parallel to the identifiers; null where a page
/// does not have it. Lines are joined by a blank.
/// @param identifiers at most 65,535 count
std::vector<QString> readMarkedText(Reader &reader, int pageIndex, std::vector<int> identifiers);

}  // namespace leafwright::mupdf
