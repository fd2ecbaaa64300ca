#pragma once

#include "pdf/Font.h"
#include "pdf/mupdf/TextRunner.h"

namespace leafwright::mupdf {

/// The font's name as the file has it, with its subset's prefix; its resource name where it has none.
QByteArray baseFontOf(const SeenFont &seen);

/// What the font's program, its descriptor (ISO 32000-1, 9.8) and MuPDF's reading of both say.
FontTraits traitsOf(fz_context *ctx, const SeenFont &seen);

}  // namespace leafwright::mupdf
