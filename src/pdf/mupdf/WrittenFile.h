#pragma once

#include "pdf/PDFOutline.h"
#include "pdf/mupdf/PageTree.h"

namespace leafwright::mupdf {

/// Reads a file that has just been written as if it were any other, and throws Error where that shows
/// anything but what it was to be: it opens without repair, has the same pages, and the outline that was
/// written. Throws ReadProblem when the file can't be read. Reads no more than cross-reference, pages without
/// their content, and outline.
/// @param descriptor of the file, open for reading; it stays the caller's
/// @param kids whether each entry of the page tree has to be looked at to count the pages; it need not when
/// the page tree has not been written
void expectAsWritten(int descriptor, const PageTree &pages, PageTree::Kids kids, const PDFOutline &outline);

}  // namespace leafwright::mupdf
