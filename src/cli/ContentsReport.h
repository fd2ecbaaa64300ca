#pragma once

#include "contents/FoundContents.h"
#include "formats/JsonWriter.h"
#include "pdf/TextPages.h"

namespace leafwright::cli {

/// Writes what was found as JSON: an array of the entries at the top, each with its children.
/// @param pages tells the labels of the entries' pages
void writeContentsReport(const FoundContents &found, const TextPages &pages, leafwright::JsonWriter &json);

}  // namespace leafwright::cli
