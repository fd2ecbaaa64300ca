#pragma once

#include "support/PdfBuilder.h"

namespace leafwright::test {

/// A book of ten pages with a printed contents on the first, chapters and sections in bold type on the
/// others, and page numbers at their feet. Its outline is one entry, "Old Entry", which leads to page 2.
/// @param pageLabels the catalog's entry; empty for none
PdfBuilder makeBook(const std::string &pageLabels = {});

}  // namespace leafwright::test
