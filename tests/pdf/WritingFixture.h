#pragma once

#include "support/OpenPdf.h"
#include "support/OutlineText.h"
#include "support/PdfBuilder.h"

namespace leafwright::test {

/// What these tests write: an entry, and one below it.
inline std::unique_ptr<PDFOutline> newOutline() {
    return makeOutline({{"New", PDFDestination{0, {72, 700}}, {{"Below", PDFDestination{0, {72, 600}}}}}});
}

/// What they write it into; has an outline of its own.
inline PdfBuilder threePages() {
    PdfBuilder pdf;
    pdf.addNumberedPages(3);
    addOutline(pdf, {{"(Old)", "[" + pdf.pageReference(1) + " /Fit]"}});
    return pdf;
}

}  // namespace leafwright::test
