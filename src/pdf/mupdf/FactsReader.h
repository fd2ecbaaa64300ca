#pragma once

#include "pdf/PDFEngine.h"
#include "pdf/mupdf/Reader.h"

namespace leafwright::mupdf {

// All of these throw ReadProblem where it is not said otherwise, and Error for lists without an end.

/// Reads what can be told of a locked file too: its version, and whether it is locked or encrypted.
PDFFacts readFacts(Reader &reader);

/// Whether the file bears a digital signature.
bool isSigned(Reader &reader);

/// Whether there is at least one outline entry.
bool hasOutline(Reader &reader);

/// Boxes and rotation of the reader's pages. Nothing when one of them is no page after all. A page that can't
/// be read counts as one without boxes.
std::optional<std::vector<PageGeometry>> readGeometry(Reader &reader);

/// The labels of all of the reader's pages (ISO 32000-1, 12.4.2). ReadProblem also when they take too much
/// memory.
std::vector<QString> readLabels(Reader &reader);

/// A rectangle from its array of four numbers (ISO 32000-1, 7.9.5), an empty one where that is broken.
Rect rectOf(const Object &array);

/// A page's boxes and rotation. A missing or empty media box is US Letter, 612 by 792 points.
PageGeometry geometryOf(const Object &page);

}  // namespace leafwright::mupdf
