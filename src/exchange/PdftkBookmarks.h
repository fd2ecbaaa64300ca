#pragma once

#include "exchange/OutlineFormat.h"

namespace leafwright {

// The bookmarks of what `pdftk dump_data_utf8` prints and `update_info_utf8` reads, four lines an entry:
//
//     BookmarkBegin
//     BookmarkTitle: Chapter One
//     BookmarkLevel: 1
//     BookmarkPageNumber: 5
//
// Pages have their numbers from 1; 0 is none.

void writePdftkBookmarks(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink);

/// Passes over all else that there may be of a file. Titles may have character references, as `dump_data`
/// has.
OutlineTree readPdftkBookmarks(const QByteArray &text, const OutlineSource &source);

bool looksLikePdftkBookmarks(QByteArrayView text);

}  // namespace leafwright
