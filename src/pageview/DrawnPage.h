#pragma once

#include "pdf/PDFDocument.h"

#include <QImage>

namespace leafwright {

/// The pixels of a page as what widgets draw. They are shared, not copied.
QImage imageOf(const PageImage &page);

/// Draws part of a page, see PDFEngine::renderPage(); takes a while, so not on the main thread.
QImage drawnPage(const PDFDocument &document, const RenderRequest &request, const std::stop_token &stop = {});

}  // namespace leafwright
