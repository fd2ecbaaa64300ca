#pragma once

#include "pdf/PDFLink.h"
#include "pdf/mupdf/Reader.h"

namespace leafwright::mupdf {

/// The links of a page that lead into this document or to an address, in the file's order. Broken ones, and
/// those that lead elsewhere, are left out.
std::vector<PDFLink> readLinks(Reader &reader, int pageIndex);

}  // namespace leafwright::mupdf
