#include "pdf/mupdf/LinkReader.h"

#include "pdf/mupdf/DestinationReader.h"
#include "pdf/mupdf/FactsReader.h"

namespace leafwright::mupdf {

namespace {

/// No page has more links than this in good faith.
constexpr int mostLinks = 10'000;

QString uriOf(const Object &annotation) {
    const Object action = annotation.get(PDF_NAME(A));
    if (action.get(PDF_NAME(S)).toName() != "URI") return {};
    return QString::fromUtf8(action.get(PDF_NAME(URI)).toBytes());
}

}  // namespace

std::vector<PDFLink> readLinks(Reader &reader, int pageIndex) {
    constexpr int hidden = 2;
    std::vector<PDFLink> links;
    const Object annotations = reader.page(pageIndex).get(PDF_NAME(Annots));
    const int count = annotations.isArray() ? std::min(annotations.size(), mostLinks) : 0;
    for (int i = 0; i < count; ++i) {
        const Object annotation = annotations.at(i);
        if (annotation.get(PDF_NAME(Subtype)).toName() != "Link") continue;
        if ((annotation.get(PDF_NAME(F)).toInt() & hidden) != 0) continue;
        PDFLink link{rectOf(annotation.get(PDF_NAME(Rect))), {}, {}};
        if (link.bounds.isEmpty()) continue;
        link.destination = reader.destinations().of(annotation);
        if (!link.destination) link.uri = uriOf(annotation);
        if (link.destination || !link.uri.isEmpty()) links.push_back(std::move(link));
    }
    return links;
}

}  // namespace leafwright::mupdf
