#pragma once

#include "support/PdfBuilder.h"

namespace leafwright::test {

/// What a book may have beside.
struct BookExtras {
    /// Headings on the pages from the second on, below those that are there, in smaller bold type; the
    /// contents lack them. Fewer of them, and empty ones, for none.
    std::vector<std::string> headingsBelow = {};
    std::string contentsEntries = {};  ///< Further entries of the first page, such as "/Annots [...]".
};

/// A book of ten pages with a printed contents on the first, chapters and sections in bold type on the
/// others, and page numbers at their feet. Its outline is one entry, "Old Entry", which leads to page 2.
/// @param pageLabels the catalog's entry; empty for none
PdfBuilder makeBook(const std::string &pageLabels = {}, const BookExtras &extras = {});

}  // namespace leafwright::test
