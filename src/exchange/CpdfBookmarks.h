#pragma once

#include "exchange/OutlineFormat.h"

namespace leafwright {

// What `cpdf -list-bookmarks -utf8` prints and `-add-bookmarks` reads, a line an entry:
//
//     0 "Chapter One" 5 open
//     1 "First Section" 7 "[7 /XYZ 72 700 null]"
//
// the level from 0, the title, the number of the page from 1 (0 for none), whether its children are shown,
// and the spot. Within quotes stand "\"", "\\" and "\n".

void writeCpdfBookmarks(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink);

/// Of destinations, spots are read; for all others there is the page.
OutlineTree readCpdfBookmarks(const QByteArray &text, const OutlineSource &source);

bool looksLikeCpdfBookmarks(QByteArrayView text);

}  // namespace leafwright
