#pragma once

#include "exchange/OutlineFormat.h"

namespace leafwright {

// A page of HTML whose lists are the outline, an item an entry, with the page's label as the link's title:
//
//     <ul>
//     <li><a href="#page=5" title="1">Chapter One</a>
//     <ul>
//     <li><a href="#page=7" title="3">First Section</a></li>
//     </ul>
//     </li>
//     </ul>

void writeHtmlOutline(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink);

/// Reads the items of all lists (ul, ol); what stands outside of lists, and the looks of a text, are passed
/// over.
OutlineTree readHtmlOutline(const QByteArray &text, const OutlineSource &source);

bool looksLikeHtmlOutline(QByteArrayView text);

}  // namespace leafwright
