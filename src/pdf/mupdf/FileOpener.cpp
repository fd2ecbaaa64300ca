#include "pdf/mupdf/FileOpener.h"

#include "pdf/PageLabels.h"
#include "pdf/mupdf/FactsReader.h"

namespace leafwright::mupdf {

namespace {

std::shared_ptr<const PageTree> findPages(Reader &reader, PageTree::Kids kids) {
    auto pages = std::make_shared<const PageTree>(reader.catalog().get(PDF_NAME(Pages)), kids);
    reader.setPages(pages);
    return pages;
}

/// Lets `read` find out about a file that is open. What can't be read is left as it is, and is a problem.
template <typename Read>
void attempt(OpenedFile &opened, Read &&read) {
    try {
        read();
    } catch (const ReadProblem &problem) {
        if (!opened.problem) opened.problem = problem.problem();
    }
}

/// Whether a page tree that no page was found in is sound: what is damaged would list pages, and lose them.
bool saysThatItIsEmpty(const Object &tree) {
    const Object kids = tree.get(PDF_NAME(Kids));
    const Object count = tree.get(PDF_NAME(Count));
    return tree.get(PDF_NAME(Type)).toName() == "Pages" && kids.isArray() && kids.size() == 0 &&
           count.isInt() && count.toInt() == 0;
}

void readPages(OpenedFile &opened) {
    Reader &reader = *opened.reader;
    opened.pages = findPages(reader, PageTree::Kids::Presumed);
    std::optional<std::vector<PageGeometry>> geometry = readGeometry(reader);
    if (!geometry) {
        opened.pages = findPages(reader, PageTree::Kids::LookedAt);
        geometry = readGeometry(reader);
    }
    opened.facts.pages = std::move(geometry).value_or(std::vector<PageGeometry>());
    // Until they are read.
    opened.facts.labels = pageLabels({}, static_cast<int>(opened.facts.pages.size()));
    if (!opened.problem) opened.problem = opened.pages->problem();
}

}  // namespace

OpenedFile openFile(const std::shared_ptr<const FileHandle> &file) {
    OpenedFile opened{{}, std::make_shared<const PageTree>(), std::make_unique<Reader>(file)};
    Reader &reader = *opened.reader;
    PDFFacts &facts = opened.facts;
    facts = readFacts(reader);
    if (facts.locked) return opened;

    attempt(opened, [&] { facts.isSigned = isSigned(reader); });
    attempt(opened, [&] { facts.hasOutline = hasOutline(reader); });
    attempt(opened, [&] { readPages(opened); });
    attempt(opened, [&] { facts.labels = readLabels(reader); });
    // One that MuPDF passed over.
    if (!opened.problem) opened.problem = reader.problem();
    // A wrong key can pass for a right one; then nothing in the file makes sense.
    facts.locked = facts.encrypted && facts.pages.empty() && !opened.problem;
    facts.unlocked = facts.unlocked && !facts.locked;
    // Last, since reading may have brought damage to light.
    facts.repaired = reader.wasRepaired();
    opened.isMeantEmpty =
        !facts.repaired && !opened.problem && saysThatItIsEmpty(reader.catalog().get(PDF_NAME(Pages)));
    return opened;
}

}  // namespace leafwright::mupdf
