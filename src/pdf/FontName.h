#pragma once

#include "pdf/Font.h"

#include <QByteArray>

namespace leafwright {

/// Makes a face from a PDF font's BaseFont (ISO 32000-1, 9.6.2 and 9.6.4).
///
/// The subset tag goes ("ABCDEF+"), the first "," or "-" parts family from style, further ones
/// become blanks, and vendor marks (MT, PS) at the end of either go:
/// "ABCDEF+Times-Bold" is the face "Times Bold" of the family "Times".
/// @param traits what the font itself says; marks that the name bears ("Bold", "Oblique") are added.
FontFace fontFaceFromBaseFont(const QByteArray &baseFont, FontTraits traits);

}  // namespace leafwright
