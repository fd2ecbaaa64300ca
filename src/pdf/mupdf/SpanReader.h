#pragma once

#include "pdf/TextSpan.h"
#include "pdf/mupdf/Reader.h"

namespace leafwright::mupdf {

/// Reads the text of a page as spans, in content order; those of blanks alone are left out, and so is what
/// a page has beyond 200,000 characters.
std::vector<TextSpan> readSpans(Reader &reader, int pageIndex);

}  // namespace leafwright::mupdf
