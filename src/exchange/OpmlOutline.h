#pragma once

#include "exchange/OutlineFormat.h"

namespace leafwright {

// OPML 2.0, an element an entry, with two attributes of our own for the page:
//
//     <outline text="Chapter One" page="5" pageLabel="1">
//       <outline text="Web" type="link" url="https://example.org/"/>
//     </outline>

/// What XML has no spelling for, control characters and the like, becomes U+FFFD.
void writeOpmlOutline(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink);

/// A document that declares anything is refused, as entities may grow without bounds.
OutlineTree readOpmlOutline(const QByteArray &text, const OutlineSource &source);

bool looksLikeOpmlOutline(QByteArrayView text);

}  // namespace leafwright
