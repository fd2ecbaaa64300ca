#include "categories/SelectionFont.h"

#include "categories/RunWalk.h"

namespace leafwright {

std::optional<Font> dominantFontInSelection(const PDFSelection &selection) {
    struct Record {
        Font font;
        qsizetype charCount = 0;
    };
    std::vector<Record> records;  // in the order in which the fonts were met; a selection has few
    walkRuns(selection.attributedString(), [&](const CleanedRun &run) {
        if (!hasLetters(run.text)) return;
        auto record = std::find_if(records.begin(), records.end(),
                                   [&](const Record &known) { return known.font == run.font; });
        if (record == records.end()) record = records.insert(record, {run.font, 0});
        record->charCount += run.text.size();
    });
    const auto best = std::max_element(records.begin(), records.end(), [](const Record &a, const Record &b) {
        return a.charCount < b.charCount;
    });
    if (best == records.end()) return std::nullopt;
    return best->font;
}

QPointF topLeftPoint(const PDFSelection &selection) {
    const std::vector<const PDFPage *> pages = selection.pages();
    return pages.empty() ? QPointF() : selection.boundsForPage(*pages.front()).topLeft();
}

}  // namespace leafwright
