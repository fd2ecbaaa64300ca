#pragma once

#include "exchange/OutlineFormat.h"

namespace leafwright {

// A list of lists in Markdown (CommonMark), a line an entry, with the page's label as the link's title:
//
//     - [Preface](#page=1 "i")
//     - [Chapter One](#page=5 "1")
//       - [First Section](#page=7 "3")
//     - Part without a page

void writeMarkdownOutline(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink);

/// Reads a line an item of a list; one goes below the nearest before it that is indented less. Other text is
/// refused.
OutlineTree readMarkdownOutline(const QByteArray &text, const OutlineSource &source);

}  // namespace leafwright
