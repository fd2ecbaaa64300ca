#pragma once

#include "model/MyOutlineItem.h"
#include "pdf/TextPages.h"

#include <QStringList>

#include <memory>

namespace leafwright {

/// The font strings of a sample's runs, in order: what headings like it look like. Every run counts, also
/// one of blanks.
QStringList fontPattern(const AttributedString &sample);

/// Finds headings by example: every place where runs follow each other in the fonts of the pattern makes an
/// item, with their cleaned texts as its title, joined without a blank. It leads to the page where it ends,
/// and to the point of its first run.
///
/// A match may go on from one page to the next. The run that breaks one off is not tried as the start of
/// another.
/// @param pattern see fontPattern(); an empty one matches nothing
/// @return the new top item, "MiniTOC", with the items as its children; detached
std::unique_ptr<MyOutlineItem> runMiniTOC(const TextPages &pages, const QStringList &pattern);

}  // namespace leafwright
