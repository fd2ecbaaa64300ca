#pragma once

#include "contents/ContentsPages.h"
#include "pdf/PDFDocument.h"

namespace leafwright {

/// A PDF document's pages as Find Contents needs them.
class PDFContentsPages final : public ContentsPages {
public:
    /// @param document must outlive this
    explicit PDFContentsPages(const PDFDocument &document) : document_(document) {}
    /// Pages without text are read from a copy of the document that has text there, page by page the same.
    /// @param copy must outlive this, and have as many pages
    PDFContentsPages(const PDFDocument &document, const PDFDocument &copy)
        : document_(document), copy_(&copy) {}

    int pageCount() const override { return document_.pageCount(); }
    std::shared_ptr<const PageEvidence> pageEvidence(int index) const override;
    /// Reads the text of the structure's headings and contents on as many threads as there are cores.
    DocumentEvidence documentEvidence() const override;

private:
    std::vector<ContentsLink> linksOf(const PDFPage &page) const;
    std::optional<QPointF> shownPoint(const PDFDestination &destination) const;
    void addStructure(const DocumentStructure &structure, DocumentEvidence &evidence) const;

    const PDFDocument &document_;
    const PDFDocument *copy_ = nullptr;
};

}  // namespace leafwright
