#pragma once

#include "pdf/PDFEngine.h"
#include "pdf/mupdf/Reader.h"

namespace leafwright::mupdf {

/// Reads all that is read of a file on opening but its pages: flags, version, whether it has an outline.
PDFFacts readFacts(Reader &reader);

/// Boxes and rotation of the reader's pages. Nothing when one of them is no page after all.
std::optional<std::vector<PageGeometry>> readGeometry(Reader &reader);

/// The labels of all of the reader's pages (ISO 32000-1, 12.4.2).
std::vector<QString> readLabels(Reader &reader);

/// A rectangle from its array of four numbers (ISO 32000-1, 7.9.5), an empty one where that is broken.
Rect rectOf(const Object &array);

/// A page's boxes and rotation. A missing or empty media box is US Letter, 612 by 792 points.
PageGeometry geometryOf(const Object &page);

}  // namespace leafwright::mupdf
