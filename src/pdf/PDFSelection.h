#pragma once

#include "pdf/PDFPage.h"

#include <vector>

namespace leafwright {

/// Selected text: ranges of the text of pages of one document, which must outlive the selection.
class PDFSelection {
public:
    /// Adds a range of a page's text; an empty one adds nothing. The range must lie within the text.
    void add(const PDFPage &page, const TextRange &range);
    /// Adds all that another selection of the same document holds.
    void add(const PDFSelection &other);

    bool isEmpty() const { return parts_.empty(); }
    /// The pages that hold selected text, each once, in the order of their first addition.
    std::vector<const PDFPage *> pages() const;
    /// What is selected of a page's text, in the order of its addition.
    std::vector<TextRange> rangesOnPage(const PDFPage &page) const;
    /// The rectangle around the selected characters of a page, in page space; empty if there are none.
    Rect boundsForPage(const PDFPage &page) const;
    /// The selected text; parts that do not end a line are parted by a line feed.
    QString string() const { return attributedString().string; }
    AttributedString attributedString() const;

private:
    struct Part {
        const PDFPage *page = nullptr;
        TextRange range;
    };
    std::vector<Part> parts_;
};

}  // namespace leafwright
