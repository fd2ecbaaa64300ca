#include "categories/PageFonts.h"

#include "categories/FontIdentity.h"
#include "categories/RunWalk.h"

namespace leafwright {

std::vector<TextRange> rangesOfFont(const PDFPage &page, const Font &font) {
    std::vector<TextRange> ranges;
    walkRuns(page.text()->attributedString, [&](const CleanedRun &run) {
        if (hasLetters(run.text) && isEffectivelyEqual(run.font, font)) ranges.push_back(run.range);
    });
    return ranges;
}

bool isTopLeftPointingMOI(const PDFPage & /*page*/, const MyOutlineItem & /*item*/) {
    return false;
}

}  // namespace leafwright
