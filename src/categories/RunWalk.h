#pragma once

#include "categories/TextCleaning.h"
#include "pdf/PageText.h"

namespace leafwright {

/// A run of one font as the finders look at it.
struct CleanedRun {
    TextRange range;
    const Font &font;
    QString text;  ///< With newline characters turned into blanks.
};

/// Calls `visit(const CleanedRun &)` for every run of the text, in order.
template <typename Visit>
void walkRuns(const AttributedString &text, Visit &&visit) {
    const CharacterSet set = charactersToTrim();
    for (const FontRun &run : text.runs) {
        visit(CleanedRun{run.range, run.font, cleanedRun(text.substring(run.range), set)});
    }
}

/// The top left corner, in page space, of a run of a page's text; the zero point for a run of which
/// nothing is to be seen. @param run index of the run
QPointF topLeftPointOfRun(const PageText &text, size_t run);

}  // namespace leafwright
