#pragma once

#include "pdf/PageImage.h"
#include "pdf/RenderRequest.h"
#include "pdf/mupdf/Reader.h"

#include <stop_token>

namespace leafwright::mupdf {

/// Draws part of a page on white, with the annotations that have an appearance. What is broken in the
/// content ends it, as does a time limit; what was drawn by then is kept.
/// @param stop ends the drawing early, with a null image
/// @return an opaque image of the size of the clip; a null one when it is empty or too large
PageImage renderPage(Reader &reader, const RenderRequest &request, const std::stop_token &stop);

/// A white image of the size of the clip; a null one when it is empty or too large.
PageImage blankImage(const QRect &clip);

}  // namespace leafwright::mupdf
