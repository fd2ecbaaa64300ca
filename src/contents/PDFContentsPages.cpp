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
                                  const std::vector<const StructureElement *> &elements) {
    std::vector<TextByMark> texts(static_cast<size_t>(document.pageCount()));
    std::vector<int> pages;
    for (const StructureElement *element : elements) {
        if (!element->text.isNull()) continue;
        for (const MarkedContent &piece : element->content) {
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

/// The text of an element from that of its pieces, each a word or more, unless something stands for it.
/// Nothing for an element that is on no page.
QString textOf(const StructureElement &element, const std::vector<TextByMark> &texts) {
    if (element.content.empty() || !element.text.isNull())
        return element.content.empty() ? QString() : element.text.simplified();
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
    addStructure(marks.structure, evidence);
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

void PDFContentsPages::addStructure(const DocumentStructure &structure, DocumentEvidence &evidence) const {
    std::vector<const StructureElement *> elements;
    const auto collect = [&elements](const std::vector<StructureElement> &some) {
        for (const StructureElement &element : some)
            elements.push_back(&element);
    };
    collect(structure.headings);
    for (const std::vector<StructureElement> &items : structure.contents)
        collect(items);
    const std::vector<TextByMark> texts = readTexts(document_, elements);
    for (const StructureElement &heading : structure.headings) {
        const QString text = textOf(heading, texts);
        if (!text.isEmpty())
            evidence.headings.push_back({heading.level, heading.content.front().pageIndex, text});
    }
    for (const std::vector<StructureElement> &elementsOfOne : structure.contents) {
        std::vector<StructureItem> items;
        for (const StructureElement &element : elementsOfOne) {
            const QString text = textOf(element, texts);
            if (text.isEmpty()) continue;
            items.push_back({element.level, element.content.front().pageIndex, text, {}});
            if (element.target)
                items.back().link = ContentsLink{{}, element.target->pageIndex, shownPoint(*element.target)};
        }
        if (!items.empty()) evidence.contents.push_back(std::move(items));
    }
}

}  // namespace leafwright
