#include "categories/PageFonts.h"

#include "categories/FontIdentity.h"
#include "categories/RunWalk.h"

namespace leafwright {

std::vector<TextRange> rangesOfFont(const PDFPage &page, const Font &font) {
    return rangesOfFontID(page, fontIDString(font));
}

std::vector<TextRange> rangesOfFontID(const PDFPage &page, const QString &fontID) {
    std::vector<TextRange> ranges;
    walkRuns(page.text()->attributedString, [&](const CleanedRun &run) {
        if (hasLetters(run.text) && fontIDString(run.font) == fontID) ranges.push_back(run.range);
    });
    return ranges;
}

bool isTopLeftPointingMOI(const PDFPage & /*page*/, const MyOutlineItem & /*item*/) {
    return false;
}

}  // namespace leafwright
