#pragma once

#include "pdf/PDFEngine.h"
#include "pdf/mupdf/Reader.h"

namespace leafwright::mupdf {

/// Reads all that is read of a file on opening.
PDFFacts readFacts(Reader &reader);

/// A page's boxes and rotation. A missing or empty media box is US Letter, 612 by 792 points.
PageGeometry geometryOf(const Object &page);

}  // namespace leafwright::mupdf
