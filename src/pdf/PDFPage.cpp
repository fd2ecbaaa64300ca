#include "pdf/PDFPage.h"

#include "pdf/PDFDocument.h"
#include "pdf/PDFSelection.h"

namespace leafwright {

std::shared_ptr<const PageText> PDFPage::text() const {
    return document_->pageText(index_);
}

std::vector<Rect> PDFPage::characterBoxes() const {
    return document_->engine().characterBoxes(index_);
}

std::vector<PDFLink> PDFPage::links() const {
    return document_->engine().links(index_);
}

PDFSelection PDFPage::selectionForRange(const TextRange &range) const {
    const int size = static_cast<int>(text()->attributedString.string.size());
    const int begin = std::clamp(range.location, 0, size);
    const int end = std::clamp(range.end(), begin, size);
    PDFSelection selection;
    selection.add(*this, {begin, end - begin});
    return selection;
}

}  // namespace leafwright
