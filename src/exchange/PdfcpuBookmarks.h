#pragma once

#include "exchange/OutlineFormat.h"

namespace leafwright {

// The JSON that `pdfcpu bookmarks export` writes and `import` reads: an object with an array "bookmarks",
// whose elements have a "title", the number of their "page" from 1, and may have "bold", "italic", a "color"
// with "R", "G" and "B" from 0 to 1, and "kids".

/// Entries without a page have the number 0.
void writePdfcpuBookmarks(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink);

OutlineTree readPdfcpuBookmarks(const QByteArray &text, const OutlineSource &source);

bool looksLikePdfcpuBookmarks(QByteArrayView text);

}  // namespace leafwright
