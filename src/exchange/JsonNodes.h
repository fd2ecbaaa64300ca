#pragma once

#include "exchange/OutlineFormat.h"

namespace leafwright {

// An array of nodes {"title", "pageLabel", "pageIndex", "point", "bold", "italic", "color", "open", "action",
// "entry", "children"}; the label and the 0-based index are null for an entry that leads to no page, "entry"
// is the object number in the file.

void writeJsonNodes(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink);

/// A node needs a "title"; its page is its "pageLabel" or, without one, that of its "pageIndex"; with neither
/// it leads to no page. With the "entry" of one of the file, it is that entry but for what the node says.
/// Keys that nodes do not have are passed over, with a notice: other versions may have them.
OutlineTree readJsonNodes(const QByteArray &text, const OutlineSource &source);

bool looksLikeJsonNodes(QByteArrayView text);

}  // namespace leafwright
