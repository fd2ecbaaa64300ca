#include "pdf/PDFSelection.h"

#include "pdf/PDFDocument.h"

namespace leafwright {

namespace {

/// The bounds of a range that is made of whole runs; nothing where it cuts one.
std::optional<Rect> boundsOfWholeRuns(const PageText &text, const TextRange &range) {
    const std::vector<FontRun> &runs = text.attributedString.runs;
    auto run = std::lower_bound(runs.begin(), runs.end(), range.location,
                                [](const FontRun &r, int location) { return r.range.location < location; });
    Rect bounds;
    int covered = range.location;
    for (; run != runs.end() && run->range.location == covered && run->range.end() <= range.end(); ++run) {
        bounds = bounds.united(text.runBounds[run - runs.begin()]);
        covered = run->range.end();
    }
    if (covered != range.end()) return std::nullopt;
    return bounds;
}

Rect boundsOfCharacters(const PDFPage &page, const TextRange &range) {
    // Boxes of single characters are not kept with the text; they are read again for this one page.
    const std::vector<Rect> boxes = page.document().engine().characterBoxes(page.index());
    Rect bounds;
    for (int i = range.location; i < range.end() && i < static_cast<int>(boxes.size()); ++i) {
        bounds = bounds.united(boxes[i]);
    }
    return bounds;
}

}  // namespace

void PDFSelection::add(const PDFPage &page, const TextRange &range) {
    if (range.length > 0) parts_.push_back({&page, range});
}

void PDFSelection::add(const PDFSelection &other) {
    const std::vector<Part> added = other.parts_;
    parts_.insert(parts_.end(), added.begin(), added.end());
}

std::vector<const PDFPage *> PDFSelection::pages() const {
    std::vector<const PDFPage *> pages;
    for (const Part &part : parts_) {
        if (std::find(pages.begin(), pages.end(), part.page) == pages.end()) pages.push_back(part.page);
    }
    return pages;
}

std::vector<TextRange> PDFSelection::rangesOnPage(const PDFPage &page) const {
    std::vector<TextRange> ranges;
    for (const Part &part : parts_) {
        if (part.page == &page) ranges.push_back(part.range);
    }
    return ranges;
}

Rect PDFSelection::boundsForPage(const PDFPage &page) const {
    Rect bounds;
    for (const Part &part : parts_) {
        if (part.page != &page) continue;
        const auto whole = boundsOfWholeRuns(*page.text(), part.range);
        bounds = bounds.united(whole ? *whole : boundsOfCharacters(page, part.range));
    }
    return bounds;
}

AttributedString PDFSelection::attributedString() const {
    AttributedString result;
    for (const Part &part : parts_) {
        const std::shared_ptr<const PageText> text = part.page->text();
        if (!result.isEmpty() && !result.string.endsWith(u'\n')) {
            result.append(QStringLiteral("\n"), result.runs.back().font);
        }
        for (const FontRun &run : text->attributedString.part(part.range).runs) {
            const TextRange inPage{part.range.location + run.range.location, run.range.length};
            result.append(text->attributedString.substring(inPage), run.font);
        }
    }
    return result;
}

}  // namespace leafwright
