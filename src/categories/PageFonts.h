#pragma once

#include "pdf/PDFPage.h"

#include <vector>

namespace leafwright {

/// The ranges of the page's runs that have letters and are set in the heading font that a font ID string
/// stands for, in text order.
std::vector<TextRange> rangesOfFontID(const PDFPage &page, const QString &fontID);

}  // namespace leafwright
