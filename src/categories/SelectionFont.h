#pragma once

#include "pdf/PDFSelection.h"

#include <optional>

namespace leafwright {

/// The font that most characters of the selection's runs with letters are set in; of two with as many,
/// the one met first. Nothing when no run has letters.
std::optional<Font> dominantFontInSelection(const PDFSelection &selection);

/// The top left corner of the selection's bounds on its first page, in page space.
/// The zero point for an empty selection.
QPointF topLeftPoint(const PDFSelection &selection);

}  // namespace leafwright
