#pragma once

#include "pdf/PDFDocument.h"

#include <functional>

namespace leafwright {

/// Takes a text, in UTF-8, piece by piece.
using TextSink = std::function<void(const QByteArray &bytes)>;

// The forms in which an outline is printed. All take the document's outline in memory.

/// JSON: an array of nodes {"title", "pageLabel", "pageIndex", "point", "bold", "italic", "color", "open",
/// "action", "entry", "children"}; the label and the 0-based index are null for an entry that leads to no
/// page, "entry" is the object number in the file.
void printOutlineAsJson(const PDFDocument &document, const TextSink &sink);

/// Plus lines: "+ @5 Chapter One" and "++ @7 First Section".
void printOutlineAsPlusLines(const PDFDocument &document, const TextSink &sink);

/// For people: titles indented by depth, each with its page label.
void printOutlineAsText(const PDFDocument &document, const TextSink &sink);

}  // namespace leafwright
