#include "categories/PageFonts.h"

#include "categories/FontIdentity.h"
#include "categories/RunWalk.h"

namespace leafwright {

std::vector<TextRange> rangesOfFontID(const PDFPage &page, const QString &fontID) {
    std::vector<TextRange> ranges;
    walkRuns(page.text()->attributedString, [&](const CleanedRun &run) {
        if (hasLetters(run.text) && fontIDString(run.font) == fontID) ranges.push_back(run.range);
    });
    return ranges;
}

}  // namespace leafwright
