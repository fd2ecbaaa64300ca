#pragma once

#include "model/MyOutlineItem.h"
#include "pdf/PDFPage.h"

#include <vector>

namespace leafwright {

/// The ranges of the page's runs that have letters and are set in the given heading font, in text order.
std::vector<TextRange> rangesOfFont(const PDFPage &page, const Font &font);
/// The same for the heading font that a font ID string stands for.
std::vector<TextRange> rangesOfFontID(const PDFPage &page, const QString &fontID);

/// Always false.
bool isTopLeftPointingMOI(const PDFPage &page, const MyOutlineItem &item);

}  // namespace leafwright
