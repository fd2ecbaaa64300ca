#include "pdf/mupdf/FileOpener.h"

#include "pdf/mupdf/FactsReader.h"

namespace leafwright::mupdf {

namespace {

std::shared_ptr<const PageTree> findPages(Reader &reader, PageTree::Kids kids) {
    auto pages = std::make_shared<const PageTree>(reader.catalog().get(PDF_NAME(Pages)), kids);
    reader.setPages(pages);
    return pages;
}

}  // namespace

OpenedFile openFile(const std::shared_ptr<const FileHandle> &file) {
    OpenedFile opened{{}, std::make_shared<const PageTree>(), std::make_unique<Reader>(file)};
    Reader &reader = *opened.reader;
    PDFFacts &facts = opened.facts;
    facts = readFacts(reader);
    if (facts.locked) return opened;

    opened.pages = findPages(reader, PageTree::Kids::Presumed);
    std::optional<std::vector<PageGeometry>> geometry = readGeometry(reader);
    if (!geometry) {
        opened.pages = findPages(reader, PageTree::Kids::LookedAt);
        geometry = readGeometry(reader);
    }
    facts.pages = std::move(geometry).value_or(std::vector<PageGeometry>());
    facts.labels = readLabels(reader);
    // A wrong key can pass for a right one; then nothing in the file makes sense.
    facts.locked = facts.encrypted && facts.pages.empty();
    // Last, since reading may have brought damage to light.
    facts.repaired = reader.wasRepaired();
    return opened;
}

}  // namespace leafwright::mupdf
