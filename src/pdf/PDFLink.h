#pragma once

#include "pdf/PDFOutline.h"

namespace leafwright {

/// An area of a page that leads somewhere when it is clicked (ISO 32000-1, 12.5.6.5).
struct PDFLink {
    Rect bounds;                                ///< In page space; not empty.
    std::optional<PDFDestination> destination;  ///< A place in this document.
    QString uri;  ///< An address on the web or elsewhere; null where there is a destination.

    friend bool operator==(const PDFLink &, const PDFLink &) = default;
};

}  // namespace leafwright
