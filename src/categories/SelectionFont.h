#pragma once

#include "pdf/PDFSelection.h"

#include <optional>

namespace leafwright {

/// The font that most characters of the selection's runs with letters are set in; of two with as many,
/// the one met first. Nothing when no run has letters.
std::optional<Font> dominantFontInSelection(const PDFSelection &selection);

/// Always nothing: the dominant font is asked of selections.
std::optional<Font> dominantFont(const AttributedString &text);

/// The top left corner of the selection's bounds on its first page, in page space.
/// The zero point for an empty selection.
QPointF topLeftPoint(const PDFSelection &selection);

/// Whether the page is the selection's first.
bool isOnPage(const PDFSelection &selection, const PDFPage &page);

}  // namespace leafwright
