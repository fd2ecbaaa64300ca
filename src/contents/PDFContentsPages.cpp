#include "contents/PDFContentsPages.h"

#include "contents/ContentsPageFinder.h"
#include "pdf/ReadAhead.h"

#include <map>

namespace leafwright {

namespace {

/// Where the text of a piece of marked content goes.
using TextByMark = std::map<int, QString>;

/// The texts of the elements' content, by page. Pages are read side by side.
std::vector<TextByMark> readTexts(const PDFDocument &document,
                                  const std::vector<StructureElement> &elements) {
    std::vector<TextByMark> texts(static_cast<size_t>(document.pageCount()));
    std::vector<int> pages;
    for (const StructureElement &element : elements) {
        if (!element.text.isNull()) continue;
        for (const MarkedContent &piece : element.content) {
            TextByMark &ofPage = texts[static_cast<size_t>(piece.pageIndex)];
            if (ofPage.empty()) pages.push_back(piece.pageIndex);
            ofPage.try_emplace(piece.identifier);
        }
    }
    onAllCores(static_cast<int>(pages.size()), [&](int k) {
        TextByMark &ofPage = texts[static_cast<size_t>(pages[static_cast<size_t>(k)])];
        std::vector<int> identifiers;
        for (const auto &[identifier, text] : ofPage)
            identifiers.push_back(identifier);
        const std::vector<QString> found =
            document.engine().markedText(pages[static_cast<size_t>(k)], identifiers);
        for (size_t i = 0; i < identifiers.size(); ++i)
            ofPage[identifiers[i]] = found[i];
    });
    return texts;
}

/// The text of a heading from that of its pieces, each a word or more.
QString joined(const StructureElement &element, const std::vector<TextByMark> &texts) {
    QString text;
    for (const MarkedContent &piece : element.content) {
        const QString &part = texts[static_cast<size_t>(piece.pageIndex)].at(piece.identifier);
        if (!text.isEmpty() && !part.isEmpty()) text += u' ';
        text += part;
    }
    return text.simplified();
}

}  // namespace

std::shared_ptr<const PageEvidence> PDFContentsPages::pageEvidence(int index) const {
    const PDFPage &page = *document_.page(index);
    auto evidence = std::make_shared<PageEvidence>();
    evidence->visibleBox = page.cropBox();
    evidence->rotation = page.rotation();
    evidence->spans = document_.engine().textSpans(index);
    if (evidence->spans.empty() && copy_) {
        evidence->spans = copy_->engine().textSpans(index);
        evidence->isRecognised = true;
    }
    // Those of later pages are of no printed contents, and finding where they lead takes its time.
    if (index < endOfFrontPages(document_.pageCount())) evidence->links = linksOf(page);
    return evidence;
}

DocumentEvidence PDFContentsPages::documentEvidence() const {
    const DocumentMarks marks = document_.engine().marks();
    DocumentEvidence evidence;
    for (int i = 0; marks.hasPageLabels && i < document_.pageCount(); ++i)
        evidence.pageLabels.append(document_.pageLabel(i));
    evidence.namedPlaces.reserve(marks.names.size());
    for (const NamedDestination &named : marks.names) {
        evidence.namedPlaces.push_back(
            {named.name, named.destination.pageIndex, shownPoint(named.destination)});
    }
    evidence.headings = headingsOf(marks.headings);
    evidence.producer = (marks.producer + u' ' + marks.creator).trimmed();
    return evidence;
}

std::vector<ContentsLink> PDFContentsPages::linksOf(const PDFPage &page) const {
    std::vector<ContentsLink> links;
    const PageTransform transform = page.transform();
    for (const PDFLink &link : page.links()) {
        if (!link.destination) continue;
        links.push_back(
            {transform.toShown(link.bounds), link.destination->pageIndex, shownPoint(*link.destination)});
    }
    return links;
}

std::optional<QPointF> PDFContentsPages::shownPoint(const PDFDestination &destination) const {
    if (isZeroPoint(destination.point)) return std::nullopt;
    return document_.page(destination.pageIndex)->transform().toShown(destination.point);
}

std::vector<StructureHeading> PDFContentsPages::headingsOf(
    const std::vector<StructureElement> &elements) const {
    const std::vector<TextByMark> texts = readTexts(document_, elements);
    std::vector<StructureHeading> headings;
    for (const StructureElement &element : elements) {
        if (element.content.empty()) continue;  // it is on no page
        const QString text = element.text.isNull() ? joined(element, texts) : element.text.simplified();
        if (!text.isEmpty()) headings.push_back({element.level, element.content.front().pageIndex, text});
    }
    return headings;
}

}  // namespace leafwright
