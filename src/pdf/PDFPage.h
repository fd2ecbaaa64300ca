#pragma once

#include "pdf/PDFLink.h"
#include "pdf/PageText.h"
#include "pdf/PageTransform.h"

#include <memory>

namespace leafwright {

class PDFDocument;
class PDFSelection;

/// One page of a document, which owns it. Pages are told apart by their address.
class PDFPage {
public:
    ~PDFPage() = default;
    PDFPage(const PDFPage &) = delete;
    PDFPage(PDFPage &&) = default;
    PDFPage &operator=(const PDFPage &) = delete;
    PDFPage &operator=(PDFPage &&) = delete;

    const PDFDocument &document() const { return *document_; }
    int index() const { return index_; }  ///< 0-based.
    /// The page's printed name, such as "iv": the file's page label or, without one, the 1-based number.
    const QString &label() const { return label_; }
    const Rect &mediaBox() const { return geometry_.mediaBox; }
    const Rect &cropBox() const { return geometry_.cropBox; }
    int rotation() const { return geometry_.rotation; }
    /// Between page space and the page as it is shown.
    PageTransform transform() const { return {geometry_.cropBox, geometry_.rotation}; }

    /// The page's text with its fonts. See PageText for its form.
    std::shared_ptr<const PageText> text() const;
    /// The box in page space of every UTF-16 unit of the text. Read anew each time.
    std::vector<Rect> characterBoxes() const;
    /// The links of the page, in the file's order. Read anew each time.
    std::vector<PDFLink> links() const;
    /// A selection of some of the page's text; the range is clipped to the text.
    PDFSelection selectionForRange(const TextRange &range) const;

private:
    friend class PDFDocument;
    PDFPage(const PDFDocument &document, int index, QString label, const PageGeometry &geometry)
        : document_(&document), index_(index), label_(std::move(label)), geometry_(geometry) {}

    const PDFDocument *document_;
    int index_;
    QString label_;
    PageGeometry geometry_;
};

}  // namespace leafwright
